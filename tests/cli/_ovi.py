"""Runs the program ovi; shared by the tests beside this file.

Each test is called with the build directory and the source directory.
"""

import os
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

BUILD_DIR = Path(sys.argv[1]).resolve() if len(sys.argv) > 1 else Path("build")
SOURCE_DIR = Path(sys.argv[2]).resolve() if len(sys.argv) > 2 else Path.cwd()
EXAMPLES = SOURCE_DIR / "examples"
SCHEMA = EXAMPLES / "schema"
EXPECTED = SOURCE_DIR / "tests" / "cli" / "expected"
# What runs the program when it was built for another system than this one.
EMULATOR = os.environ.get("OVI_EMULATOR", "").split()
FOR_WINDOWS = os.name == "nt" or bool(EMULATOR)
PROGRAM = BUILD_DIR / "tools" / ("ovi.exe" if FOR_WINDOWS else "ovi")


def sample_schema(root=SCHEMA):
    """The options for the sample schema: three libraries, each of which uses those before it."""
    return [part for name in ("core", "show", "modeling") for part in ("--schema", root / name)]


class Result:
    """What a run of the program gave."""

    def __init__(self, completed):
        self.code = completed.returncode
        self.out = with_slashes(completed.stdout.decode("utf-8"))
        self.err = with_slashes((completed.stderr or b"").decode("utf-8"))


def with_slashes(output):
    """The output with "/" in the path at the start of each finding, on Windows too."""
    if not FOR_WINDOWS:
        return output
    return re.sub(r"^(.*?)(?=(:\d+)?: (error|warning|note): )",
                  lambda path: path.group().replace("\\", "/"), output, flags=re.MULTILINE)


def ovi(*arguments, cwd=SOURCE_DIR, **options):
    """Runs the program in a directory, the source directory unless told otherwise."""
    command = [*EMULATOR, str(PROGRAM), *map(str, arguments)]
    options = {"stdout": subprocess.PIPE, "stderr": subprocess.PIPE, **options}
    return Result(subprocess.run(command, cwd=cwd, timeout=120, check=False, **options))


class TestCase(unittest.TestCase):
    """A test with a directory of its own for files."""

    maxDiff = None

    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.directory = Path(directory.name).resolve()

    def write(self, name, text):
        """Writes a file below the test's directory and gives its path."""
        path = self.directory / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")
        return path

    def check_result(self, result, code, out, summary):
        """Compares all that a run of `ovi check` gave."""
        self.assertEqual((code, out, summary + "\n"), (result.code, result.out, result.err))


def template(name, content="", head="", package="test"):
    """The text of a template file with one template."""
    return (
        "<?xml version='1.0' encoding='UTF-8'?>\n"
        f"<templates package='{package}'>\n{head}"
        f"<template name='{name}'>\n{content}</template>\n</templates>\n"
    )


def scene(content=""):
    """The text of a scene file."""
    return f"<?xml version='1.0' encoding='UTF-8'?>\n<assets>\n{content}</assets>\n"


def main():
    """Runs the tests of the calling file."""
    unittest.main(argv=sys.argv[:1])
