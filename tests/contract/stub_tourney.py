#!/usr/bin/env python3
"""A tourney with AutoSave that is played with the stand-in for WinBoard, and what must be true of its files.

For the tests that end the program at any moment; what they share.
"""

import os
import pathlib
import shutil
import subprocess
import time

SETTINGS_LINES = 28
GAME_LINES = 12
READY = 4
RESULTS = {2: "1-0", 4: "0-1", 8: "1/2-1/2"}
SET_UP = """readplayers players.txt
addall
set type roundrobin
set autosave on tourney.ini
set autorun on
createrrgames
"""
PLAY = "run\n"
ENDED = 1
DIED = 9


class BrokenPromise(Exception):
    pass


def result_of(number):
    """What the stand-in gives a game that no plan speaks of."""
    return {0: "1/2-1/2", 1: "1-0", 2: "0-1"}[number % 3]


def merged_pgn(game, kilobytes=0):
    """The game as it stands in the tourney's PGN file."""
    comments = kilobytes * ("{" + 1021 * "k" + "}\n")
    result = result_of(game["number"])
    return (
        f'[Event "My Own Winboard Tourney"]\n[Site "stub"]\n[Date "2001.09.25"]\n'
        f'[Round "{game["round"]}"]\n[Number "{game["number"]}"]\n'
        f'[White "{game["white"]}"]\n[Black "{game["black"]}"]\n[Result "{result}"]\n\n'
        f'1. e4 e5 2. Nf3 Nc6\n{comments}{{g{game["number"]}}} {result}\n\n'
    )


def read_tourney(path):
    """The games of a tourney file; raises when the file is not whole."""
    lines = path.read_text().split("\n")
    if lines.pop() != "":
        raise BrokenPromise("the tourney file's last line has no end")
    position = SETTINGS_LINES
    if lines[0] != "TOURNEY_FILE" or len(lines) <= position:
        raise BrokenPromise("the tourney file's beginning is damaged")
    participants = int(lines[position])
    position += 1
    for _ in range(participants):
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


def games_between(players):
    """How many games a round robin has."""
    return players * (players - 1) // 2


