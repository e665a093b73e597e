#!/usr/bin/env python3
"""Tourney file and PGN file are whole and agree when the power goes, on real file systems.

A file system in a file (ext4, XFS) is mounted, a tourney with AutoSave is played on it with the stand-in for WinBoard, and
in the middle of it the file system is shut down as a power failure does: what nobody has waited for is lost, sometimes but for
the names. That happens at a random moment, or behind one of the program's system calls, at which it is killed. Then it is
mounted again. The tourney file is whole, every game that is READY stands in the PGN file once, and so does every game behind
which the program had begun the next one. The program goes on to the end, where all games stand in both, and nothing is left over.

Only the superuser can do that, on a machine with loop devices; elsewhere the test says why it is not run.

    power_cut_test.py --quick PROGRAM --stub STUB --at-call AT_CALL --scratch DIRECTORY --cuts 20 --seed 7
"""

import argparse
import contextlib
import ctypes
import fcntl
import os
import pathlib
import random
import re
import shutil
import signal
import struct
import subprocess
import sys
import time

from stub_tourney import ENDED, BrokenPromise, Tourney, add_options, games_between, make_ready, read_tourney

PLAYERS = ("Alpha", "Beta", "Gamma", "Delta")
GAMES = games_between(len(PLAYERS))
PATIENCE = 20  # seconds
LONGEST_GAME = 40  # milliseconds
KILOBYTES = (0, 0, 5, 20)  # what is longer than four goes into a file in several pieces
LATEST_CUT = 0.4  # seconds behind the start
CALLS = 500
KILLED = (-signal.SIGKILL, 9, 99)
READY = 4
KINDS = {"ext4": ["mkfs.ext4", "-q", "-F"], "xfs": ["mkfs.xfs", "-q", "-f"]}
IMAGE_MEGABYTES = 320  # XFS takes no less; the file has holes

# _IOR('X', 125, __u32), for ext4 as for XFS: the file system does nothing more, as if the power had gone. The log of its
# names is written before, or is not.
SHUTDOWN = 0x8004587D
WITH_NAMES = 1
WITH_NOTHING = 2

STAYS = re.compile(
    r"Tarvendo\.log|default\.pgn|players\.txt|script\.txt|stub_.*\.txt|table\.htm|tourney\.ini|winboard\.(debug|exe)"
    r"|tarvendo|g\d+\.(broken|left)\d*\.PGN|stub_running|stub_plays_.*"
)


class Impossible(Exception):
    """This machine cannot do it."""


