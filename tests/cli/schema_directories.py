"""--schema takes files and directories, whose files load in a fixed order."""

import os
import unittest

from _ovi import EMULATOR, SCHEMA, TestCase, main, ovi, sample_schema, scene, template


class SchemaDirectories(TestCase):
    def faulty(self, name, package="test"):
        """A template file that gives one warning, so that its place in the order can be seen."""
        label = name.replace("/", "_").replace(".template", "").replace(".", "_")
        self.write(name, template(label, "<attribute name='a' type='X'/>\n", package=package))

    def order(self, *arguments):
        result = ovi("check", *arguments, cwd=self.directory)
        return [line.split(":")[0] for line in result.out.splitlines()]

    def test_load_their_own_files_first_without_regard_to_case(self):
        for name in ("s/b.template", "s/A.template", "s/C.template", "s/a/z.template",
                     "s/B/y.template", "s/B/c/x.template", "s/c/w.TEMPLATE"):
            self.faulty(name)
        empty = self.write("empty.asset", scene())
        self.assertEqual(
            ["s/A.template", "s/b.template", "s/C.template", "s/a/z.template", "s/B/y.template",
             "s/B/c/x.template", "s/c/w.TEMPLATE"],
            self.order("--schema", "s", empty))

    def test_leave_out_hidden_names_and_other_files(self):
        for name in ("s/a.template", "s/.b.template", "s/.git/c.template"):
            self.faulty(name)
        self.write("s/notes.txt", "nothing to load")
        self.assertEqual(["s/a.template"],
                         self.order("--schema", "s/", self.write("e.asset", scene())))

    def test_take_one_value_for_each_use_of_the_option(self):
        self.faulty("one/a.template")
        self.faulty("two.template")
        self.faulty("three.template")
        self.assertEqual(
            ["two.template", "one/a.template", "three.template"],
            self.order("--schema", "two.template", "--schema", "one", "three.template"))

    def test_let_files_find_their_packages(self):
        self.write("s/zoo/Cage.template", template("Cage", package="zoo"))
        self.write("s/park/Tour.template", template(
            "Tour", "<extends template='Cage'/>\n", "<using package='zoo'/>\n", "park"))
        result = ovi("check", "--schema", "s", self.write("e.asset", scene()), cwd=self.directory)
        self.check_result(result, 0, "", "3 files, 0 errors, 0 warnings")

    @unittest.skipIf(EMULATOR, "what is emulated shows links as directories")
    def test_may_lead_back_to_themselves_through_links(self):
        self.faulty("s/a.template")
        try:
            os.symlink(self.directory / "s", self.directory / "s" / "again")
        except OSError:
            self.skipTest("no symbolic links here")
        self.assertEqual(["s/a.template"],
                         self.order("--schema", "s", self.write("e.asset", scene())))

    def test_of_the_samples_load_without_a_finding(self):
        files = sorted(SCHEMA.rglob("*.template"))
        scenes = [path for path in sorted((SCHEMA.parent / "scenes").rglob("*.asset"))
                  if path.name != "older-version.asset"]
        self.assertGreater(len(scenes), 0)
        self.check_result(
            ovi("check", *sample_schema(), *files, *scenes), 0, "",
            f"{len(files) + len(scenes)} files, 0 errors, 0 warnings")


if __name__ == "__main__":
    main()
