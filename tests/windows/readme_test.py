#!/usr/bin/env python3
"""Types the first tourney of the README's section Windows, as it stands there, and looks at what becomes of it.

usage: readme_test.py --readme README --quick QUICK --stub STUB --scratch DIRECTORY --launcher WINE

The directories of the README lie in DIRECTORY instead of C:\\. WinBoard is the stand-in, with three engines in its
winboard.ini; it changes nothing of where files lie, so what is told of them must be told in full.
"""

import argparse
import pathlib
import re
import shutil
import subprocess
import sys

SECONDS = 100
ENGINES = ("alpha", "beta", "gamma")
FIRST_LINE = "set winboardpath "


def first_tourney(readme):
    """The lines that the README wants typed."""
    section = readme.read_text().split("\n## Windows\n")[1].split("\n## ")[0]
    blocks = re.findall(r"```\n(.*?)```", section, re.DOTALL)
    return next(block for block in blocks if block.startswith(FIRST_LINE))


def winboard_ini():
    """As WinBoard writes it: an engine of each list, and options of no concern."""
    text = "; WinBoard\n"
    for name, letter in (("first", "f"), ("second", "s")):
        lines = "".join(f'{engine} /{letter}d="..\\Engines"\n' for engine in ENGINES)
        text += f"/{name}ChessProgramNames={{\n{lines}}}\n"
    return text + "/size=medium\n"


def play(options, scratch):
    """Plays the tourney; returns what the program says."""
    winboard, tourney = scratch / "WinBoard", scratch / "tourney"
    winboard.mkdir(parents=True)
    tourney.mkdir()
    shutil.copy(options.stub, winboard / "winboard.exe")
    (winboard / "winboard.ini").write_text(winboard_ini())
    program = scratch / "tarvendo.exe"
    shutil.copy(options.quick, program)
    here = "Z:" + str(scratch).replace("/", "\\") + "\\"
    (scratch / "script.txt").write_text(first_tourney(options.readme).replace("C:\\", here) + "texttable\n")
    done = subprocess.run(
        [*options.launcher, str(program), "script.txt", "--wait"],
        cwd=scratch, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, timeout=SECONDS, check=False)
    return done.stdout.decode()


def complaints(scratch, said):
    tourney = scratch / "tourney"
    there = {path.name for path in tourney.iterdir()}
    for name in sorted({"first.ini", "first.pgn", "table.htm", "stub_words.txt"} - there):
        yield f"{name} is not in the tourney's directory"
    if any(path.name not in ("winboard.exe", "winboard.ini") for path in (scratch / "WinBoard").iterdir()):
        yield "something was written into WinBoard's directory"
    if re.search(r"MISSING|ALREADY|ANOTHER", (tourney / "stub_words.txt").read_text()):
        yield "WinBoard was started in a wrong way"
    if (tourney / "first.pgn").read_text().count("[Event ") != 3:
        yield "first.pgn does not hold three games"
    if "Error" in said or "UNKNOWN" in said:
        yield "a game went wrong"


def main(words):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    for name in ("readme", "quick", "stub", "scratch"):
        parser.add_argument("--" + name, type=pathlib.Path, required=True)
    parser.add_argument("--launcher", type=str.split, required=True)
    options = parser.parse_args(words)
    shutil.rmtree(options.scratch, ignore_errors=True)
    scratch = options.scratch.resolve()
    said = play(options, scratch)
    found = []
    try:
        found.extend(complaints(scratch, said))
    except OSError as error:
        found.append(str(error))
    for text in found:
        print(text)
    if found:
        print(said)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
