#!/usr/bin/env python3
"""Tourneys that a real Slurm of four nodes plays, with the stand-in for WinBoard.

    tests/cluster/cluster_test.py --program tarvendo --stub stub_winboard --scratch DIRECTORY [--long]

The short form plays one tourney in which the program is killed, a node is lost and comes back, and a job is cancelled. The long
form also asks Slurm for what it refuses, takes it away in the middle, lets it forget its jobs, hides the directory from a node,
and loses a node with a game for good. As root.
"""

import argparse
import collections
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import time

from slurm import Slurm, await_true

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "contract"))
from stub_tourney import READY, RESULTS, games_between, merged_pgn, read_tourney, result_of  # noqa: E402

PLAYERS = ["Alpha", "Beta", "Gamma", "Delta", "Epsilon", "Zeta"]
GAMES = games_between(len(PLAYERS))
UNKNOWN = "?"
# What a tourney may leave: all else is something that was forgotten.
STAYS = {"tarvendo", "winboard.exe", "players.txt", "script.txt", "stub_plan.txt", "stub_words.txt", "tourney.ini", "default.pgn",
         "table.htm", "Tarvendo.log", "console.txt", "errors.txt"}


class Broken(Exception):
    pass


def must(holds, what):
    if not holds:
        raise Broken(what)


class ClusterTourney:
    """A round robin in a directory of its own, handed to Slurm by the program."""

    def __init__(self, options, slurm, name, lasts=1500):
        self.slurm = slurm
        self.directory = options.scratch / name
        self.directory.mkdir(parents=True)
        shutil.copy(options.program, self.directory / "tarvendo")
        shutil.copy(options.stub, self.directory / "winboard.exe")
        self.write("players.txt", "PLAYER_FILE\n" + "".join(
            f"PLAYER\nName:\n{name}\nProgramExe:\n{name.lower()}\nEND_PLAYER\n" for name in PLAYERS))
        self.write("stub_plan.txt", "".join(
            f"g{number} {result_of(number)} ms={lasts}\n" for number in range(1, GAMES + 1)))
        self.begun = False

    def write(self, name, text):
        (self.directory / name).write_text(text)

    def read(self, name):
        path = self.directory / name
        return path.read_text() if path.exists() else ""

    def start(self, games=8, words=()):
        script = "load tourney.ini\nrun\n"
        if not self.begun:
            script = (f"readplayers players.txt\naddall\nset type roundrobin\nset filespath {self.directory}\\\n"
                      "set autosave on tourney.ini\nset autorun on\ncreaterrgames\nrun\n")
        self.begun = True
        self.write("script.txt", script)
        with open(self.directory / "console.txt", "a") as console, open(self.directory / "errors.txt", "a") as errors:
            return subprocess.Popen(
                [str(self.directory / "tarvendo"), "script.txt", "--wait", "--games", str(games), "--cluster", "slurm", *words],
                cwd=self.directory, env=self.slurm.environment, stdin=subprocess.DEVNULL, stdout=console, stderr=errors)

    def games(self):
        return read_tourney(self.directory / "tourney.ini")

    def ready(self):
        return sum(game["status"] == READY for game in self.games())

    def jobs_of(self, states="all"):
        return [job for job in self.slurm.jobs(states) if f"tarvendo-{self.directory.name}-" in job[2]]

    def job_of(self, game):
        found = [job for job in self.jobs_of() if f"-g{game}-" in job[2]]
        return found[-1] if found else None

    def await_end(self, process, seconds=180):
        try:
            process.wait(seconds)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()
            raise Broken(f"the program is not at its end; the console says\n{self.read('console.txt')[-2000:]}") from None

    def check(self, unknown=(), words_of=1):
        """Every game once, each with its result but for those in `unknown`, and nothing left over."""
        pgn = self.read("default.pgn")
        for game in self.games():
            number = game["number"]
            must(game["status"] == READY, f"game {number} was never played to its end")
            told = RESULTS.get(game["result"], UNKNOWN)
            if number in unknown:
                must(told == UNKNOWN, f"game {number} has the result {told}")
                continue
            must(told == result_of(number), f"game {number} has the result {told}")
            must(pgn.count(merged_pgn(game)) == 1, f"game {number} is not once in the PGN file")
        must(pgn.count("[Event ") == GAMES - len(unknown), "the PGN file holds something else")
        started = collections.Counter(
            line.split(":")[0] for line in self.read("stub_words.txt").splitlines() if not line.startswith("  "))
        for number in range(1, GAMES + 1):
            must(started[f"g{number}"] <= words_of, f"game {number} was started {started[f'g{number}']} times")
        left = {path.name for path in self.directory.iterdir()} - STAYS
        for number in unknown:
            left -= {f"g{number}.{ending}" for ending in ("BAT", "err", "out", "debug")}
        # What a stand-in that was killed leaves.
        left -= {"stub_running"} | {f"stub_plays_g{number}" for number in range(1, GAMES + 1) if unknown or words_of > 1}
        must(not left, f"left behind: {', '.join(sorted(left))}")
        must(not self.jobs_of("PENDING,RUNNING"), "jobs are left")

    def say(self, text):
        return text in self.read("console.txt")


