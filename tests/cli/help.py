"""Every command explains itself."""

import re

from _ovi import SOURCE_DIR, TestCase, main, ovi


class Help(TestCase):
    def test_lists_the_commands(self):
        result = ovi("--help")
        self.assertEqual((0, ""), (result.code, result.err))
        self.assertRegex(result.out, r"(?m)^  check +\S")
        self.assertRegex(result.out, r"(?m)^  show +\S")

    def test_of_each_command_names_its_arguments_and_the_exit_codes(self):
        commands = re.findall(r"(?m)^  ([a-z]+) ", ovi("--help").out.split("Subcommands:")[1])
        self.assertGreaterEqual(len(commands), 2)
        for command in commands:
            with self.subTest(command=command):
                result = ovi(command, "--help")
                self.assertEqual((0, ""), (result.code, result.err))
                self.assertIn(f"Usage: ovi {command} [OPTIONS]", result.out)
                self.assertIn("--schema FILE_OR_DIR", result.out)
                self.assertIn("Exit codes: 0", result.out)

    def test_version_is_that_of_the_project(self):
        version = re.search(r"VERSION (\d+\.\d+\.\d+)",
                            (SOURCE_DIR / "CMakeLists.txt").read_text(encoding="utf-8")).group(1)
        result = ovi("--version")
        self.assertEqual((0, f"ovi {version}, OviCore {version}\n"), (result.code, result.out))


if __name__ == "__main__":
    main()
