#!/usr/bin/env python3
"""Kills a program that saves two scenes to one file in turn, at random moments, again and again:
each time the file must be one of the two, byte for byte. Each kill may leave one temporary file.

usage: kill.py ovi_save_loop [--kills N] [--assets N] [--seed N]

Prints a row of a table: kills, what the file was then, temporary files left.
"""
import argparse
import os
import random
import subprocess
import sys
import tempfile
import time


def parse_arguments():
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("--kills", type=int, default=50)
    parser.add_argument("--assets", type=int, default=3000)
    parser.add_argument("--seed", type=int, default=1)
    return parser.parse_args()


def save_once(program, assets, path, scene):
    subprocess.run([program, str(assets), path, scene], check=True)
    with open(path, "rb") as file:
        return file.read()


def kill_while_saving(program, assets, path, delay):
    """Starts the program, and kills it a while after its first save."""
    with subprocess.Popen([program, str(assets), path], stdout=subprocess.PIPE) as process:
        process.stdout.readline()
        time.sleep(delay)
        if process.poll() is not None:
            sys.exit("the program ended by itself")
        process.kill()
    with open(path, "rb") as file:
        return file.read()


def main():
    arguments = parse_arguments()
    moments = random.Random(arguments.seed)
    found = {"one": 0, "other": 0}
    leftover = 0
    with tempfile.TemporaryDirectory() as directory:
        path = os.path.join(directory, "scene.asset")
        scenes = {save_once(arguments.program, arguments.assets, path, name): name
                  for name in found}
        if len(scenes) != len(found):
            sys.exit("the two scenes are the same")
        for kill in range(arguments.kills):
            text = kill_while_saving(arguments.program, arguments.assets, path,
                                     moments.uniform(0, 0.02))
            if text not in scenes:
                sys.exit(f"kill {kill + 1}: the file is neither scene, {len(text)} bytes")
            found[scenes[text]] += 1
            temporary = [name for name in os.listdir(directory) if name != "scene.asset"]
            if len(temporary) > 1 or not all(name.startswith(".ovi-") for name in temporary):
                sys.exit(f"kill {kill + 1}: left {temporary}")
            leftover += len(temporary)
            for name in temporary:
                os.remove(os.path.join(directory, name))
    if leftover == 0:
        sys.exit("no kill came while a file was being written")
    print(f"| {arguments.kills} | {found['one']} | {found['other']} | 0 | {leftover} |")


main()
