#!/usr/bin/env python3
"""Checks what the build for Windows gives to those who link or ship it:

- the DLL and the tool import nothing but what every Windows brings, so that nothing has to be
  shipped beside them;
- the DLL has no thread storage, with which the system would go on telling it of every thread;
- the module definition file and both import libraries name every exported function, and no other.
"""

import argparse
import re
import subprocess
import sys
from pathlib import Path

# The DLLs of Windows itself that are allowed; what the compiler brings (libgcc, libstdc++,
# libwinpthread) is linked in.
SYSTEM_DLLS = {"advapi32.dll", "kernel32.dll", "msvcrt.dll", "shell32.dll"}
# What an import library of GNU's linker has beside the functions.
OWN_NAME = "OviCore_dll_iname"
# A symbol of an import library: "  I __imp_Name" or "  T Name".
IMPORT = re.compile(r" [ITt] (?:__imp_)?(Ovi\w+)$", re.MULTILINE)


def run(*command):
    return subprocess.run(list(map(str, command)), capture_output=True, text=True,
                          check=True).stdout


def check_imports(objdump, program, allowed):
    names = re.findall(r"DLL Name: (\S+)", run(objdump, "-p", program))
    faults = [f"{program.name} imports {name}" for name in names if name.lower() not in allowed]
    return faults + ([] if names else [f"{program.name}: no import table"])


def check_thread_storage(objdump, library):
    entry = re.search(r"Entry 9 \w+ (\w+) Thread Storage", run(objdump, "-p", library))
    if entry and int(entry.group(1), 16) == 0:
        return []
    return [f"{library.name} has thread storage"]


def compare(listed, names, title):
    return ([f"{name}: not in {title}" for name in sorted(listed - names)] +
            [f"{name}: only in {title}" for name in sorted(names - listed)])


def definition_names(path):
    head, _, names = path.read_text().partition("EXPORTS\n")
    if head.strip() != "LIBRARY OviCore.dll":
        return set()
    return set(names.split())


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--objdump", required=True)
    parser.add_argument("--nm", required=True)
    parser.add_argument("--build", type=Path, required=True)
    parser.add_argument("--list", type=Path, required=True)
    arguments = parser.parse_args()
    build = arguments.build
    library = build / "OviCore.dll"
    tool = build / "tools" / "ovi.exe"

    listed = set(arguments.list.read_text().split())
    faults = [] if listed else [f"{arguments.list}: empty"]
    faults += check_imports(arguments.objdump, library, SYSTEM_DLLS)
    if tool.exists():
        faults += check_imports(arguments.objdump, tool, SYSTEM_DLLS | {"ovicore.dll"})
    faults += check_thread_storage(arguments.objdump, library)
    faults += compare(listed, definition_names(build / "OviCore.def"), "OviCore.def")
    for name in ("libOviCore.dll.a", "OviCore.lib"):
        found = set(IMPORT.findall(run(arguments.nm, build / name))) - {OWN_NAME}
        faults += compare(listed, found, name)

    for fault in faults:
        print(fault)
    print(f"{len(listed)} functions, {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
