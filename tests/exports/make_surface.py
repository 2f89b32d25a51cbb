#!/usr/bin/env python3
"""Writes a C++ source file that defines every function of the public headers as they declare it.

Compiled with debugging information, it describes the binary interface and nothing else: what hosts
see of the library, without the classes behind it. The library is compiled against the same headers,
and a definition that differs from its declaration is an error there, for names that C shares.

usage: make_surface.py HEADER_DIR > surface.cpp       (HEADER_DIR is the one that holds "ovi")
"""

import re
import sys
from pathlib import Path

from check_exports import COMMENT, DIRECTIVE

DECLARATION = re.compile(r"\bOVI_API\b([^;{}]*\));")


def definitions(header):
    text = DIRECTIVE.sub("", COMMENT.sub("", header.read_text()))
    found = DECLARATION.findall(text)
    if len(found) != len(re.findall(r"\bOVI_API\b", text)):
        sys.exit(f"{header}: a declaration in a form that this script does not know")
    return [f"OVI_DEFINE {' '.join(declaration.split())} {{ __builtin_trap(); }}"
            for declaration in found]


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    headers = sorted((Path(sys.argv[1]) / "ovi").glob("*.h"))
    lines = [line for header in headers for line in definitions(header)]
    if not lines:
        sys.exit(f"{sys.argv[1]}: no functions are declared there")
    print('#include "ovi/ovi.h"')
    print('#define OVI_DEFINE extern "C" OVI_VISIBLE')
    print("\n".join(lines))


if __name__ == "__main__":
    main()
