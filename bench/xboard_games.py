#!/usr/bin/env python3
"""What the XBoard adapter adds to a game: milliseconds from its start to its end, for each way to a display, and those
that the processors worked for it (the shared and the given Xvfb not counted).

  xboard_games.py ADAPTER [GAMES [PLACES...]]

Plays GAMES games (20) each way, so many at once as each of PLACES says (1 2 4), with an engine that makes one move and
resigns when it is answered. The ways take turns, so that whatever else the machine does meets all of them:

  xboard   XBoard alone, on a display that is there: what cannot be less
  given    the adapter, on that display
  shared   the adapter, on the display of its directory
  own      the adapter, with an Xvfb for each game
"""
import os
import pathlib
import resource
import statistics
import subprocess
import sys
import tempfile
import threading
import time

ENGINE = """#!/bin/sh
while read -r word rest; do
  case $word in
  protover) echo 'feature usermove=1 sigint=0 sigterm=0 reuse=0 ping=1 done=1' ;;
  ping) echo "pong $rest" ;;
  new) reply=e2e4 ;;
  usermove) reply=e7e5; [ "$rest" != e7e5 ] || echo resign ;;
  go) echo "move $reply" ;;
  quit) exit 0 ;;
  esac
done
"""
WAYS = ["xboard", "given", "shared", "own"]


def play(way, directory, number, adapter, engine, display):
    """Plays one game and returns its milliseconds; fails when there is no record of it."""
    record = directory / way / f"g{number}.PGN"
    record.unlink(missing_ok=True)
    debug = f"g{number}.debug"
    common = ["cp", "mg=1", f"sgf={record.name}", "tc=5", "inc=0", "mps=40", "clock", "thinking", f"fcp={engine}",
              f"scp={engine}", "debug", "xexit", "xpopup", "autoflag"]
    if way == "xboard":
        command = ["xboard", "-soundProgram", "true", "-xanimate", "-saveSettingsOnExit", "false"]
        for word in [f"nameOfDebugFile={debug}"] + common:
            name, equals, value = word.partition("=")
            command += ["-" + name] + ([value] if equals else [])
    else:
        command = [adapter] + ["/" + word for word in common] + [f"/nameOfDebugFile={debug}"]
    environment = dict(os.environ, LANGUAGE="en", PATH=os.environ["PATH"] + ":/usr/games")
    environment.pop("DISPLAY", None)
    if way in ("xboard", "given"):
        environment["DISPLAY"] = display
    began = time.monotonic()
    subprocess.run(command, cwd=directory / way, env=environment, check=True, stdin=subprocess.DEVNULL,
                   start_new_session=True,  # as the adapter starts XBoard: sessions share the processors evenly
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    took = 1000 * (time.monotonic() - began)
    if "resigns} 0-1" not in record.read_text():
        sys.exit(f"{record} is no record of the game")
    return took


def worked():
    """Milliseconds of the processors for all that was started and has ended."""
    usage = resource.getrusage(resource.RUSAGE_CHILDREN)
    return 1000 * (usage.ru_utime + usage.ru_stime)


def measure(directory, places, games, *rest):
    """The times of so many games for each way, with `places` at once, and the processors' work for one."""
    times = {way: [] for way in WAYS}
    work = {way: 0.0 for way in WAYS}

    def one_place(way, place):
        for game in range(3):
            times[way].append(play(way, directory, place, *rest))

    for _ in range(-(-games // (3 * places))):
        for way in WAYS:
            before = worked()
            threads = [threading.Thread(target=one_place, args=(way, place)) for place in range(places)]
            for thread in threads:
                thread.start()
            for thread in threads:
                thread.join()
            work[way] += worked() - before
    return times, {way: work[way] / len(times[way]) for way in WAYS}


def main():
    adapter = os.path.abspath(sys.argv[1])
    games = int(sys.argv[2]) if len(sys.argv) > 2 else 20
    all_places = [int(word) for word in sys.argv[3:]] or [1, 2, 4]
    with tempfile.TemporaryDirectory() as name:
        directory = pathlib.Path(name)
        for way in WAYS:
            (directory / way).mkdir()
        (directory / "own" / ".xvfb").mkdir()  # so the adapter cannot share a display there
        engine = directory / "engine"
        engine.write_text(ENGINE)
        engine.chmod(0o755)
        reading, writing = os.pipe()
        server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", "1280x1024x24", "-nolisten",
                                   "tcp", "-noreset"], pass_fds=[writing], stderr=subprocess.DEVNULL)
        display = ":" + os.read(reading, 10).decode().strip()
        try:
            for way in WAYS:
                play(way, directory, 0, adapter, engine, display)  # what is read first is in memory then
            print("places  way      median  fastest  beyond XBoard: median  fastest  processors")
            for places in all_places:
                times, work = measure(directory, places, games, adapter, engine, display)
                base = times["xboard"]
                for way, taken in times.items():
                    more = statistics.median(taken) - statistics.median(base)
                    print(f"{places:6}  {way:7} {statistics.median(taken):7.1f}  {min(taken):7.1f}"
                          f"  {more:21.1f}  {min(taken) - min(base):7.1f}"
                          f"  {work[way]:10.1f}", flush=True)
        finally:
            server.terminate()
            server.wait()


if __name__ == "__main__":
    main()
