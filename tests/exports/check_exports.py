#!/usr/bin/env python3
"""Checks that three lists of the exported functions are one and the same:

- the committed list, one name per line, sorted, without repetition;
- the dynamic symbols that the built library defines;
- the functions declared with OVI_API in the public headers.

The names declared in a header are compared as a set per library, so a function that is declared
but not built, built but not declared, or missing in the list is named with the place it lacks in.
"""

import argparse
import re
import subprocess
import sys
from pathlib import Path

# OVI_API <result type> [calling convention] <name>(
DECLARATION = re.compile(r"\bOVI_API\b[^;{}()]*?\b(\w+)\s*\(")
COMMENT = re.compile(r"/\*.*?\*/|//[^\n]*", re.DOTALL)
DIRECTIVE = re.compile(r"^[ \t]*#(?:[^\n]*\\\n)*[^\n]*$", re.MULTILINE)
# What a linker itself puts among the dynamic symbols of some systems.
LINKER_SYMBOLS = {"_init", "_fini", "_edata", "_end", "__bss_start"}


def committed_names(path):
    names = path.read_text().split()
    faults = []
    if names != sorted(set(names)):
        faults.append(f"{path}: not sorted bytewise, or a name stands there twice")
    return set(names), faults


def built_names(nm, library):
    if library.suffix.lower() == ".dll":
        return dll_names(nm, library)
    command = [nm, "-D", "--defined-only", "--format=posix", str(library)]
    output = subprocess.run(command, capture_output=True, text=True, check=True).stdout
    names = {line.split()[0].split("@")[0] for line in output.splitlines() if line.strip()}
    return names - LINKER_SYMBOLS


def dll_names(objdump, library):
    command = [objdump, "-p", str(library)]
    output = subprocess.run(command, capture_output=True, text=True, check=True).stdout
    table = output.partition("[Ordinal/Name Pointer] Table")[2]
    return set(re.findall(r"^\s*\[ *\d+\] (?:\+base\[ *\d+\]\s+\w+ )?(\w+)$", table, re.MULTILINE))


def declared_names(folder):
    names = {}
    faults = []
    for header in sorted(folder.glob("*.h")):
        text = DIRECTIVE.sub("", COMMENT.sub("", header.read_text()))
        for name in DECLARATION.findall(text):
            if name in names:
                faults.append(f"{name}: declared in {names[name]} and in {header.name}")
            names[name] = header.name
    return set(names), faults


def compare(left, right, left_title, right_title):
    return ([f"{name}: in {left_title}, not in {right_title}" for name in sorted(left - right)] +
            [f"{name}: in {right_title}, not in {left_title}" for name in sorted(right - left)])


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--nm", default="nm", help="nm, or objdump for a DLL")
    parser.add_argument("--library", type=Path, required=True)
    parser.add_argument("--list", type=Path, required=True)
    parser.add_argument("--headers", type=Path, required=True)
    arguments = parser.parse_args()

    committed, faults = committed_names(arguments.list)
    built = built_names(arguments.nm, arguments.library)
    declared, repeated = declared_names(arguments.headers)
    faults += repeated
    faults += compare(committed, built, "the committed list", "the library")
    faults += compare(committed, declared, "the committed list", "the headers")
    faults += [f"{name}: does not begin with Ovi" for name in sorted(committed)
               if not name.startswith("Ovi")]
    if not committed:
        faults.append(f"{arguments.list}: empty")

    for fault in faults:
        print(fault)
    print(f"{len(committed)} listed, {len(built)} built, {len(declared)} declared, "
          f"{len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
