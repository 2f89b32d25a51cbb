#!/usr/bin/env python3
"""Runs the cases of ovi_hostile at a tenth of their size and in whole, each in a process of its own,
and prints a table: time and peak memory for each unit must not grow with the size.

usage: hostile.py ovi_hostile [--scale PERCENT] [--only CASE] [--check]

--check fails where the memory for each unit more than doubles, or its time grows fourfold: times
depend on what else the machine does, but what grows with the square takes ten times as much.
"""
import argparse
import subprocess
import sys
import tempfile

# Name, what it is, size in bytes or things.
CASES = [("scene", "A scene of 1 GB", 10**9),
         ("value", "A value of 100 MB", 10**8),
         ("attributes", "A million attributes on an element", 10**6),
         ("templates", "A million templates", 10**6),
         ("errors", "A million errors", 10**6),
         ("paths", "8,000 search paths, each with a package", 8 * 10**3),
         ("missing", "20,000 packages missing beside 20,000 files", 2 * 10**4)]

ENOUGH_MS = 20  # below it, a ratio of times is noise
ENOUGH_KB = 1500  # and of memory, which comes in pieces
MOST_TIME = 4  # for each unit, compared with a tenth
MOST_MEMORY = 2


def measure(program, case, size):
    """The steps of a case: name, milliseconds, kilobytes."""
    with tempfile.TemporaryDirectory() as directory:
        result = subprocess.run([program, case, str(size), directory], text=True,
                                stdout=subprocess.PIPE)
    if result.returncode != 0:
        sys.exit(f"{case} of size {size} failed")
    rows = [line.split(";") for line in result.stdout.splitlines()]
    return [(name, float(time), int(memory)) for name, time, memory in rows]


def growth(small, large, enough):
    """How much more each unit takes at the tenfold size; None where that would be noise."""
    return large / small / 10 if small >= enough else None


def shown(ratio):
    return "-" if ratio is None else f"{ratio:.2f}"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("--scale", type=float, default=100)
    parser.add_argument("--only", default="")
    parser.add_argument("--check", action="store_true")
    arguments = parser.parse_args()
    print("| Case | Step | Time, a tenth | Time, whole | Growth per unit "
          "| Peak memory, a tenth | Peak memory, whole | Growth per unit |")
    print("|---|---|--:|--:|--:|--:|--:|--:|")
    linear = True
    for case, title, whole in CASES:
        if arguments.only and arguments.only != case:
            continue
        size = max(int(whole * arguments.scale / 100), 100)
        small = measure(arguments.program, case, size // 10)
        large = measure(arguments.program, case, size)
        if size != whole:
            title += f" (here {size})"
        for (step, time, memory), (_, more_time, more_memory) in zip(small, large):
            time_growth = growth(time, more_time, ENOUGH_MS)
            memory_growth = growth(memory, more_memory, ENOUGH_KB)
            linear = (linear and (time_growth is None or time_growth < MOST_TIME)
                      and (memory_growth is None or memory_growth < MOST_MEMORY))
            print(f"| {title} | {step} | {time:.0f} ms | {more_time:.0f} ms "
                  f"| {shown(time_growth)} "
                  f"| {memory / 1000:.0f} MB | {more_memory / 1000:.0f} MB "
                  f"| {shown(memory_growth)} |", flush=True)
            title = ""
    if arguments.check and not linear:
        sys.exit("time or memory grows more than linearly")


main()
