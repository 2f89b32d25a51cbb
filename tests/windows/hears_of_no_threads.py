#!/usr/bin/env python3
"""Runs the tests that make threads and end them, lets Wine note every call of an entry point, and
looks for those of the library: one when it is loaded, one when the process ends, none for a thread.

usage: hears_of_no_threads.py TEST_PROGRAM      (OVI_EMULATOR names what runs it)
"""

import os
import re
import subprocess
import sys
from collections import Counter

THREADS = 500  # the test makes that many, and other modules hear of each


def count_calls(trace):
    """How often each module's entry point was called, and why."""
    calls = re.findall(r'MODULE_InitDLL \(\w+ L"([^"]*)",(\w+),\w+\) - CALL', trace)
    return Counter((module.lower(), reason) for module, reason in calls)


def main():
    command = [*os.environ["OVI_EMULATOR"].split(), sys.argv[1],
               "--gtest_filter=WindowsLibraryTest.WorksInThreadsThatComeAndGo"]
    done = subprocess.run(command, capture_output=True, text=True, errors="replace", check=False,
                          timeout=120, env={**os.environ, "WINEDEBUG": "+module"})
    calls = count_calls(done.stderr)
    own = {reason: count for (module, reason), count in calls.items() if module == "ovicore.dll"}
    others = max((count for (_, reason), count in calls.items() if reason == "THREAD_ATTACH"),
                 default=0)
    print(f"exit code {done.returncode}; calls of the library: {own}; "
          f"of the module that hears most of threads: {others}")
    quiet = own == {"PROCESS_ATTACH": 1, "PROCESS_DETACH": 1}
    return 0 if done.returncode == 0 and quiet and others >= THREADS else 1


if __name__ == "__main__":
    sys.exit(main())
