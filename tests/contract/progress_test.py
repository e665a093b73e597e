#!/usr/bin/env python3
"""Looks at --progress at a terminal: the line is drawn anew in its place, the messages stay above it whole, and when all is
played it is gone and the summary stands there."""

import argparse
import os
import pty
import re
import subprocess
import sys

from stub_tourney import BrokenPromise, Tourney, add_options, games_between, make_ready

PLAYERS = ("Alpha", "Beta", "Gamma")
LINE = re.compile(r"\d/3 played, \d playing, 0 without result, round \d/3")


def screen_after(written):
    """What stands on the terminal, without the blanks at the lines' ends."""
    lines = []
    for raw in written.replace("\r\n", "\n").split("\n"):
        line = []
        column = 0
        for character in raw:
            if character == "\r":
                column = 0
                continue
            line[column : column + 1] = character
            column += 1
        lines.append("".join(line).rstrip())
    return lines


def read_all(descriptor, when_drawn_twice):
    """Everything that is written to the terminal until nobody has it open any more."""
    written = b""
    while True:
        try:
            written += os.read(descriptor, 65536)
        except OSError:
            return written.decode()
        if when_drawn_twice and written.count(b"played, 1 playing") >= 2:
            when_drawn_twice()
            when_drawn_twice = None


def let_go(tourney):
    tourney.write("stub_plan.txt", "")
    tourney.write("stub_go", "")


def check(tourney, written):
    drawn = LINE.findall(written)
    if len(drawn) < 2:
        raise BrokenPromise(f"the line was drawn {len(drawn)} times:\n{written}")
    lines = screen_after(written)
    if any(LINE.search(line) for line in lines):
        raise BrokenPromise("the line is still there:\n" + "\n".join(lines))
    for message in ("Game 1 spooled.", "Starting game no. 1", "White: Alpha                Black: Beta"):
        if message not in lines:
            raise BrokenPromise(f"'{message}' is torn:\n" + "\n".join(lines))
    if not any(re.match(r"3/3 played, 0 without result, in \d+ (s|min)", line) for line in lines):
        raise BrokenPromise("how it went is not told:\n" + "\n".join(lines))
    if tourney.read("default.pgn").count("[Event ") != games_between(len(PLAYERS)):
        raise BrokenPromise("not every game was played")


def main(words):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    add_options(parser)
    options = parser.parse_args(words)
    make_ready(options)
    try:
        tourney = Tourney(options, "terminal", PLAYERS)
        tourney.set_up()
        tourney.write("stub_plan.txt", "* 1-0 hold\n")
        ours, its = pty.openpty()
        process = subprocess.Popen([str(tourney.program), "--resume", "tourney.ini", "--progress"],
                                   cwd=tourney.directory, stdin=subprocess.DEVNULL, stdout=its, stderr=its)
        os.close(its)
        # The first game waits until the line has been seen twice.
        written = read_all(ours, lambda: let_go(tourney))
        if process.wait(timeout=60) != 0:
            raise BrokenPromise(f"the exit code is {process.returncode}:\n{written}")
        check(tourney, written)
    except BrokenPromise as broken:
        print(broken)
        return 1
    print("the line was drawn in its place and tore nothing")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
