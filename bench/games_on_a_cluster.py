#!/usr/bin/env python3
"""What the built program takes for a game that a cluster plays, with a stand-in for Slurm that costs next to nothing.

    bench/games_on_a_cluster.py --build build-release --games 10000 --at-once 10000 --seconds 60

A round robin of about --games games, --at-once of them queued or played at a time, each for --seconds on average. Printed: the
processor seconds of the program and of its sbatch and squeue, and the most memory that the program had.
"""

import argparse
import os
import pathlib
import subprocess
import tempfile
import time

PLAYERS = 50
PAIRS = PLAYERS * (PLAYERS - 1) // 2


def fill(directory, options):
    (directory / "bin").mkdir()
    (directory / "slurm").mkdir()
    for name in ("sbatch", "squeue"):
        (directory / "bin" / name).symlink_to((options.build / "slurm_stand_in").resolve())
    (directory / "players.txt").write_text("PLAYER_FILE\n" + "".join(
        f"PLAYER\nName:\nEngine{n}\nProgramExe:\nengine{n}\nEND_PLAYER\n" for n in range(1, PLAYERS + 1)))
    (directory / "script.txt").write_text(
        f"readplayers players.txt\naddall\nset type round\nset subrounds {max(1, options.games // PAIRS)}\n"
        f"set filespath {directory}\\\nset pgnfile {directory}\\all.pgn\ncreaterr\nset autosave on t.ini\nset autorun on\nrun\n")


def processor_seconds(process):
    """Of the process alone, and the most memory that it had, in MiB."""
    stat = pathlib.Path(f"/proc/{process.pid}/stat").read_text().rsplit(")", 1)[1].split()
    status = pathlib.Path(f"/proc/{process.pid}/status").read_text()
    most = int(status.split("VmHWM:")[1].split()[0]) / 1024
    return (int(stat[11]) + int(stat[12])) / os.sysconf("SC_CLK_TCK"), most


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", type=pathlib.Path, required=True)
    parser.add_argument("--games", type=int, default=10000, help="games of the tourney")
    parser.add_argument("--at-once", type=int, default=10000)
    parser.add_argument("--seconds", type=int, default=60, help="of a game")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as scratch:
        directory = pathlib.Path(scratch)
        fill(directory, options)
        environment = dict(os.environ, PATH=f"{directory}/bin:{os.environ['PATH']}", SLURM_STAND_IN=f"{directory}/slurm",
                           SLURM_STAND_IN_SECONDS=str(options.seconds))
        begin = time.monotonic()
        program = subprocess.Popen(
            [str(options.build.resolve() / "tarvendo"), "script.txt", "--wait", "--games", str(options.at_once), "--cluster",
             "slurm"], cwd=directory, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
        own, most = 0, 0
        while program.poll() is None:
            try:
                own, most = processor_seconds(program)
            except (OSError, IndexError):
                pass
            time.sleep(0.2)
        lasted = time.monotonic() - begin
        games = (directory / "all.pgn").read_text().count("[Result ")
    usage = os.times()
    commands = usage.children_user + usage.children_system - own
    print(f"{games} games, {options.at_once} at a time, in {lasted:.0f} seconds: the program {own:.1f} processor seconds "
          f"({1000 * own / max(games, 1):.2f} ms a game), sbatch and squeue {commands:.1f}; {most:.0f} MiB")


if __name__ == "__main__":
    main()
