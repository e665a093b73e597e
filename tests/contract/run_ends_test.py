#!/usr/bin/env python3
"""How a run with --resume or --exit-code ends when something comes between, and what it promises then.

A tourney is gone on with by --resume and broken off in the middle of a game: by SIGTERM, by SIGINT, by SIGKILL. The exit
code tells that it was ended; the next --resume takes over the game that goes on, plays the rest, and ends with 0: every
game was started once, has its result, and stands in the tourney's PGN file once. When another program changes the tourney
file meanwhile, the runner stops itself, and the exit code is 3. Without --exit-code the code of a script is 1, as ever.
"""

import argparse
import os
import signal
import subprocess
import sys

from stub_tourney import BrokenPromise, Tourney, add_options, games_between, make_ready, result_of

PLAYERS = ("Alpha", "Beta", "Gamma")
GAMES = games_between(len(PLAYERS))
OUTPUT = "output.txt"
RESUME = ["--resume", "tourney.ini"]
COMPLETE, AS_EVER, INCOMPLETE, ENDED_BY_USER = 0, 1, 3, 4


def start(tourney, words):
    environment = dict(os.environ, TZ="UTC0")
    environment.pop("COMSPEC", None)
    # No pipe: a game that goes on would keep it open.
    with open(tourney.directory / OUTPUT, "wb") as output:
        return subprocess.Popen([str(tourney.program), *words], cwd=tourney.directory, env=environment,
                                stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT)


def expect(tourney, process, code, what):
    process.wait(timeout=60)
    output = tourney.read(OUTPUT)
    if process.returncode != code:
        raise BrokenPromise(f"{what}: the exit code is {process.returncode} in place of {code}:\n{output}")
    return output


def plan_games(tourney, words):
    tourney.write("stub_plan.txt", "".join(f"g{game} {result_of(game)} {words}\n" for game in range(1, GAMES + 1)))


def break_off(tourney, words, number, code):
    """Starts the program and sends it a signal in the middle of its first game, which goes on."""
    plan_games(tourney, "hold")
    process = start(tourney, words)
    tourney.await_file("stub_playing")
    plan_games(tourney, "")
    process.send_signal(number)
    return expect(tourney, process, code, f"{' '.join(words)} and signal {number}")


def finish(tourney):
    """The game that goes on ends while the next program waits for it."""
    process = start(tourney, RESUME)
    tourney.write("stub_go", "")
    expect(tourney, process, COMPLETE, "the next --resume")
    tourney.check(must_be_over=True)
    tourney.check_plays()
    tourney.check_collected()
    if expect(tourney, start(tourney, RESUME), COMPLETE, "one more --resume").count("Starting game"):
        raise BrokenPromise("a tourney that was over has been played on")


def is_broken_off_and_resumed(tourney, number):
    code = -number if number == signal.SIGKILL else ENDED_BY_USER
    break_off(tourney, RESUME, number, code)
    has_emergency_file = (tourney.directory / "emergency.ini").exists()
    if has_emergency_file != (number != signal.SIGKILL):
        raise BrokenPromise(f"signal {number}: there is {'an' if has_emergency_file else 'no'} emergency.ini")
    finish(tourney)


def is_ended_by_sigterm(tourney):
    is_broken_off_and_resumed(tourney, signal.SIGTERM)


def is_ended_by_ctrl_c(tourney):
    is_broken_off_and_resumed(tourney, signal.SIGINT)


def is_killed(tourney):
    is_broken_off_and_resumed(tourney, signal.SIGKILL)


def tells_a_script_that_asks(tourney):
    tourney.write("go.txt", "load tourney.ini\nrun\n")
    break_off(tourney, ["go.txt", "--wait", "--exit-code"], signal.SIGTERM, ENDED_BY_USER)
    finish(tourney)


def tells_no_script_that_does_not_ask(tourney):
    tourney.write("go.txt", "load tourney.ini\nrun\n")
    break_off(tourney, ["go.txt", "--wait"], signal.SIGTERM, AS_EVER)
    finish(tourney)


def tells_of_a_file_that_another_program_changed(tourney):
    plan_games(tourney, "hold")
    process = start(tourney, RESUME)
    tourney.await_file("stub_playing")
    plan_games(tourney, "")
    changed = tourney.read("tourney.ini").replace("My Own Winboard Tourney", "Somebody Else's")
    tourney.write("tourney.ini", changed)
    tourney.write("stub_go", "")
    output = expect(tourney, process, INCOMPLETE, "a file that another program has changed")
    if "The runner stopped itself.\n" not in output or tourney.read("tourney.ini") != changed:
        raise BrokenPromise(f"the change of another program was not told, or not left alone:\n{output}")


def main(words):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    add_options(parser)
    options = parser.parse_args(words)
    make_ready(options)
    cases = (is_ended_by_sigterm, is_ended_by_ctrl_c, is_killed, tells_a_script_that_asks,
             tells_no_script_that_does_not_ask, tells_of_a_file_that_another_program_changed)
    try:
        prepared = Tourney(options, "prepared", PLAYERS)
        prepared.set_up()
        for case in cases:
            tourney = Tourney(options, case.__name__, PLAYERS)
            tourney.copy_from(prepared)
            case(tourney)
            tourney.remove()
    except BrokenPromise as broken:
        print(broken)
        return 1
    print(f"{len(cases)} ways to end a run, and each was told and resumed")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