def play_with_losses(options, slurm):
    """The program is killed in the middle, so is a slurmd, and a job is cancelled."""
    tourney = ClusterTourney(options, slurm, "losses")
    program = tourney.start()
    await_true(lambda: tourney.jobs_of("RUNNING"), "the first jobs run")
    time.sleep(0.5)
    program.send_signal(signal.SIGKILL)
    program.wait()
    slurm.kill("n1")
    program = tourney.start()
    await_true(lambda: any(job[1] == "RUNNING" for job in tourney.jobs_of()), "jobs go on", 30)
    # The last of the queue: it has a job, and has not been played.
    victim = None

    def find_victim():
        nonlocal victim
        running = tourney.jobs_of("RUNNING,PENDING")
        victim = running[-1] if running else None
        return victim is not None

    await_true(find_victim, "a job to be cancelled", 30)
    must(slurm.ask("scancel", victim[0]).returncode == 0, "scancel fails")
    number = int(victim[2].split("-g")[-1].split("-")[0])
    time.sleep(1)
    slurm.start_node("n1")
    tourney.await_end(program)
    unknown = [game["number"] for game in tourney.games() if game["status"] == READY and game["result"] not in RESULTS]
    # It may have ended just before.
    must(unknown in ([number], []), f"without a result: {unknown}, cancelled: {number}")
    if unknown:
        must(tourney.say(f"Slurm says of its job {victim[0]}: CANCELLED"), "nobody says that the job was cancelled")
    tourney.check(unknown)
    must(not slurm.step_processes(), "processes of jobs are left")
    return f"{GAMES} games, each once; game {number} cancelled, without a result: {unknown}"


def play_without_answer(options, slurm):
    """slurmctld is away for a while, with jobs queued and some not submitted yet."""
    tourney = ClusterTourney(options, slurm, "silence")
    program = tourney.start()
    await_true(lambda: tourney.jobs_of("RUNNING"), "the first jobs run")
    slurm.kill("slurmctld")
    await_true(lambda: tourney.say("Slurm does not answer:"), "the program says so", 60)
    time.sleep(5)
    slurm.start_controller()
    # Slurm may have lost a job that it took just before: its record is awaited for a while, then the game is played again.
    tourney.await_end(program, 400)
    must(tourney.read("console.txt").count("Slurm does not answer") == 1, "it says so more than once")
    must(tourney.say("Slurm answers again."), "it does not say that Slurm answers again")
    tourney.check()
    return "slurmctld away for a while: told once, every game played once"


def play_refused(options, slurm):
    """A partition that does not exist, then the same tourney without it."""
    tourney = ClusterTourney(options, slurm, "refused", lasts=100)
    program = tourney.start(words=["--cluster-options", "--partition nope"])
    tourney.await_end(program)
    must(tourney.say("invalid partition specified: nope"), "nobody says what sbatch says")
    must(tourney.ready() == 0, "games were lost")
    tourney.await_end(tourney.start(words=["--cluster-options", "--partition main --comment 'a b'"]))
    tourney.check()
    return "a wrong partition: told, nothing lost, played afterwards"


