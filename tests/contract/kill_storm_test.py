#!/usr/bin/env python3
"""No game is lost and none is played twice, however often the program is killed.

Tourneys with AutoSave are played with the stand-in for WinBoard, whose games last up to some ten milliseconds. At
random moments the program is killed from outside, or ends without a word at one of its steps that change files; with
--at-call it is killed at one of its system calls instead, before or behind it. It is started
again at once, while the game goes on, or a while later. After each end no game that was played is lost; when the
tourney is over

- every game is READY with the result that the stand-in gave it, and stands in the tourney's PGN file
  once, with nothing beside it;
- every game was started once, and never beside a game that was still being played;
- no claim, lock or half-written file is left.

    kill_storm_test.py --quick PROGRAM --stub STUB --scratch DIRECTORY --kills 2000 --seed 7
"""

import argparse
import concurrent.futures
import os
import random
import subprocess
import sys
import threading
import time

from stub_tourney import ENDED, BrokenPromise, Tourney, add_options, games_between, make_ready

PLAYERS = ("Alpha", "Beta", "Gamma", "Delta")
GAMES = games_between(len(PLAYERS))
LONGEST_GAME = 40  # milliseconds
KILOBYTES = (0, 0, 5, 20)  # what is longer than four goes into a file in several pieces
STEPS = 40
CALLS = 500
IMPOSSIBLE = 99  # says at_call
MOST_KILLS = 30  # in one tourney
STAYS = {
    "Tarvendo.log",
    "default.pgn",
    "players.txt",
    "script.txt",
    "stub_plan.txt",
    "stub_words.txt",
    "table.htm",
    "tourney.ini",
    "winboard.debug",
    "winboard.exe",
}


class Counts:
    """What all tourneys together have seen."""

    def __init__(self, kills):
        self.left = kills
        self.lock = threading.Lock()
        self.numbers = dict.fromkeys(
            ("tourneys", "games", "killed", "died", "killed at a call", "restarted at once", "restarted later"), 0
        )

    def take_kill(self):
        """Whether there is one more to be done."""
        with self.lock:
            is_left = self.left > 0
            self.left -= is_left
            return is_left

    def are_left(self):
        with self.lock:
            return self.left > 0

    def give_back(self):
        with self.lock:
            self.left += 1

    def add(self, what, count=1):
        with self.lock:
            self.numbers[what] += count


class Storm:
    """One tourney, and all that happens to it."""

    def __init__(self, options, prepared, counts, name):
        self.random = random.Random(f"{options.seed} {name}")
        self.slowness = options.slowness
        self.at_call = options.at_call
        self.counts = counts
        self.tourney = Tourney(options, name, PLAYERS, options.games)
        self.tourney.copy_from(prepared)
        lasts = [self.random.choice((0, self.random.randrange(LONGEST_GAME))) for _ in range(GAMES)]
        self.tourney.plan_games(lasts, [self.random.choice(KILOBYTES) for _ in lasts])

    def seconds_up_to(self, most):
        return self.random.random() * most * self.slowness

    def run_until_killed(self):
        """Whether the program was killed before it came to its own end."""
        if self.at_call:
            words = (self.at_call, "any", str(self.random.randint(1, CALLS)), self.random.choice(("kill", "killafter")))
            killed = not self.tourney.run(meddler=words)
            self.counts.add("killed at a call", killed)
            return killed
        if self.random.random() < 0.5:
            died = not self.tourney.run(die_at=self.random.randint(1, STEPS))
            self.counts.add("died", died)
            return died
        process = self.tourney.start()
        delay = self.seconds_up_to(0.08)
        try:
            process.wait(timeout=delay)
        except subprocess.TimeoutExpired:
            process.kill()
        killed = process.wait(timeout=60) != ENDED
        self.counts.add("killed", killed)
        return killed

    def wait_before_restart(self):
        at_once = self.random.random() < 0.6
        self.counts.add("restarted at once" if at_once else "restarted later")
        if not at_once:
            time.sleep(self.seconds_up_to(0.1))

    def rage(self):
        kills = 0
        while kills < MOST_KILLS and self.counts.take_kill():
            if not self.run_until_killed():
                self.counts.give_back()
                return
            kills += 1
            self.tourney.check(must_be_over=False)
            self.wait_before_restart()
        self.tourney.run()

    def check_end(self):
        self.tourney.check(must_be_over=True)
        self.tourney.check_plays()
        self.tourney.check_collected()
        there = {path.name for path in self.tourney.directory.iterdir()} - {self.tourney.program.name}
        if there - STAYS:
            raise BrokenPromise(f"left behind: {', '.join(sorted(there - STAYS))}")
        self.counts.add("tourneys")
        self.counts.add("games", GAMES)


def play(options, prepared, counts, name):
    """One tourney after the other until there is nobody left to be killed; returns what was broken."""
    storm = Storm(options, prepared, counts, name)
    try:
        storm.rage()
        storm.check_end()
    except (BrokenPromise, subprocess.TimeoutExpired) as broken:
        return f"{storm.tourney.directory}: {broken}"
    storm.tourney.remove()
    return None


def play_all(options, counts):
    prepared = Tourney(options, "prepared", PLAYERS)
    prepared.set_up()

    def work(worker):
        tried = 0
        broken = []
        while counts.are_left() and not broken:
            tried += 1
            broken = [text for text in [play(options, prepared, counts, f"t{worker}_{tried}")] if text]
        return broken

    with concurrent.futures.ThreadPoolExecutor(options.workers) as pool:
        return sum(pool.map(work, range(options.workers)), [])


def main(words):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    add_options(parser)
    parser.add_argument("--kills", type=int, default=200, help="how often the program ends (or TARVENDO_KILLS)")
    parser.add_argument("--at-call", type=os.path.abspath, help="the program at_call: the kills come at system calls (then TARVENDO_CALL_KILLS)")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--games", type=int, default=1, help="games at a time")
    parser.add_argument("--workers", type=int, default=4, help="tourneys at a time")
    parser.add_argument("--slowness", type=float, default=1, help="how much slower than usual the programs are")
    options = parser.parse_args(words)
    options.kills = int(os.environ.get("TARVENDO_CALL_KILLS" if options.at_call else "TARVENDO_KILLS", options.kills))
    if options.at_call and subprocess.run([options.at_call, "any", "1", "kill", "/bin/true"]).returncode == IMPOSSIBLE:
        print("not run: this machine lets no program look at another one's system calls")
        return 0
    make_ready(options)
    counts = Counts(options.kills)
    try:
        broken = play_all(options, counts)
    except BrokenPromise as before_all:
        broken = [str(before_all)]
    print(", ".join(f"{what} {count}" for what, count in counts.numbers.items()))
    for text in broken:
        print(text)
    return 1 if broken else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
