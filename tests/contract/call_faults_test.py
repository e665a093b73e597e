#!/usr/bin/env python3
"""Nothing is lost when one of the program's system calls fails, whichever it is.

A tourney with AutoSave is played with the stand-in for WinBoard, and one call fails: the n-th write, sync, open, rename,
deletion, lock or start of a process, once or from then on, with one of the errors that it can meet (a full disk, an
error of the disk, no permission, too many open files). Then the program is started again, and all is in order. The tourney
file is whole; every game that the console told of has its result and was not played again; every game stands in the
tourney's PGN file once, or its record was rescued and the console has said so; nothing is left over. What failed is on the
console, or it has left no trace.

    call_faults_test.py --quick PROGRAM --stub STUB --at-call AT_CALL --scratch DIRECTORY [--faults 40 | --every]
"""

import argparse
import concurrent.futures
import os
import random
import re
import subprocess
import sys

from stub_tourney import ENDED, BrokenPromise, Tourney, add_options, games_between, make_ready, merged_pgn
from stub_tourney import RESULTS, read_tourney, result_of

PLAYERS = ("Alpha", "Beta", "Gamma")
GAMES = games_between(len(PLAYERS))
IMPOSSIBLE = 99  # says at_call
PATIENCE = 4  # seconds; a program whose every lock fails, say, waits for ever
UNKNOWN = 1
ERRORS = {
    "write": ("ENOSPC", "EIO"),
    "fsync": ("EIO", "ENOSPC"),
    "open": ("EMFILE", "EACCES", "ENOSPC"),
    "rename": ("EIO", "EACCES", "ENOSPC"),
    "unlink": ("EACCES", "EIO"),
    "lock": ("EIO",),
    "fork": ("EAGAIN",),
    "mkdir": ("ENOSPC", "EACCES"),
}
TELLS = re.compile(r"Error|[Ff]ailed|Can't open|can't run|No file can be made|could not|cannot|can't access")
SCORES = {"1 - 0": "1-0", "0 - 1": "0-1", "1/2 - 1/2": "1/2-1/2"}
STAYS = re.compile(
    r"Tarvendo\.log|default\.pgn|players\.txt|script\.txt|output\.txt|stub_words\.txt|table\.htm|tourney\.ini"
    r"|winboard\.(debug|exe)|tarvendo"
)


class Fault:
    def __init__(self, kind, number, error):
        self.kind = kind
        self.number = number
        self.error = error

    def __str__(self):
        return f"{self.kind}_{self.number}_{self.error}"

    def is_of_all_writes(self):
        """Then the console itself cannot be written to."""
        return self.kind == "write" and self.error.endswith("+")


