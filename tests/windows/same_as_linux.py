#!/usr/bin/env python3
"""Does the same with the library built for Linux and for Windows, and compares.

usage: same_as_linux.py LINUX_BUILD WINDOWS_BUILD SOURCE_DIR

The tool's commands and the example host are run on the samples by both; everything printed, every
exit code and every byte written must be the same. Only the separator in the path at the start of a
finding is each system's own. What runs the Windows programs is named by OVI_EMULATOR.
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

LINUX, WINDOWS, SOURCE = (Path(argument).resolve() for argument in sys.argv[1:4])
EMULATOR = os.environ.get("OVI_EMULATOR", "").split()
FINDING_PATH = re.compile(rb"^(.*?)(?=(:\d+)?: (error|warning|note): )", re.MULTILINE)
SCHEMA = [part for name in ("core", "show", "modeling")
          for part in ("--schema", f"examples/schema/{name}")]
PATHS = [part for name in ("core", "show", "modeling")
         for part in ("--path", f"examples/schema/{name}")]


def programs(name):
    """The program of that name in both builds, as a command."""
    return [str(LINUX / name)], [*EMULATOR, str(WINDOWS / f"{name}.exe")]


def run(command, *arguments, cwd):
    done = subprocess.run([*command, *map(str, arguments)], cwd=cwd, capture_output=True,
                          timeout=120, check=False)
    return done.returncode, done.stdout, done.stderr


def with_slashes(output):
    return FINDING_PATH.sub(lambda path: path.group().replace(b"\\", b"/"), output)


def written_files(directory):
    return {path.relative_to(directory).as_posix(): path.read_bytes()
            for path in directory.rglob("*") if path.is_file()}


class SameAsLinux(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.directory = Path(directory.name)

    def compare_tool(self, *arguments, cwds=(SOURCE, SOURCE)):
        """Runs the tool on both systems and gives what it gave."""
        linux, windows = (run(program, *arguments, cwd=cwd)
                          for program, cwd in zip(programs("tools/ovi"), cwds))
        with self.subTest(command=" ".join(map(str, arguments))):
            self.assertEqual(linux[0], windows[0])
            self.assertEqual(linux[1], with_slashes(windows[1]))
            self.assertEqual(linux[2], with_slashes(windows[2]))
            self.assertNotIn(b"\r", windows[1] + windows[2])
        return linux

    def samples(self, pattern):
        files = sorted(path.relative_to(SOURCE).as_posix()
                       for path in (SOURCE / "examples").rglob(pattern))
        self.assertGreaterEqual(len(files), 8)
        return files

    def copies(self):
        """A copy of the samples for each of the two systems."""
        roots = [self.directory / name for name in ("linux", "windows")]
        for root in roots:
            shutil.copytree(SOURCE / "examples", root / "examples")
        return roots

    def test_check_finds_the_same(self):
        for form in ("text", "json"):
            for file in self.samples("*.asset"):
                self.compare_tool("check", "--format", form, *SCHEMA, file)
            self.compare_tool("check", "--format", form, *self.samples("faulty/*.template"))
        self.assertEqual(0, self.compare_tool("check", *SCHEMA,
                                              *self.samples("schema/**/*.template"))[0])

    def test_show_shows_the_same(self):
        for file in self.samples("*.asset") + self.samples("schema/**/*.template"):
            self.compare_tool("show", "--all", *SCHEMA, file)

    def test_graph_draws_the_same(self):
        code, graph, _ = self.compare_tool("graph", *SCHEMA)
        self.assertEqual((0, b"digraph"), (code, graph[:7]))

    def test_pack_packs_the_same_bytes(self):
        packed = []
        for file in self.samples("scenes/*.asset"):
            text = (SOURCE / file).read_text(encoding="utf-8")
            for name in re.findall(r"<asset name=['\"]([^'\"]+)", text)[:3]:
                result = self.compare_tool("pack", "--hex", "--asset", name, *SCHEMA, file)
                packed += [result] if result[0] == 0 else []
        self.assertGreater(len(packed), 8)

    def test_packages_are_listed_in_the_same_order(self):
        for form in ("text", "json"):
            code, listed, _ = self.compare_tool("packages", "--format", form, *PATHS)
            self.assertEqual(0, code)
            self.assertIn(b"studio.vehicles.water", listed)

    def test_fmt_writes_the_same_bytes(self):
        roots = self.copies()
        self.compare_tool("fmt", "--force", *SCHEMA, *self.samples("schema/**/*.template"),
                          *self.samples("scenes/**/*.asset"), cwds=roots)
        linux, windows = map(written_files, roots)
        self.assertEqual(linux, windows)
        self.assertNotEqual(linux, {f"examples/{name}": text for name, text in
                                    written_files(SOURCE / "examples").items()})

    def test_the_host_prints_and_writes_the_same(self):
        outputs = []
        for program, name in zip(programs("examples/ovi_host"), ("linux", "windows")):
            (self.directory / name).mkdir()
            code, printed, errors = run(program, SOURCE / "examples", name, cwd=self.directory)
            self.assertEqual((0, b""), (code, errors))
            outputs.append(printed.replace(b"\r\n", b"\n").replace(name.encode(), b"DIRECTORY"))
        self.assertEqual(*outputs)
        linux = written_files(self.directory / "linux")
        self.assertGreaterEqual(len(linux), 2)
        self.assertEqual(linux, written_files(self.directory / "windows"))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
