#!/usr/bin/env python3
"""Checks that a source file is refused by the compiler, and for the reason it was written for.

usage: expect_compile_errors.py FILE COMPILER [OPTION...]

A file that fails to compile because a header is missing proves nothing. Therefore:
- the compiler must report at least one error, and no fatal one;
- when lines of the file end in "// error", exactly these lines must be reported, and the file
  must compile once they are taken out.
"""

import re
import subprocess
import sys
import tempfile
from pathlib import Path

MARK = re.compile(r"(//|/\*)\s*error\s*(\*/)?\s*$")


def compile_file(path, command):
    run = subprocess.run(command + [str(path)], capture_output=True, text=True)
    return run.returncode, run.stderr


def error_lines(path, output):
    return {int(n) for n in re.findall(rf"{re.escape(str(path))}:(\d+):\d+: error:", output)}


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    path, command = Path(sys.argv[1]), sys.argv[2:]
    lines = path.read_text().split("\n")
    marked = {number for number, line in enumerate(lines, 1) if MARK.search(line)}

    code, output = compile_file(path, command)
    reported = error_lines(path, output)
    if code == 0:
        sys.exit(f"{path}: compiles, but must not")
    if "fatal error" in output or not reported:
        sys.exit(f"{path}: refused for another reason:\n{output}")
    if not marked:
        return
    if reported != marked:
        sys.exit(f"{path}: errors expected in lines {sorted(marked)}, "
                 f"reported in lines {sorted(reported)}:\n{output}")

    with tempfile.TemporaryDirectory() as folder:
        rest = Path(folder) / path.name
        rest.write_text("\n".join("" if MARK.search(line) else line for line in lines))
        code, output = compile_file(rest, command)
        if code != 0:
            sys.exit(f"{path}: does not compile without its marked lines either:\n{output}")


if __name__ == "__main__":
    main()
