"""What the manual shows is what the program prints, and the commands of the README work."""

import re
import shlex
import subprocess

from _ovi import SOURCE_DIR, TestCase, main, ovi


class Manual(TestCase):
    def test_shows_what_the_program_prints(self):
        text = (SOURCE_DIR / "docs" / "ovi.md").read_text(encoding="utf-8")
        examples = re.findall(r"```console\n\$ ovi ([^\n]*)\n(.*?)```", text, re.DOTALL)
        self.assertGreaterEqual(len(examples), 5)
        for arguments, shown in examples:
            with self.subTest(command="ovi " + arguments):
                printed = ovi(*shlex.split(arguments), stderr=subprocess.STDOUT).out
                if shown.endswith("...\n"):
                    shown = shown[: -len("...\n")]
                    self.assertGreater(len(printed), len(shown))
                    printed = printed[: len(shown)]
                self.assertEqual(shown, printed)

    def test_the_commands_of_the_readme_find_nothing(self):
        text = (SOURCE_DIR / "README.md").read_text(encoding="utf-8").replace("\\\n", " ")
        commands = re.findall(r"^build/demo/tools/ovi ([^\n]*)$", text, re.MULTILINE)
        self.assertGreaterEqual(len(commands), 2)
        for arguments in commands:
            with self.subTest(command="ovi " + arguments):
                result = ovi(*shlex.split(arguments))
                self.assertEqual(0, result.code, result.out + result.err)


if __name__ == "__main__":
    main()
