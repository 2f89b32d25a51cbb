"""The exit code says whether files are clean (0), have findings (1) or could not be read (2)."""

import os

from _ovi import EXAMPLES, TestCase, main, ovi, sample_schema, scene, template


class ExitCodes(TestCase):
    def test_is_0_for_clean_files(self):
        self.check_result(
            ovi("check", self.write("Crate.template", template("Crate"))),
            0, "", "1 file, 0 errors, 0 warnings")

    def test_is_1_for_errors(self):
        result = ovi("check", *sample_schema(), EXAMPLES / "faulty" / "unknown-property.asset")
        self.assertEqual(1, result.code)
        self.assertTrue(result.err.endswith(" 3 errors, 0 warnings\n"), result.err)

    def test_is_1_for_warnings_alone(self):
        result = ovi("check", *sample_schema(), EXAMPLES / "scenes" / "older-version.asset")
        self.assertEqual(1, result.code)
        self.assertTrue(result.err.endswith(" 0 errors, 2 warnings\n"), result.err)

    def test_is_2_for_a_missing_file_and_the_others_are_still_checked(self):
        path = self.write("Crate.template", template("Crate", "<attribute name='a' type='FLAOT'/>"))
        result = ovi("check", "missing.asset", path, cwd=self.directory)
        self.assertEqual(2, result.code)
        self.assertIn(f"{path}:4: warning: Unknown type 'FLAOT'", result.out)
        self.assertEqual(
            "ovi: error: cannot read 'missing.asset': No such file or directory\n"
            "1 file, 0 errors, 1 warning, 1 unreadable\n", result.err)

    def test_is_2_for_a_missing_schema(self):
        result = ovi("check", "--schema", "nowhere", self.write("a.asset", scene()))
        self.assertEqual(2, result.code)
        self.assertIn("cannot read 'nowhere': No such file or directory", result.err)

    def test_is_2_for_a_directory_as_file(self):
        result = ovi("check", self.directory)
        self.assertEqual(2, result.code)
        self.assertIn("is a directory", result.err)

    def test_is_2_for_a_file_of_another_kind(self):
        result = ovi("check", self.write("notes.txt", scene()))
        self.assertEqual(2, result.code)
        self.assertIn("is neither a .template nor a .asset file", result.err)

    def test_is_2_for_a_scene_as_schema(self):
        result = ovi("check", "--schema", self.write("a.asset", scene()), "a.asset")
        self.assertEqual(2, result.code)
        self.assertIn("is neither a directory nor a .template file", result.err)

    def test_is_2_for_a_file_without_access(self):
        path = self.write("a.asset", scene())
        path.chmod(0)
        if os.access(path, os.R_OK):
            self.skipTest("this user may read everything")
        self.assertEqual(2, ovi("check", path).code)

    def test_is_2_for_wrong_usage(self):
        for arguments in ([], ["check"], ["show"], ["mend"], ["check", "--schema"],
                          ["check", "--format", "xml", "a.asset"], ["check", "--nonsense", "a"],
                          ["show", "a.asset", "b.asset"]):
            with self.subTest(arguments=arguments):
                result = ovi(*arguments)
                self.assertEqual(2, result.code)
                self.assertEqual("", result.out)
                self.assertNotEqual("", result.err)


if __name__ == "__main__":
    main()
