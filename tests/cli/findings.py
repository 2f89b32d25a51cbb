"""`ovi check` prints every diagnostic with file and line, in order."""

import shutil

from _ovi import EXAMPLES, SCHEMA, TestCase, main, ovi, sample_schema, scene, template


class Findings(TestCase):
    def test_name_the_file_and_line_of_a_misspelt_type_in_the_sample_schema(self):
        schema = self.directory / "schema"
        shutil.copytree(SCHEMA, schema)
        lens = schema / "core" / "studio" / "cameras" / "Camera.template"
        lines = lens.read_text(encoding="utf-8").splitlines(keepends=True)
        number = next(i for i, line in enumerate(lines, 1) if "name='bladeCount'" in line)
        lines[number - 1] = lines[number - 1].replace("UINT16", "UNIT16")
        lens.write_text("".join(lines), encoding="utf-8")
        result = ovi("check", *sample_schema(schema), EXAMPLES / "scenes" / "teacup.asset")
        self.assertEqual(1, result.code)
        self.assertIn(f"{lens}:{number}: warning: Unknown type 'UNIT16'", result.out)

    def test_of_a_whole_file_have_no_line(self):
        path = self.write("broken.template", "<templates/>\n")
        self.check_result(
            ovi("check", path), 1,
            f"{path}:1: error: Invalid XML header element\n"
            f"{path}: error: Unable to open file '{path}' for reading\n",
            "1 file, 2 errors, 0 warnings")

    def test_name_files_with_blanks_and_letters_beyond_ascii(self):
        self.write("two words/\u00e4\u6f22.template", template(
            "T", "<attribute name='a' type='\u00dcber'/>\n"))
        self.check_result(
            ovi("check", "two words/\u00e4\u6f22.template", cwd=self.directory), 1,
            "two words/\u00e4\u6f22.template:4: warning: Unknown type '\u00dcber', creating custom "
            "type dynamically\n", "1 file, 0 errors, 1 warning")

    def test_come_in_the_order_of_the_files(self):
        first = self.write("b.asset", scene("<asset/>\n"))
        second = self.write("a.asset", scene("\n<assetRef/>\n"))
        self.check_result(
            ovi("check", first, second), 1,
            f"{first}:3: error: <asset> element must have an 'name' attribute\n"
            f"{second}:4: error: <assetRef> element must have an 'name' attribute\n",
            "2 files, 2 errors, 0 warnings")

    def test_of_a_file_that_is_schema_and_argument_appear_once(self):
        self.write("schema/Crate.template", template("Crate", "<attribute name='a' type='X'/>\n"))
        result = ovi("check", "--schema", "schema", "./schema/../schema/Crate.template",
                     "schema/Crate.template", cwd=self.directory)
        self.check_result(
            result, 1,
            "schema/Crate.template:4: warning: Unknown type 'X', creating custom type dynamically\n",
            "1 file, 0 errors, 1 warning")

    def test_of_a_scene_do_not_depend_on_the_scene_before(self):
        self.write("s/Crate.template", template("Crate", package=""))
        crate = "<asset name='a'><implements template='Crate'/>{}</asset>\n"
        first = self.write("1.asset", scene(crate.format("")))
        # Were the first scene still there, this asset would have the template.
        second = self.write("2.asset", scene("<asset name='a'><attribute property='B.c'/></asset>"))
        result = ovi("check", "--schema", self.directory / "s", first, second)
        self.check_result(
            result, 1, f"{second}:3: error: Unknown property: 'B.c'\n",
            "3 files, 1 error, 0 warnings")

    def test_of_all_faulty_samples_are_those_of_the_readme(self):
        rows = [line.strip("| \n").split(" | ") for line in
                (EXAMPLES / "README.md").read_text(encoding="utf-8").splitlines()
                if line.startswith("| ") and line.count(" | ") >= 3]
        for path in sorted((EXAMPLES / "faulty").iterdir()):
            wanted = []
            for name, line, level, message in (row for row in rows if row[0] == path.name):
                place = f"{path}:" if line == "-1" else f"{path}:{line}:"
                word = {"1": "error", "2": "warning"}[level]
                wanted.append(f"{place} {word}: {message.strip('`').replace('<path>', str(path))}")
            with self.subTest(file=path.name):
                self.assertNotEqual([], wanted)
                result = ovi("check", *sample_schema(), path)
                self.assertEqual((1, wanted), (result.code, result.out.splitlines()))


if __name__ == "__main__":
    main()
