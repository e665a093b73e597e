#!/usr/bin/env python3
"""Mends a wrong engine in a tourney that is being played, with the lines that `help replay` tells, and looks whether
all games have a result then and none was lost.

usage: help_mending.py [--launcher=WINE] QUICK STUB HELP_FILE SCRATCH

QUICK is the program whose clock does not wait, STUB the stand-in for WinBoard.
"""

import os
import pathlib
import shutil
import subprocess
import sys

from help_examples import topics

SECONDS = 100
WRONG, RIGHT = "wrong-program", "alpha-program"
SAVE = "save mend.ini"
TOURNEY = f"""\
createplayer
Alpha




{WRONG}

createplayer
Beta




beta-program

createplayer
Gamma




gamma-program

addallplayers
set type roundrobin
set timecontrol 0 1 0
set autosave on first.ini
createrrgames
spool -all
run
"""
# What becomes of a game whose engine cannot be started.
PLAN = "".join(f"{pair} * nodebug nopgn\n" for pair in (f"{WRONG}-beta-program", f"gamma-program-{WRONG}"))


def lines_of_help(path):
    """What `help replay` wants typed, before and behind the change of the file."""
    [lines] = [lines for name, lines in topics(path) if name == "Replay"]
    typed = [line[2:].split("  ")[0] for line in lines if line[:2] == "  " and line[2:3].strip()]
    typed = typed[typed.index("stop"):]
    save = typed.index(SAVE)
    return typed[:save + 1], typed[save + 1:]


class Desk:
    """An empty directory with the program and the stand-in."""

    def __init__(self, launcher, program, stub, scratch):
        self.path = pathlib.Path(scratch).resolve()
        shutil.rmtree(self.path, ignore_errors=True)
        self.path.mkdir(parents=True)
        self.program = self.path / os.path.basename(program)
        shutil.copy(program, self.program)
        shutil.copy(stub, self.path / "winboard.exe")
        (self.path / "stub_plan.txt").write_text(PLAN)
        self.launcher = launcher

    def type(self, lines):
        """What the program prints when it is given these lines and plays all games behind them."""
        (self.path / "lines.txt").write_text("".join(line + "\n" for line in lines))
        command = [*self.launcher, str(self.program), "lines.txt", "--wait"]
        # Not through a pipe: Wine's own processes outlive the program and would hold it open.
        with open(self.path / "output.txt", "w+b") as output:
            subprocess.run(command, cwd=self.path, stdin=subprocess.DEVNULL, stdout=output, timeout=SECONDS,
                           check=False)
            output.seek(0)
            return output.read().decode().replace("\r\n", "\n")

    def games(self, file):
        """The lines of the games of a saved tourney."""
        said = self.type([f"load {file}", "showgames"])
        return [line.strip() for line in said.split("\n") if ". Round " in line]

    def change_line(self, file, old, new):
        """Changes the one line that is `old`; how many there were."""
        path = self.path / file
        data = path.read_bytes()
        path.write_bytes(data.replace(b"\n" + old.encode(), b"\n" + new.encode()))
        return data.count(b"\n" + old.encode())


def complaints(desk, help_file):
    desk.type(TOURNEY.split("\n")[:-1])
    before = desk.games("first.ini")
    lost = [game for game in before if "1 / 2" not in game and " - 0" not in game and " - 1" not in game]
    if len(before) != 3 or len(lost) != 2:
        yield f"the wrong engine should have lost two of three games: {before}"

    # What stands to reason does not help.
    said = desk.type(["load first.ini", "player 1 exe " + RIGHT, "replay", "run"])
    if said.count("UNKNOWN") == 0:
        yield "a change of the database helped, which the help denies"

    first, then = lines_of_help(help_file)
    desk.type(["load first.ini", *first])
    if desk.change_line("mend.ini", WRONG, RIGHT) != 1:
        yield "the wrong program is not one line of the saved tourney"
    desk.type(then)
    after = desk.games("mend.ini")
    if len(after) != 3 or any("*" in game or "READY" not in game for game in after):
        yield f"not every game has a result: {after}"
    if [game for game in before if game not in lost and game not in after]:
        yield "a game that had a result has another one"


def main():
    option = "--launcher="
    words = sys.argv[1:]
    launcher = words.pop(0)[len(option):].split() if words[0].startswith(option) else []
    program, stub, help_file, scratch = words
    found = list(complaints(Desk(launcher, program, stub, scratch), help_file))
    for text in found:
        print(text)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
