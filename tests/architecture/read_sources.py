#!/usr/bin/env python3
"""Lets the compiler read every source of a build folder that is configured: its errors and warnings come, but no
program is made, which takes most of the time of a build. Headers that the build compiles in advance are compiled.

Ends with exit code 1 when the compiler complains, and prints what it says.
"""

import concurrent.futures
import json
import os
import pathlib
import shlex
import subprocess
import sys

COMPILED_HEADERS = (".gch", ".pch")


def output_of(words):
    return words[words.index("-o") + 1]


def commands_of(build):
    """(the commands that compile headers, those that compile sources), each with the folder to run it in."""
    headers, sources = [], []
    for entry in json.loads((build / "compile_commands.json").read_text()):
        words = shlex.split(entry["command"])
        is_header = output_of(words).endswith(COMPILED_HEADERS)
        (headers if is_header else sources).append((words, entry["directory"]))
    return headers, sources


def complaint(command):
    """What the compiler says; empty when it has nothing to say."""
    words, folder = command
    told = subprocess.run(words, cwd=folder, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
    if told.returncode == 0:
        return ""
    return told.stdout or f"exit code {told.returncode}: {shlex.join(words)}\n"


def complaints(commands):
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        return [text for text in pool.map(complaint, commands) if text]


def main(build):
    headers, sources = commands_of(build)
    if not sources:
        sys.exit(f"{build}: nothing is compiled there")
    for words, folder in headers:
        pathlib.Path(folder, output_of(words)).parent.mkdir(parents=True, exist_ok=True)
    found = complaints(headers)
    if not found:
        found = complaints([(words + ["-fsyntax-only"], folder) for words, folder in sources])
    sys.stdout.write("".join(found))
    print(f"{len(sources)} sources read")
    return 1 if found else 0


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit("usage: read_sources.py BUILD-FOLDER")
    sys.exit(main(pathlib.Path(sys.argv[1])))
