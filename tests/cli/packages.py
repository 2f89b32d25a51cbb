"""`ovi packages` lists the packages below the search paths."""

import json

from _ovi import TestCase, main, ovi, template


class Packages(TestCase):
    def setUp(self):
        super().setUp()
        for name in ("core/zoo/Cage.template", "core/zoo/KEEPER.TEMPLATE", "core/zoo/.old.template",
                     "core/zoo/notes.txt", "core/zoo/birds/Bird.template", "core/.git/A.template",
                     "show/zoo/Tour.template", "show/park/map/readme.txt"):
            self.write(name, template("A"))

    def list(self, *arguments):
        return ovi("packages", *arguments, cwd=self.directory)

    def test_are_listed_with_their_directories_and_template_files(self):
        result = self.list("--path", "show", "--path", "core/")
        self.assertEqual((0, "5 packages, 4 template files\n"), (result.code, result.err))
        self.assertEqual("""park         0  show/park
park.map     0  show/park/map
zoo          1  show/zoo
zoo          2  core/zoo  (hidden by the first)
zoo.birds    1  core/zoo/birds
""", result.out)

    def test_are_listed_as_json(self):
        result = self.list("--path", "core", "--path", "show", "--format", "json")
        self.assertEqual(0, result.code)
        packages = json.loads(result.out)["packages"]
        self.assertEqual(
            [("park", 0, False), ("park.map", 0, False), ("zoo", 2, False), ("zoo", 1, True),
             ("zoo.birds", 1, False)],
            [(entry["name"], entry["files"], entry["hidden"]) for entry in packages])
        self.assertEqual("core/zoo/birds", packages[-1]["directory"])

    def test_of_a_schema_directory_are_listed_without_loading_it(self):
        self.write("core/zoo/Cage.template", "no template file at all")
        result = self.list("--schema", "core")
        self.assertEqual((0, "2 packages, 3 template files\n"), (result.code, result.err))

    def test_are_none_below_an_empty_directory(self):
        (self.directory / "empty").mkdir()
        result = self.list("--path", "empty")
        self.assertEqual((0, "", "0 packages, 0 template files\n"),
                         (result.code, result.out, result.err))

    def test_cannot_be_listed_without_a_search_path(self):
        result = self.list()
        self.assertEqual((2, "", "ovi: error: no search path was given, by --path DIR or "
                                 "--schema DIR\n"), (result.code, result.out, result.err))

    def test_of_a_missing_directory_cannot_be_listed_and_the_others_are(self):
        result = self.list("--path", "nowhere")
        self.assertEqual((2, ""), (result.code, result.out))
        self.assertIn("cannot read 'nowhere': No such file or directory", result.err)
        result = self.list("--path", "nowhere", "--path", "core")
        self.assertEqual(2, result.code)
        self.assertIn("core/zoo/birds", result.out)


if __name__ == "__main__":
    main()