def run(*words):
    done = subprocess.run([str(word) for word in words], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    if done.returncode != 0:
        raise Impossible(f"{words[0]}: {done.stdout.strip()}")


class Disk:
    """A file system in a file."""

    def __init__(self, directory, kind):
        self.image = directory / f"{kind}.image"
        self.mount_point = directory / kind
        self.mount_point.mkdir()
        with open(self.image, "wb") as image:
            image.truncate(IMAGE_MEGABYTES << 20)
        run(*KINDS[kind], self.image)

    def mount(self):
        run("mount", "-o", "loop", self.image, self.mount_point)

    def unmount(self):
        end = time.monotonic() + PATIENCE
        while True:
            self.end_users()
            try:
                return run("umount", self.mount_point)
            except Impossible as refused:
                # Somebody is still on his way out.
                if time.monotonic() > end:
                    raise BrokenPromise(str(refused)) from refused
                time.sleep(0.01)

    def write_all(self):
        run("sync", "-f", self.mount_point)

    def cut_power(self, flag):
        descriptor = os.open(self.mount_point, os.O_RDONLY)
        try:
            fcntl.ioctl(descriptor, SHUTDOWN, struct.pack("I", flag))
        except OSError as refused:
            raise Impossible(f"the file system cannot be shut down: {refused}") from refused
        finally:
            os.close(descriptor)

    def users(self):
        """The processes whose program or directory lies there: the stand-ins that the program has left."""
        for entry in os.listdir("/proc"):
            if not entry.isdigit():
                continue
            for link in ("exe", "cwd"):
                with contextlib.suppress(OSError):
                    if os.readlink(f"/proc/{entry}/{link}").startswith(f"{self.mount_point}/"):
                        yield int(entry)
                        break

    def end_users(self):
        end = time.monotonic() + PATIENCE
        while users := list(self.users()):
            if time.monotonic() > end:
                raise BrokenPromise(f"processes do not leave {self.mount_point}: {users}")
            for process in users:
                with contextlib.suppress(ProcessLookupError):
                    os.kill(process, signal.SIGKILL)
            time.sleep(0.005)

    def remove(self):
        with contextlib.suppress(BrokenPromise):
            self.unmount()
        self.image.unlink()


class Cutter:
    """Plays tourneys on a disk and cuts its power."""

    def __init__(self, options, disk, kind):
        self.options = options
        self.disk = disk
        self.random = random.Random(f"{options.seed} {kind} {options.games}")
        self.kind = kind
        self.output = options.directory / "output.txt"
        disk.mount()
        options.scratch = disk.mount_point / "work"
        make_ready(options)
        prepared = Tourney(options, "prepared", PLAYERS)
        prepared.set_up()
        self.prepared = options.directory / f"{kind}_prepared"
        shutil.copytree(prepared.directory, self.prepared)
        disk.write_all()

    def make_tourney(self, name):
        tourney = Tourney(self.options, name, PLAYERS, self.options.games)
        for file in ("tourney.ini", "players.txt"):
            shutil.copy(self.prepared / file, tourney.directory)
        lasts = [self.random.choice((0, self.random.randrange(LONGEST_GAME))) for _ in range(GAMES)]
        tourney.plan_games(lasts, [self.random.choice(KILOBYTES) for _ in lasts])
        self.disk.write_all()
        return tourney

    def play_and_cut(self, tourney):
        """Whether the power went before the program had come to its end."""
        at_a_call = self.options.at_call and self.random.random() < 0.5
        meddler = (self.options.at_call, "any", str(self.random.randint(1, CALLS)), "killafter") if at_a_call else ()
        with open(self.output, "wb") as output:
            process = tourney.start(stdout=output, meddler=meddler)
        with contextlib.suppress(subprocess.TimeoutExpired):
            process.wait(timeout=60 if at_a_call else self.random.random() * LATEST_CUT)
        has_ended = process.poll() == ENDED
        self.disk.cut_power(self.random.choice((WITH_NAMES, WITH_NOTHING)))
        with contextlib.suppress(subprocess.TimeoutExpired):
            process.wait(timeout=0.05)
        process.kill()
        process.wait(timeout=60)
        self.disk.unmount()
        self.disk.mount()
        return not has_ended

    def told_games(self):
        """The games that the program had told of before it began its last one: their results were saved."""
        text = self.output.read_text(errors="replace")
        if self.options.games > 1:
            return []
        before_last = text[: text.rfind("Starting game no.")] if "Starting game no." in text else ""
        return [int(number) for number in re.findall(r"^Game (\d+): .* : ", before_last, re.M)]

    def check_left(self, tourney):
        tourney.check(must_be_over=False)
        ready = {game["number"] for game in read_tourney(tourney.directory / "tourney.ini") if game["status"] == READY}
        lost = [number for number in self.told_games() if number not in ready]
        if lost:
            raise BrokenPromise(f"told and saved, but lost: {lost}")

    def check_end(self, tourney):
        tourney.check(must_be_over=True)
        tourney.check_collected()
        left = [path.name for path in tourney.directory.iterdir() if not STAYS.fullmatch(path.name)]
        if left:
            raise BrokenPromise(f"left behind: {', '.join(sorted(left))}")

    def cut(self, number):
        tourney = self.make_tourney(f"t{number}")
        try:
            was_cut = self.play_and_cut(tourney)
            self.check_left(tourney)
            tourney.run()
            self.check_end(tourney)
        except (BrokenPromise, OSError, subprocess.TimeoutExpired) as broken:
            kept = self.options.directory / f"{self.kind}_t{number}"
            shutil.copytree(tourney.directory, kept, symlinks=True)
            raise BrokenPromise(f"{self.kind}, {kept}: {broken}") from broken
        tourney.remove()
        return was_cut


def cut_on(options, kind):
    """Cuts the power of one kind of file system; returns how often a tourney was under way."""
    disk = Disk(options.directory, kind)
    try:
        cutter = Cutter(options, disk, kind)
        return sum(cutter.cut(number) for number in range(1, options.cuts + 1))
    finally:
        disk.remove()


def see_whether_possible():
    if os.geteuid() != 0:
        raise Impossible("only the superuser mounts file systems")
    if not os.path.exists("/dev/loop-control"):
        raise Impossible("there are no loop devices")
    # Mounts of its own, so that nothing stays mounted whatever happens.
    if ctypes.CDLL(None, use_errno=True).unshare(0x00020000) != 0:
        raise Impossible("no mounts of its own")
    run("mount", "--make-rprivate", "/")


def main(words):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    add_options(parser)
    parser.add_argument("--at-call", type=os.path.abspath, help="the program at_call")
    parser.add_argument("--cuts", type=int, default=10, help="of each file system (or TARVENDO_POWER_CUTS)")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--games", type=int, default=1, help="games at a time")
    options = parser.parse_args(words)
    options.cuts = int(os.environ.get("TARVENDO_POWER_CUTS", options.cuts))
    options.directory = pathlib.Path(options.scratch).resolve()
    shutil.rmtree(options.directory, ignore_errors=True)
    options.directory.mkdir(parents=True)
    try:
        see_whether_possible()
    except Impossible as reason:
        print(f"not run: {reason}")
        return 0
    for kind in KINDS:
        if shutil.which(KINDS[kind][0]) is None:
            print(f"{kind}: not run: there is no {KINDS[kind][0]}")
            continue
        try:
            under_way = cut_on(options, kind)
        except Impossible as reason:
            print(f"{kind}: not run: {reason}")
            continue
        except BrokenPromise as broken:
            print(broken)
            return 1
        print(f"{kind}: the power went {options.cuts} times, {under_way} times in the middle of a tourney")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
