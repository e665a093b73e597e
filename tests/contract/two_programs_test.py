#!/usr/bin/env python3
"""Two programs never play one tourney.

The second one is started in the same directory, on the same tourney, while the first one plays: it waits and says so. When the
first one has played everything, the second finds that the tourney's file is another one than it has loaded, says so and
stops its runner. Every game was started once, has its result, and stands in the tourney's PGN file once. The same is
true of the games when both are started at the same moment; then either may be the one that stops.
"""

import argparse
import subprocess
import sys
import time

from stub_tourney import ENDED, BrokenPromise, Tourney, add_options, games_between, make_ready, result_of

PLAYERS = ("Alpha", "Beta", "Gamma", "Delta")
GAMES = games_between(len(PLAYERS))
WAITS = "Something is accessing 'runner.lock',"
IS_CHANGED = "was changed by another program, so it is not saved."
STOPS = "Runner stopped."


class Player:
    """One of the two programs, with what it prints in a file."""

    def __init__(self, tourney, number):
        self.tourney = tourney
        self.name = f"output{number}.txt"
        with open(tourney.directory / self.name, "wb") as output:
            self.process = tourney.start(script_name=f"script{number}.txt", stdout=output)

    def output(self):
        return self.tourney.read(self.name)

    def await_words(self, words):
        end = time.monotonic() + 30
        while words not in self.output():
            if time.monotonic() > end:
                raise BrokenPromise(f"a program did not say: {words}")
            time.sleep(0.002)

    def await_end(self):
        try:
            code = self.process.wait(timeout=60)
        except subprocess.TimeoutExpired as late:
            self.process.kill()
            raise BrokenPromise("a program does not end") from late
        if code != ENDED:
            raise BrokenPromise(f"a program ended with the code {code}")


def check_tourney(tourney):
    tourney.check(must_be_over=True)
    tourney.check_plays()
    tourney.check_collected()
    left = [path.name for path in tourney.directory.iterdir() if path.suffix in (".run", ".lock", ".new")]
    if left:
        raise BrokenPromise(f"left behind: {', '.join(sorted(left))}")


def check_outputs(first, second):
    if first.count("Starting game no.") != GAMES or WAITS in first or IS_CHANGED in first:
        raise BrokenPromise("the program that came first has not played everything undisturbed")
    if "Starting game no." in second:
        raise BrokenPromise("the program that came second has started a game")
    if IS_CHANGED not in second or STOPS not in second[second.index(IS_CHANGED) :]:
        raise BrokenPromise("the program that came second did not stop")


def plan_games(tourney, words):
    plan = "".join(f"g{game} {result_of(game)} {words}\n" for game in range(1, GAMES + 1))
    tourney.write("stub_plan.txt", plan)


def meet_in_a_game(tourney):
    plan_games(tourney, "hold")
    first = Player(tourney, 1)
    tourney.await_file("stub_playing")
    plan_games(tourney, "")
    second = Player(tourney, 2)
    second.await_words(WAITS)
    tourney.write("stub_go", "")
    for player in (first, second):
        player.await_end()
    check_tourney(tourney)
    check_outputs(first.output(), second.output())
    if WAITS in second.output()[second.output().index(IS_CHANGED) :]:
        raise BrokenPromise("the program that came second waits on")


def start_together(tourney):
    players = [Player(tourney, number) for number in (1, 2)]
    for player in players:
        player.await_end()
    check_tourney(tourney)
    stopped = [player.output() for player in players if IS_CHANGED in player.output()]
    if len(stopped) != 1 or STOPS not in stopped[0]:
        raise BrokenPromise("not exactly one of the programs has found the tourney changed and stopped")


def play(options, prepared, meet, number):
    tourney = Tourney(options, f"{meet.__name__}{number}", PLAYERS)
    tourney.copy_from(prepared)
    plan_games(tourney, f"ms={options.lasts}")
    try:
        meet(tourney)
    except BrokenPromise as broken:
        raise BrokenPromise(f"{tourney.directory}: {broken}") from broken
    tourney.remove()


def main(words):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    add_options(parser)
    parser.add_argument("--tourneys", type=int, default=5)
    parser.add_argument("--lasts", type=int, default=40, help="milliseconds that a game lasts")
    options = parser.parse_args(words)
    make_ready(options)
    try:
        prepared = Tourney(options, "prepared", PLAYERS)
        prepared.set_up()
        for number in range(1, options.tourneys + 1):
            play(options, prepared, meet_in_a_game, number)
            play(options, prepared, start_together, number)
    except BrokenPromise as broken:
        print(broken)
        return 1
    print(f"two programs met {2 * options.tourneys} times, and each game was played once")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
