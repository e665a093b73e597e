#!/usr/bin/env python3
"""No game that was played to its end is lost when the program dies, wherever it dies.

A tourney with AutoSave is played with the stand-in for WinBoard. The program ends without a word at one of its
steps that change files, with half of what it was about to write, or is killed from outside in the middle of a
game. Then it is started again and plays on. Right after the end, and when the tourney is over:

- the tourney file is a whole one;
- every game is READY with the result that the stand-in gave it, or is still to be played;
- the tourney's PGN file holds every READY game at least once, as a whole.
"""

import argparse
import os
import sys

from stub_tourney import BrokenPromise, Tourney, add_options, make_ready, result_of

PLAYERS = ("Alpha", "Beta", "Gamma")
GAMES = 3


def check_ended_and_play_on(tourney):
    tourney.await_stub()
    tourney.check(must_be_over=False)
    tourney.run()
    tourney.check(must_be_over=True)


def prepare(options):
    tourney = Tourney(options, "prepared", PLAYERS)
    tourney.set_up()
    return tourney


def die_at_every_step(options, prepared):
    """Ends the program at its first step, its second one (or a later one, see --every) and so on, up to the one
    that it does not come to. Returns how many steps were tried."""
    tried = 0
    while True:
        step = 1 + tried * options.every
        tourney = Tourney(options, f"step{step}", PLAYERS)
        tourney.copy_from(prepared)
        came_to_its_end = tourney.run(die_at=step)
        try:
            check_ended_and_play_on(tourney)
        except BrokenPromise as broken:
            raise BrokenPromise(f"dead at step {step} ({tourney.directory}): {broken}") from broken
        tourney.remove()
        if came_to_its_end:
            return tried
        tried += 1


def kill_in_game(options, prepared, number):
    """Kills the program while the game is being played; the game then comes to its end by itself."""
    tourney = Tourney(options, f"game{number}", PLAYERS)
    tourney.copy_from(prepared)
    result = result_of(number)
    tourney.write("stub_plan.txt", f"g{number} hold {result}\ng{number} {result}\n")
    process = tourney.start()
    tourney.await_file("stub_playing")
    process.kill()
    process.wait(timeout=60)
    tourney.write("stub_go", "")
    try:
        check_ended_and_play_on(tourney)
        plays = tourney.read("stub_words.txt").count(f"g{number}:")
        if plays != 1:
            raise BrokenPromise(f"the game that was played to its end was played {plays} times")
    except BrokenPromise as broken:
        raise BrokenPromise(f"killed in game {number} ({tourney.directory}): {broken}") from broken
    tourney.remove()


def main(words):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    add_options(parser)
    parser.add_argument("--every", type=int, default=1, help="try every n-th step only (or TARVENDO_KILL_EVERY)")
    options = parser.parse_args(words)
    options.every = int(os.environ.get("TARVENDO_KILL_EVERY", options.every))
    make_ready(options)
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
