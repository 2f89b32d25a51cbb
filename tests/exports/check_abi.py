#!/usr/bin/env python3
"""Checks that the comparison with the recorded binary interface notices what it is there for.

Each change is made in a copy of the public headers. Those that break hosts built against the
recorded interface must be told from additions, with which such hosts still run, and from what
concerns no host.

usage: check_abi.py SOURCE_DIR
"""

import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

SAME, ADDITION, BREAK = "is the recorded one", "there are additions", "may not run"

# What is done, the header, the text in it, the text in its place, and what must be said.
CHANGES = [
    ("a function is gone", "asset.h", "OVI_API bool OviAssetManager_IsDirty(void);", "", BREAK),
    ("a parameter's type", "asset.h", "GetAssetAt(int index)", "GetAssetAt(int64_t index)", BREAK),
    ("a parameter more", "asset.h", "GetAssetAt(int index)", "GetAssetAt(int index, int)", BREAK),
    ("a result's type", "asset.h", "OVI_API bool OviAsset_SetReference",
     "OVI_API void OviAsset_SetReference", BREAK),
    ("a callback's parameter", "types.h", "void* object, int event", "void* object, long event",
     BREAK),
    ("the base class of a handle", "types.h", "OVI_HANDLE(OviAsset, OviInstance)",
     "OVI_HANDLE(OviAsset, OviNamedObject)", BREAK),
    ("a member of a structure", "types.h", "struct OviLockable {", "struct OviLockable { int state;",
     BREAK),
    ("a number", "types.h", "OVI_HOST_3DSMAX = 2", "OVI_HOST_3DSMAX = 4", BREAK),
    ("a number is gone", "types.h", "OVI_SHAPE_CONE = 16,", "", BREAK),
    ("a number more", "types.h", "OVI_HOST_3DSMAX = 2", "OVI_HOST_3DSMAX = 2, OVI_HOST_OTHER = 4",
     ADDITION),
    ("numbers of a new kind", "types.h", "/** Hosts, as bits. */",
     "enum { OVI_NEW_KIND = 1 };", ADDITION),
    ("a function more", "asset.h", "OVI_API bool OviAssetManager_IsDirty(void);",
     "OVI_API bool OviAssetManager_IsDirty(void); OVI_API bool OviAsset_New(OviAsset* asset);",
     ADDITION),
    ("a parameter's name", "asset.h", "GetAssetAt(int index)", "GetAssetAt(int place)", SAME),
]


def changed_headers(source, folder, header, old, new):
    shutil.copytree(source / "include", folder)
    path = folder / "ovi" / header
    text = path.read_text()
    if text.count(old) != 1:
        sys.exit(f"{header}: '{old}' stands there {text.count(old)} times, expected once")
    path.write_text(text.replace(old, new))


def compare(source, *options):
    result = subprocess.run([str(source / "scripts" / "abi.sh"), *options],
                            capture_output=True, text=True, check=False)
    return result.returncode, result.stdout + result.stderr


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    source = Path(sys.argv[1])
    faults = 0
    with tempfile.TemporaryDirectory() as name:
        for number, (title, header, old, new, expected) in enumerate(CHANGES):
            folder = Path(name) / str(number)
            changed_headers(source, folder, header, old, new)
            code, output = compare(source, "--headers", str(folder))
            if (code == 0) != (expected == SAME) or expected not in output:
                faults += 1
                print(f"{title}: expected '{expected}'; exit code {code}\n{output}")
    print(f"{len(CHANGES)} changes, {faults} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
