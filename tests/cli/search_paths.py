"""--path and --package load packages through search paths."""

from _ovi import TestCase, main, ovi, scene, template


class SearchPaths(TestCase):
    def setUp(self):
        super().setUp()
        self.write("core/zoo/Cage.template", template("Cage", package="zoo"))
        self.write("show/park/Tour.template", template(
            "Tour", "<extends template='Cage'/>\n", "<using package='zoo'/>\n", "park"))

    def check(self, *arguments):
        return ovi("check", *arguments, cwd=self.directory)

    def test_let_packages_find_each_other_whatever_their_order(self):
        path = self.write("a.asset", scene(
            "<asset name='a'><implements template='park.Tour'/></asset>\n"))
        for paths in (["core", "show"], ["show", "core/"]):
            with self.subTest(paths=paths):
                self.check_result(
                    self.check("--path", paths[0], "--path", paths[1], "--package", "park", path),
                    0, "", "1 file, 0 errors, 0 warnings")

    def test_alone_load_nothing(self):
        path = self.write("a.asset", scene(
            "<asset name='a'><implements template='zoo.Cage'/></asset>\n"))
        self.check_result(self.check("--path", "core", path), 1,
                          f"{path}:3: error: Unknown template: 'zoo.Cage'\n",
                          "1 file, 1 error, 0 warnings")

    def test_serve_template_files_given_beside_them(self):
        self.check_result(self.check("--path", "core", "show/park/Tour.template"), 0, "",
                          "1 file, 0 errors, 0 warnings")

    def test_know_a_file_of_a_loaded_package_again(self):
        for name in ("core/zoo/Cage.template", self.directory / "core" / "zoo" / "Cage.template"):
            with self.subTest(name=name):
                self.check_result(self.check("--path", "core", "--package", "zoo", name), 0, "",
                                  "1 file, 0 errors, 0 warnings")

    def test_may_lie_around_a_schema_directory(self):
        self.check_result(
            self.check("--path", "core", "--package", "zoo", "--schema", "core/zoo",
                       self.write("e.asset", scene())),
            0, "", "2 files, 0 errors, 0 warnings")

    def test_report_the_findings_of_a_package(self):
        self.write("core/bad/A.template", template(
            "A", "<attribute name='a' type='X'/>\n", package="bad"))
        self.check_result(
            self.check("--path", "core", "--package", "bad", self.write("e.asset", scene())), 1,
            "core/bad/A.template:4: warning: Unknown type 'X', creating custom type dynamically\n",
            "1 file, 0 errors, 1 warning")

    def test_without_the_package_are_a_finding(self):
        self.check_result(
            self.check("--path", "core", "--package", "zoo", "--package", "nowhere",
                       self.write("e.asset", scene())), 1,
            "nowhere: error: Package not found: nowhere\n", "1 file, 1 error, 0 warnings")

    def test_that_are_no_directories_could_not_run(self):
        path = self.write("e.asset", scene())
        for name, reason in (("nowhere", "No such file or directory"),
                             ("core/zoo/Cage.template", "is no directory")):
            with self.subTest(name=name):
                result = self.check("--path", name, path)
                self.assertEqual((2, ""), (result.code, result.out))
                self.assertEqual(f"ovi: error: cannot read '{name}': {reason}\n"
                                 "1 file, 0 errors, 0 warnings, 1 unreadable\n", result.err)

    def test_serve_show_too(self):
        result = ovi("show", "--path", "core", "--package", "zoo", "core/zoo/Cage.template",
                     cwd=self.directory)
        self.assertEqual(
            (0, "core/zoo/Cage.template: 0 types, 0 enumerations, 1 template\n"
                "  template zoo.Cage, version 1\n    extends Object, version 1\n", ""),
            (result.code, result.out, result.err))


if __name__ == "__main__":
    main()
