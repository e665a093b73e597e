#!/usr/bin/env python3
"""No game that was played to its end is lost when the program dies, wherever it dies.

A tourney with AutoSave is played with the stand-in for WinBoard. The program ends without a word at one of its
steps that change files, with half of what it was about to write, or is killed from outside in the middle of a
game. Then it is started again and plays on. Right after the end, and when the tourney is over:

- the tourney file is a whole one;
- every game is READY with the result that the stand-in gave it, or is still to be played;
- the tourney's PGN file holds every READY game, as a whole.

When the tourney is over, the PGN file holds every game once and nothing else, and nothing is left of saves, games
and claims.
"""

import argparse
import os
import pathlib
import re
import shutil
import subprocess
import sys
import time

SETTINGS_LINES = 28
GAME_LINES = 12
READY = 4
RESULTS = {2: "1-0", 4: "0-1", 8: "1/2-1/2"}
PLAYERS = ("Alpha", "Beta", "Gamma")
GAMES = 3
LEFT_OVER = re.compile(r"\.new\d*$|\.journal\d*$|\.run$|\.lock$|^g\d+\.(PGN|BAT)$")
SET_UP = """readplayers players.txt
addall
set type roundrobin
set autosave on tourney.ini
set autorun on
createrrgames
"""
PLAY = "run\n"


class BrokenPromise(Exception):
    pass


def result_of(number):
    """What the stand-in gives a game that no plan speaks of."""
    return {0: "1/2-1/2", 1: "1-0", 2: "0-1"}[number % 3]


def merged_pgn(game):
    """The game as it stands in the tourney's PGN file."""
    result = result_of(game["number"])
    return (
        f'[Event "My Own Winboard Tourney"]\n[Site "stub"]\n[Date "2001.09.25"]\n'
        f'[Round "{game["round"]}"]\n[Number "{game["number"]}"]\n'
        f'[White "{game["white"]}"]\n[Black "{game["black"]}"]\n[Result "{result}"]\n\n'
        f'1. e4 e5 2. Nf3 Nc6\n{{g{game["number"]}}} {result}\n\n'
    )


def read_tourney(path):
    """The games of a tourney file; raises when the file is not whole."""
    lines = path.read_text().split("\n")
    if lines.pop() != "":
        raise BrokenPromise("the tourney file's last line has no end")
    position = SETTINGS_LINES
    if lines[0] != "TOURNEY_FILE" or int(lines[position]) != len(PLAYERS):
        raise BrokenPromise("the tourney file's beginning is damaged")
    position += 1
    for _ in PLAYERS:
        position += 15
        position += 1 + int(lines[position])
    games = []
    count = int(lines[position])
    position += 1
    for _ in range(count):
        block = lines[position : position + GAME_LINES]
        position += GAME_LINES
        games.append(
            {
                "number": int(block[1]),
                "result": int(block[2]),
                "round": int(block[3]),
                "status": int(block[5]),
                "black": block[9],
                "white": block[11],
            }
        )
    if position != len(lines):
        raise BrokenPromise("the tourney file has not the length that it tells")
    return games


def check(directory, must_be_over):
    games = read_tourney(directory / "tourney.ini")
    pgn = directory / "default.pgn"
    collected = pgn.read_text() if pgn.exists() else ""
    if len(games) != GAMES:
        raise BrokenPromise(f"there are {len(games)} games")
    for game in games:
        number = game["number"]
        if game["status"] != READY:
            if must_be_over:
                raise BrokenPromise(f"game {number} was never played to its end")
            continue
        if RESULTS.get(game["result"]) != result_of(number):
            raise BrokenPromise(f"game {number} has the result {game['result']}")
        if merged_pgn(game) not in collected:
            raise BrokenPromise(f"game {number} is READY, but not in the PGN file")
        collected = collected.replace(merged_pgn(game), "", 1)
    if must_be_over and collected:
        raise BrokenPromise(f"the PGN file holds something twice or in halves: {collected!r}")
    left = [path.name for path in directory.iterdir() if LEFT_OVER.search(path.name)]
    if must_be_over and left:
        raise BrokenPromise(f"these files are left: {sorted(left)}")


