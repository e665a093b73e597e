#!/usr/bin/env python3
"""What the program adds to a game: a tourney of games that take no time, played by the built program.

    bench/games_per_second.py --build build-release --tourney 1000 --play 500 --games 1

A round robin of --tourney games is made with AutoSave and AutoRun on, --play of them are to be played, --games at a
time. Printed: games a second, and with one game at a time what is lost between two games, from the end of the last
process to the start of the next; processor seconds and memory of the program.
"""

import argparse
import pathlib
import resource
import shutil
import statistics
import subprocess
import tempfile

PLAYERS = 20
PAIRS = PLAYERS * (PLAYERS - 1) // 2


def player_file():
    blocks = [f"PLAYER\nName:\nEngine{n}\nProgramExe:\nengine{n}\nEND_PLAYER\n" for n in range(1, PLAYERS + 1)]
    return "PLAYER_FILE\n" + "\n".join(blocks)


def script(options):
    sub_rounds = max(1, round(options.tourney / PAIRS))
    lines = [
        "readplayers players.txt",
        "addall",
        "set type round",
        f"set subrounds {sub_rounds}",
        "createrr",
        "set autosave on t.ini",
    ]
    if options.play >= sub_rounds * PAIRS:
        lines += ["set autorun on", "run"]
    else:
        lines += [f"spool {n}" for n in range(1, options.play + 1)] + ["run"]
    return "".join(line + "\n" for line in lines)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", type=pathlib.Path, required=True)
    parser.add_argument("--tourney", type=int, default=1000, help="games of the tourney")
    parser.add_argument("--play", type=int, default=1000, help="games that are played")
    parser.add_argument("--games", type=int, default=1, help="games at a time")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as scratch:
        directory = pathlib.Path(scratch)
        shutil.copy(options.build / "tarvendo", directory)
        shutil.copy(options.build / "instant_winboard", directory / "winboard.exe")
        (directory / "players.txt").write_text(player_file())
        (directory / "script.txt").write_text(script(options))
        subprocess.run(
            ["./tarvendo", "script.txt", "--wait", "--games", str(options.games)],
            cwd=directory, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, check=False, timeout=3600)
        times = sorted(tuple(map(int, line.split()))
                       for line in (directory / "instant_times.txt").read_text().splitlines())
    usage = resource.getrusage(resource.RUSAGE_CHILDREN)
    span = (times[-1][1] - times[0][0]) / 1e9
    print(f"{len(times)} games of {options.tourney}, {options.games} at a time: "
          f"{len(times) / span:.0f} games a second")
    quarters = [times[len(times) * i // 4][0] for i in range(4)] + [times[-1][1]]
    print("seconds of each quarter of them: "
          + ", ".join(f"{(b - a) / 1e9:.2f}" for a, b in zip(quarters, quarters[1:])))
    if options.games == 1:
        lost = sorted((after[0] - before[1]) / 1e6 for before, after in zip(times, times[1:]))
        print(f"lost between two games, milliseconds: median {statistics.median(lost):.2f}, "
              f"95 of 100 below {lost[len(lost) * 95 // 100]:.2f}, most {lost[-1]:.2f}")
    print(f"program and games: {usage.ru_utime + usage.ru_stime:.1f} processor seconds, "
          f"largest process {usage.ru_maxrss / 1024:.0f} MiB")


if __name__ == "__main__":
    main()
