#!/usr/bin/env python3
"""Builds and runs the example of the README, and checks that its links lead somewhere.

usage: check_readme.py SOURCE_DIR LIBRARY_DIR C_COMPILER [OPTION...]

OVI_EMULATOR names what runs the example where it is built for another system than this one.
"""

import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path


def block(text, language):
    found = re.findall(rf"^```{language}\n(.*?)^```$", text, re.DOTALL | re.MULTILINE)
    if len(found) != 1:
        sys.exit(f"README.md: {len(found)} blocks of {language}, expected one")
    return found[0]


def check_links(source, text):
    lost = [link for link in re.findall(r"\]\(([^)#:]+)\)", text) if not (source / link).exists()]
    if lost:
        sys.exit(f"README.md: these links lead nowhere: {', '.join(lost)}")


def main():
    if len(sys.argv) < 4:
        sys.exit(__doc__)
    source, library, compiler = Path(sys.argv[1]), sys.argv[2], sys.argv[3:]
    emulator = os.environ.get("OVI_EMULATOR", "").split()
    text = (source / "README.md").read_text(encoding="utf-8")

    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        (folder / "Chair.template").write_text(block(text, "xml"))
        (folder / "host.c").write_text(block(text, "c"))
        subprocess.run(
            compiler + ["-std=c99", "-pedantic-errors", "-Wall", "-Wextra", "-Werror",
                        f"-I{source}/include", "host.c", f"-L{library}", "-lOviCore",
                        f"-Wl,-rpath,{library}", "-o", "host.exe"],
            cwd=folder, check=True)
        subprocess.run([*emulator, str(folder / "host.exe")], cwd=folder, check=True)
        scene = (folder / "room.asset").read_text()
        for expected in ("name='stool'", "template='furniture.Chair'",
                         "property='Chair.height' binding='' value='0.5'"):
            if expected not in scene:
                sys.exit(f"the saved scene lacks {expected}:\n{scene}")
    check_links(source, text)


if __name__ == "__main__":
    main()