class Tourney:
    """One tourney in a directory of its own."""

    def __init__(self, options, name):
        self.launcher = options.launcher.split()
        self.directory = options.scratch / name
        self.directory.mkdir(parents=True)
        self.program = self.directory / ("tarvendo" + options.quick.suffix)
        shutil.copy(options.quick, self.program)
        shutil.copy(options.stub, self.directory / "winboard.exe")

    def write(self, name, text):
        (self.directory / name).write_text(text)

    def start(self, script, die_at=0):
        self.write("script.txt", script)
        environment = dict(os.environ, TZ="UTC0", TARVENDO_DIE_AT=str(die_at))
        environment.pop("COMSPEC", None)
        return subprocess.Popen(
            self.launcher + [str(self.program), "script.txt", "--wait"],
            cwd=self.directory,
            env=environment,
            stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL,
        )

    def run(self, script, die_at=0):
        """Runs the program; returns whether it came to its own end."""
        code = self.start(script, die_at).wait(timeout=60)
        if code not in (1, 9):
            raise BrokenPromise(f"the program ended with the code {code}")
        return code == 1

    def copy_from(self, prepared):
        for name in ("tourney.ini", "players.txt"):
            shutil.copy(prepared.directory / name, self.directory)

    def await_stub(self):
        """The game goes on after the program's end; a new start would begin it a second time."""
        end = time.monotonic() + 20
        while (self.directory / "stub_running").exists() and time.monotonic() < end:
            time.sleep(0.002)

    def check_ended_and_play_on(self):
        self.await_stub()
        check(self.directory, must_be_over=False)
        self.run(PLAY)
        check(self.directory, must_be_over=True)

    def remove(self):
        shutil.rmtree(self.directory)


def prepare(options):
    """A tourney with all its games to be played."""
    tourney = Tourney(options, "prepared")
    players = "".join(
        f"PLAYER\nName:\n{name}\nProgramExe:\n{name.lower()}\nEND_PLAYER\n" for name in PLAYERS
    )
    tourney.write("players.txt", "PLAYER_FILE\n" + players)
    tourney.run(SET_UP + "quit\n")
    check(tourney.directory, must_be_over=False)
    return tourney


def die_at_every_step(options, prepared):
    """Ends the program at its first step, its second one (or a later one, see --every) and so on, up to the one
    that it does not come to. Returns how many steps were tried."""
    tried = 0
    while True:
        step = 1 + tried * options.every
        tourney = Tourney(options, f"step{step}")
        tourney.copy_from(prepared)
        came_to_its_end = tourney.run(PLAY, die_at=step)
        try:
            tourney.check_ended_and_play_on()
        except BrokenPromise as broken:
            raise BrokenPromise(f"dead at step {step} ({tourney.directory}): {broken}") from broken
        tourney.remove()
        if came_to_its_end:
            return tried
        tried += 1


def kill_in_game(options, prepared, number):
    """Kills the program while the game is being played; the game then comes to its end by itself."""
    tourney = Tourney(options, f"game{number}")
    tourney.copy_from(prepared)
    result = result_of(number)
    tourney.write("stub_plan.txt", f"g{number} hold {result}\ng{number} {result}\n")
    process = tourney.start(PLAY)
    end = time.monotonic() + 20
    while not (tourney.directory / "stub_playing").exists() and time.monotonic() < end:
        time.sleep(0.002)
    process.kill()
    process.wait(timeout=60)
    tourney.write("stub_go", "")
    try:
        tourney.check_ended_and_play_on()
        plays = (tourney.directory / "stub_words.txt").read_text().count(f"g{number}:")
        if plays != 1:
            raise BrokenPromise(f"the game that was played to its end was played {plays} times")
    except BrokenPromise as broken:
        raise BrokenPromise(f"killed in game {number} ({tourney.directory}): {broken}") from broken
    tourney.remove()


def main(words):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--quick", type=pathlib.Path, required=True)
    parser.add_argument("--stub", type=pathlib.Path, required=True)
    parser.add_argument("--scratch", type=pathlib.Path, required=True)
    parser.add_argument("--every", type=int, default=1, help="try every n-th step only (or TARVENDO_KILL_EVERY)")
    parser.add_argument("--launcher", default="", help="what starts the programs (wine)")
    options = parser.parse_args(words)
    options.every = int(os.environ.get("TARVENDO_KILL_EVERY", options.every))
    options.quick = options.quick.resolve()
    shutil.rmtree(options.scratch, ignore_errors=True)
    options.scratch = options.scratch.resolve()
    try:
        prepared = prepare(options)
        steps = die_at_every_step(options, prepared)
        print(f"the program died at {steps} of its steps, and no game was lost")
        for number in range(1, GAMES + 1):
            kill_in_game(options, prepared, number)
        print("the program was killed in each game, and no game was lost")
    except BrokenPromise as broken:
        print(broken)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
