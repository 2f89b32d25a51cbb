#!/usr/bin/env python3
"""Checks that the library's sources include each other in one direction.

usage: check_includes.py <source directory>

A header may include only headers of its own folder and of those below it. A source file may go
against the direction where the model needs a way back; the comment above such an include says why.
"""

import re
import sys
from pathlib import Path

RANKS = {"core": 0, "platform": 1, "notify": 1, "xml": 1, "types": 2, "schema": 3, "manager": 4,
         "instances": 5, "formats": 6, "ovi": 6, "api": 7}

INCLUDE = re.compile(r'#include "((\w+)/\w+\.h)"')


def is_explained(lines, at):
    """Whether the block of includes that line `at` stands in begins with a comment."""
    while at > 0 and lines[at - 1].startswith("#include"):
        at -= 1
    return at > 0 and lines[at - 1].startswith("//")


def check_file(path, root):
    folder = path.relative_to(root).parts[0]
    own_rank = RANKS.get(folder)
    if own_rank is None:
        yield f"{path}: the folder has no place in the direction"
        return
    lines = path.read_text(encoding="utf-8").splitlines()
    for at, line in enumerate(lines):
        match = INCLUDE.match(line)
        if not match:
            continue
        rank = RANKS.get(match.group(2))
        place = f"{path}:{at + 1}"
        if rank is None:
            yield f"{place}: {match.group(1)} has no place in the direction"
        elif rank > own_rank or (rank == own_rank and match.group(2) != folder):
            if path.suffix == ".h":
                yield f"{place}: this header must not know {match.group(1)}"
            elif not is_explained(lines, at):
                yield f"{place}: no comment says why this file knows {match.group(1)}"


def main():
    if len(sys.argv) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    root = Path(sys.argv[1])
    files = sorted(root.glob("*/*.h")) + sorted(root.glob("*/*.cpp"))
    if not files:
        print(f"no sources below {root}", file=sys.stderr)
        return 2
    findings = [finding for path in files for finding in check_file(path, root)]
    for finding in findings:
        print(finding)
    print(f"{len(files)} files, {len(findings)} findings")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