class Tourney:
    """One tourney in a directory of its own."""

    def __init__(self, options, name, players, games_at_once=1):
        self.launcher = options.launcher.split()
        self.games_at_once = games_at_once
        self.players = players
        self.kilobytes = {}  # of comments, by the game's number
        self.directory = options.scratch / name
        self.directory.mkdir(parents=True)
        self.program = self.directory / options.program.name
        os.link(options.program, self.program)
        os.link(options.winboard, self.directory / options.winboard.name)

    def write(self, name, text):
        (self.directory / name).write_text(text)

    def read(self, name):
        """The text of a file; empty when it is not there."""
        path = self.directory / name
        return path.read_text() if path.exists() else ""

    def start(self, script=PLAY, die_at=0, script_name="script.txt", stdout=subprocess.DEVNULL, meddler=()):
        """Starts the program; `meddler` is what stands in front of it, at_call and its words."""
        self.write(script_name, script)
        environment = dict(os.environ, TZ="UTC0", TARVENDO_DIE_AT=str(die_at))
        environment.pop("COMSPEC", None)
        words = [script_name, "--wait"]
        if self.games_at_once > 1:
            words += ["--games", str(self.games_at_once)]
        return subprocess.Popen(
            [*meddler, *self.launcher, str(self.program), *words],
            cwd=self.directory,
            env=environment,
            stdin=subprocess.DEVNULL,
            stdout=stdout,
            stderr=subprocess.DEVNULL,
        )

    def run(self, script=PLAY, die_at=0, meddler=()):
        """Runs the program; returns whether it came to its own end."""
        code = self.start(script, die_at, meddler=meddler).wait(timeout=60)
        if code not in (ENDED, DIED):
            raise BrokenPromise(f"the program ended with the code {code}")
        return code == ENDED

    def set_up(self):
        """Makes the tourney, with all its games to be played."""
        players = "".join(
            f"PLAYER\nName:\n{name}\nProgramExe:\n{name.lower()}\nEND_PLAYER\n" for name in self.players
        )
        self.write("players.txt", "PLAYER_FILE\n" + players)
        self.run(SET_UP + "quit\n")
        self.check(must_be_over=False)

    def copy_from(self, prepared):
        for name in ("tourney.ini", "players.txt"):
            shutil.copy(prepared.directory / name, self.directory)

    def plan_games(self, lasts, kilobytes):
        """How many milliseconds each game lasts, and how many kilobytes of comments its record holds."""
        self.kilobytes = dict(enumerate(kilobytes, 1))
        plan = [
            f"g{number} {result_of(number)} ms={milliseconds} kb={self.kilobytes[number]}\n"
            for number, milliseconds in enumerate(lasts, 1)
        ]
        self.write("stub_plan.txt", "".join(plan))

    def merged(self, game):
        return merged_pgn(game, self.kilobytes.get(game["number"], 0))

    def check(self, must_be_over):
        """Raises when a game that was played to its end is lost."""
        games = read_tourney(self.directory / "tourney.ini")
        collected = self.read("default.pgn")
        if len(games) != games_between(len(self.players)):
            raise BrokenPromise(f"there are {len(games)} games")
        for game in games:
            number = game["number"]
            if game["status"] != READY:
                if must_be_over:
                    raise BrokenPromise(f"game {number} was never played to its end")
                continue
            if RESULTS.get(game["result"]) != result_of(number):
                raise BrokenPromise(f"game {number} has the result {game['result']}")
            text = self.merged(game)
            if text not in collected:
                raise BrokenPromise(f"game {number} is READY, but not in the PGN file")
            collected = collected.replace(text, "", 1)
        if must_be_over and collected:
            raise BrokenPromise(f"the PGN file holds something twice or in halves: {collected!r}")

    def check_collected(self):
        """Raises when the tourney's PGN file is not made of all games, each once."""
        collected = self.read("default.pgn")
        for game in read_tourney(self.directory / "tourney.ini"):
            times = collected.count(self.merged(game))
            if times != 1:
                raise BrokenPromise(f"game {game['number']} stands in the PGN file {times} times")
            collected = collected.replace(self.merged(game), "")
        if collected:
            raise BrokenPromise("something else stands in the PGN file")

    def check_plays(self):
        """Raises when the stand-in complained, or a game was not started exactly once."""
        lines = self.read("stub_words.txt").splitlines()
        if self.games_at_once > 1:
            lines = [line for line in lines if line != "  ANOTHER GAME IS BEING PLAYED"]
        for before, line in zip(lines, lines[1:]):
            if line.startswith("  "):
                raise BrokenPromise(f"{before.split(':')[0]}: {line.strip()}")
        for number in range(1, games_between(len(self.players)) + 1):
            plays = sum(line.startswith(f"g{number}:") for line in lines)
            if plays != 1:
                raise BrokenPromise(f"game {number} was started {plays} times")

    def await_file(self, name):
        """Waits until the file is there, or for so long that it cannot come any more."""
        end = time.monotonic() + 20
        while not (self.directory / name).exists() and time.monotonic() < end:
            time.sleep(0.002)

    def await_stub(self):
        """Waits until the game that goes on after the program's end is over."""
        end = time.monotonic() + 20
        while (self.directory / "stub_running").exists() and time.monotonic() < end:
            time.sleep(0.002)

    def remove(self):
        shutil.rmtree(self.directory)


def add_options(parser):
    """What every test of this kind is told on its command line."""
    parser.add_argument("--quick", type=pathlib.Path, required=True)
    parser.add_argument("--stub", type=pathlib.Path, required=True)
    parser.add_argument("--scratch", type=pathlib.Path, required=True)
    parser.add_argument("--launcher", default="", help="what starts the programs (wine)")


def make_ready(options):
    """Full paths, and an empty directory to work in.

    Each tourney gets links to the programs: a copy that is made while another thread starts a process may be found
    busy, for that process has it open for writing a moment longer.
    """
    options.scratch = options.scratch.resolve()
    shutil.rmtree(options.scratch, ignore_errors=True)
    options.scratch.mkdir(parents=True)
    options.program = options.scratch / ("tarvendo" + options.quick.suffix)
    options.winboard = options.scratch / "winboard.exe"
    shutil.copy(options.quick, options.program)
    shutil.copy(options.stub, options.winboard)
