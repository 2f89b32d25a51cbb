#!/usr/bin/env python3
"""Prints the totals of a run whose test programs are run in parts: what failed, "N skipped" where there are any, then
"N passed, N failed".

usage: totals.py JUNIT_FILE RESULTS_DIRECTORY

The first file is what ctest writes; the directory holds a JSON file for each part of a GoogleTest
program, whose cases are counted one by one. A part that failed without a failed case, because it
crashed or ended early, counts as one failure.
"""

import json
import sys
import xml.etree.ElementTree as ElementTree
from collections import Counter
from pathlib import Path


def count_cases(document):
    counts = Counter()
    for suite in document["testsuites"]:
        for case in suite["testsuite"]:
            if case.get("failures"):
                counts["failed"] += 1
                print(f"failed: {suite['name']}.{case['name']}")
            elif case.get("result") == "SKIPPED" or case.get("status") == "NOTRUN":
                counts["skipped"] += 1
            else:
                counts["passed"] += 1
    return counts


def count_test(test, results):
    name = test.get("name")
    status = {"run": "passed", "fail": "failed"}.get(test.get("status"), "skipped")
    report = results / f"{name}.json"
    if not report.exists():
        if status == "failed":
            print(f"failed: {name}")
        return Counter([status])
    counts = count_cases(json.loads(report.read_text(encoding="utf-8")))
    if status == "failed" and not counts["failed"]:
        print(f"failed: {name}, outside of its cases")
        counts["failed"] += 1
    return counts


def main():
    tests = ElementTree.parse(sys.argv[1]).getroot().iter("testcase")
    counts = sum((count_test(test, Path(sys.argv[2])) for test in tests), Counter())
    if counts["skipped"]:
        print(f"{counts['skipped']} skipped")
    print(f"{counts['passed']} passed, {counts['failed']} failed")
    return 0 if counts["passed"] and not counts["failed"] else 1


if __name__ == "__main__":
    sys.exit(main())