def play_forgotten(options, slurm):
    """The program is away while its jobs end and Slurm forgets them."""
    tourney = ClusterTourney(options, slurm, "forgotten", lasts=500)
    program = tourney.start()
    await_true(lambda: len(tourney.jobs_of()) >= 8, "eight jobs", 30)
    program.send_signal(signal.SIGKILL)
    program.wait()
    await_true(lambda: not tourney.jobs_of(), "Slurm has forgotten them", 120)
    tourney.await_end(tourney.start())
    tourney.check()
    return "jobs that ended while the program was away, forgotten by Slurm: collected"


def play_hidden(options, slurm):
    """A node that does not see the directory: its games fail with a reason, and are played again elsewhere."""
    tourney = ClusterTourney(options, slurm, "hidden", lasts=300)
    slurm.kill("n2", signal.SIGTERM)
    hide = f"mount -t tmpfs none '{tourney.directory}' && exec \"$@\""
    slurm.start_node("n2", through=["unshare", "-m", "sh", "-c", hide, "sh"])
    await_true(lambda: slurm.idle_nodes() == 4, "n2 is back")
    tourney.await_end(tourney.start(games=1, words=["--cluster-options", "--nodelist n2"]))
    must(tourney.say("perhaps its node does not see that directory"), "nobody says why")
    must(tourney.say("5 games in a row gave no sign of life or no record"), "the runner goes on for ever")
    failed = [game["number"] for game in tourney.games() if game["status"] == READY]
    must(len(failed) == 5, f"{len(failed)} games were given up")
    slurm.kill("n2", signal.SIGTERM)
    slurm.start_node("n2")
    await_true(lambda: slurm.idle_nodes() == 4, "n2 is back")
    return "a node that does not see the directory: five games fail, with the reason, and the runner stops"


def play_lost_node(options, slurm):
    """A node is lost with its game, and Slurm queues it again: the second try starts from nothing."""
    tourney = ClusterTourney(options, slurm, "requeued", lasts=4000)
    program = tourney.start(games=2)
    await_true(lambda: tourney.jobs_of("RUNNING"), "the first jobs run")
    time.sleep(1)
    number = tourney.jobs_of("RUNNING")[0][0]
    must(slurm.ask("scontrol", "requeue", number).returncode == 0, "the job cannot be queued again")
    await_true(lambda: all(job[0] != number or job[1] == "PENDING" for job in tourney.jobs_of()), "it waits again", 30)
    slurm.ask("scontrol", "update", f"jobid={number}", "starttime=now")
    tourney.await_end(program, 400)
    tourney.check(words_of=2)
    return "a job that was queued again: played from the beginning, one record"


def main(words):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--program", type=pathlib.Path, required=True)
    parser.add_argument("--stub", type=pathlib.Path, required=True)
    parser.add_argument("--scratch", type=pathlib.Path, required=True)
    parser.add_argument("--long", action="store_true")
    parser.add_argument("--only", default="", help="the name of one tourney, such as hidden")
    options = parser.parse_args(words)
    options.scratch = options.scratch.resolve()
    shutil.rmtree(options.scratch, ignore_errors=True)
    plays = [play_with_losses]
    if options.long:
        plays += [play_without_answer, play_refused, play_hidden, play_lost_node]
    known = [*plays, play_without_answer, play_refused, play_hidden, play_lost_node, play_forgotten]
    if options.only:
        plays = [play for play in known if play.__name__ == f"play_{options.only}"][:1]
    rounds = [(plays, 300)] if options.only != "forgotten" else []
    if options.long and not options.only or options.only == "forgotten":
        rounds.append(([play_forgotten], 5))
    for number, (group, min_job_age) in enumerate(rounds):
        with Slurm(options.scratch / f"slurm{number}", min_job_age) as slurm:
            for play in group:
                start = time.monotonic()
                print(f"{play(options, slurm)} ({time.monotonic() - start:.0f} s)", flush=True)
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main(sys.argv[1:]))
    except (Broken, TimeoutError) as broken:
        print(f"BROKEN: {broken}")
        sys.exit(1)