class Trial:
    def __init__(self, options, prepared, fault):
        self.options = options
        self.fault = fault
        self.tourney = Tourney(options, str(fault).replace("+", "_ever"), PLAYERS, options.games)
        self.tourney.copy_from(prepared)

    def run_with_fault(self):
        """Returns how the program ended; None when it had to be ended."""
        words = (self.options.at_call, self.fault.kind, str(self.fault.number), self.fault.error)
        with open(self.tourney.directory / "output.txt", "wb") as output:
            process = self.tourney.start(stdout=output, meddler=words)
            try:
                code = process.wait(timeout=PATIENCE)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait(timeout=60)
                code = None
        self.said = self.tourney.read("output.txt")
        self.tourney.await_stub()
        return code

    def games(self):
        return read_tourney(self.tourney.directory / "tourney.ini")

    def was_given_up(self, game):
        """A game of which nothing could be seen, and the console has said so."""
        told = f"Game {game['number']}: {game['white']} - {game['black']} result not found" in self.said
        return game["result"] == UNKNOWN and (told or self.fault.is_of_all_writes())

    def check_all(self, harmless=()):
        """Raises when not all is played, and each game where it belongs."""
        collected = self.tourney.read("default.pgn")
        may_stay = set(harmless)
        for game in self.games():
            stem = f"g{game['number']}"
            if self.was_given_up(game):
                may_stay.update((stem + ".BAT", stem + ".PGN", stem + ".left.PGN", stem + ".debug"))
                continue
            if RESULTS.get(game["result"]) != result_of(game["number"]):
                raise BrokenPromise(f"{stem} has the result {game['result']}")
            times = collected.count(merged_pgn(game))
            collected = collected.replace(merged_pgn(game), "", 1)
            is_rescued = (self.tourney.directory / f"{stem}.rescued.PGN").exists()
            if times + is_rescued != 1:
                raise BrokenPromise(f"{stem} stands in the PGN file {times} times, rescued: {is_rescued}")
            if is_rescued and "Error copying pgn-file!" not in self.said and not self.fault.is_of_all_writes():
                raise BrokenPromise(f"{stem} was rescued in silence")
            may_stay.update((stem + ".rescued.PGN", stem + ".debug"))
        if collected:
            raise BrokenPromise(f"something else stands in the PGN file: {collected!r}")
        there = {path.name for path in self.tourney.directory.iterdir()}
        left = [name for name in there if not STAYS.fullmatch(name) and name not in may_stay]
        if left:
            raise BrokenPromise(f"left behind: {', '.join(sorted(left))}")

    def check_told(self):
        lines = self.tourney.read("stub_words.txt").splitlines()
        results = {game["number"]: RESULTS.get(game["result"]) for game in self.games()}
        for number, score in re.findall(r"^Game (\d+): .* : (.*)$", self.said, re.M):
            plays = sum(line.startswith(f"g{number}:") for line in lines)
            if score in SCORES and (results[int(number)] != SCORES[score] or plays != 1):
                raise BrokenPromise(f"game {number} was told, and then played {plays} times")

    def check_all_without_a_word(self):
        try:
            # A lock that nobody holds: the next runner takes it.
            self.check_all(("runner.lock",))
        except BrokenPromise as broken:
            raise BrokenPromise(f"nothing was said, but {broken}") from broken

    def judge(self):
        code = self.run_with_fault()
        if code == IMPOSSIBLE:
            raise BrokenPromise("at_call does not work here")
        if code is not None and code >= 128 or (code or 0) < 0:
            raise BrokenPromise(f"the program ended with {code}")
        self.games()
        # A program that cannot read its script does nothing.
        has_begun = "Runner started." in self.said
        if code == ENDED and has_begun and not TELLS.search(self.said) and not self.fault.is_of_all_writes():
            self.check_all_without_a_word()
        self.tourney.run()
        self.check_told()
        self.check_all()


def try_fault(options, prepared, fault):
    """What was broken; None when nothing was."""
    trial = Trial(options, prepared, fault)
    try:
        trial.judge()
    except (BrokenPromise, subprocess.TimeoutExpired, OSError) as broken:
        return f"{trial.tourney.directory}: {broken}"
    trial.tourney.remove()
    return None


def count_calls(options, prepared, kind):
    """How many calls of that kind a tourney has."""
    tourney = Tourney(options, f"count_{kind}", PLAYERS, options.games)
    tourney.copy_from(prepared)
    tourney.run(meddler=(options.at_call, kind, "0", "count"))
    count = int(tourney.read("calls.txt"))
    tourney.remove()
    return count


def faults_of(options, prepared):
    every = []
    for kind, errors in ERRORS.items():
        calls = count_calls(options, prepared, kind)
        print(f"{kind}: {calls} calls")
        for number in range(1, calls + 1):
            for error in errors:
                every += [Fault(kind, number, error), Fault(kind, number, error + "+")]
    if options.every:
        return every
    kinds = [[fault for fault in every if fault.kind == kind] for kind in ERRORS]
    source = random.Random(options.seed)
    return [source.choice(kinds[n % len(kinds)]) for n in range(options.faults) if kinds[n % len(kinds)]]


def main(words):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    add_options(parser)
    parser.add_argument("--at-call", required=True, type=os.path.abspath, help="the program at_call")
    parser.add_argument("--faults", type=int, default=40, help="how many are tried")
    parser.add_argument("--every", action="store_true", help="all are tried (or TARVENDO_EVERY_FAULT)")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--games", type=int, default=1, help="games at a time")
    parser.add_argument("--workers", type=int, default=4, help="tourneys at a time")
    options = parser.parse_args(words)
    options.every = options.every or "TARVENDO_EVERY_FAULT" in os.environ
    if subprocess.run([options.at_call, "write", "1", "EIO", "/bin/true"]).returncode == IMPOSSIBLE:
        print("not run: this machine lets no program look at another one's system calls")
        return 0
    make_ready(options)
    prepared = Tourney(options, "prepared", PLAYERS)
    prepared.set_up()
    # Each fault once: a name is a directory.
    faults = {str(fault): fault for fault in faults_of(options, prepared)}.values()
    with concurrent.futures.ThreadPoolExecutor(options.workers) as pool:
        broken = [text for text in pool.map(lambda fault: try_fault(options, prepared, fault), faults) if text]
    for text in broken:
        print(text)
    print(f"{len(faults)} faults, {len(broken)} with a loss")
    return 1 if broken else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
