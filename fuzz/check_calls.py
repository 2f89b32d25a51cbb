"""Compares the functions that the fuzzer of calls can call with the list of exported ones.

usage: check_calls.py <folder of the call tables> <list of exported functions>
"""

import pathlib
import re
import sys


def main() -> int:
    tables, exported = map(pathlib.Path, sys.argv[1:3])
    row = re.compile(r"OVI_(?:READS|SETS|CHANGES|TRANSFERS|MAKES|SPECIAL|ROW)\(\s*(Ovi\w+)")
    rows = [name for file in sorted(tables.glob("CallsOf*.cpp"))
            for name in row.findall(file.read_text(encoding="utf-8"))]
    listed = re.findall(r"^[A-Za-z_]\w*", exported.read_text(encoding="utf-8"), re.M)
    wrong = [f"{name} is called by no row" for name in listed if name not in rows]
    wrong += [f"{name} is no exported function" for name in rows if name not in listed]
    wrong += [f"{name} has several rows" for name in sorted(set(rows)) if rows.count(name) > 1]
    print("\n".join(wrong) or f"{len(rows)} functions are called")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
