#!/usr/bin/env python3
"""How long the program takes to answer to Ctrl-C in the middle of a command that has much to do.

    bench/ctrl_c.py PROGRAM

For each command a tourney is made large, the command is typed, and a moment later SIGINT is sent. Printed: what the
command works on, and the milliseconds from the signal to the program's own answer ("An exception has occurred ...")
and to its end, which holds the emergency save.
"""

import pathlib
import signal
import subprocess
import sys
import tempfile
import time

ANSWER = b"An exception has occurred"
PLAYERS = 100_000


def player_file(count):
    blocks = (f"PLAYER\nName:\nEngine {n}\nProgramExe:\ne.exe\nEND_PLAYER\n\n" for n in range(count))
    return "PLAYER_FILE\n" + "".join(blocks)


MANY = ["readplayers many.txt", "addallplayers"]
ROUND_ROBIN = ["readplayers thousand.txt", "addallplayers", "set type roundrobin", "createrrgames"]

CASES = [  # (what it works on, what is done before, the command, seconds until the signal)
    ("a million players", [], "readplayers million.txt", 0.5),
    (f"{PLAYERS} players", ["readplayers many.txt"], "addallplayers", 0.02),
    (f"{PLAYERS} players", MANY, "showplayers", 0.05),
    (f"{PLAYERS} players", ["readplayers many.txt"], "available", 0.02),
    ("499,500 games", ROUND_ROBIN[:-1], "createrrgames", 0.2),
    ("499,500 games", ROUND_ROBIN, "showgames", 0.2),
    ("499,500 games", ROUND_ROBIN, "spool -all", 0.5),
    ("499,500 games", ROUND_ROBIN, "removegames -all", 0.3),
    ("499,500 games", ROUND_ROBIN, "texttable", 0.2),
    ("499,500 games", ROUND_ROBIN + ["save big.ini"], "load big.ini", 0.2),
    ("500 megabytes of line feeds behind a count", [], "load feeds.ini", 0.8),
    ("100,000 players", MANY, "removeplayer 1", 0.01),
]


def run(program, directory, before, command, wait):
    process = subprocess.Popen([program], cwd=directory, stdin=subprocess.PIPE, stdout=subprocess.PIPE)
    process.stdin.write(("".join(line + "\n" for line in before) + "get computer\n").encode())
    process.stdin.flush()
    shown = b""
    while b"Computer" not in shown[-4000:]:
        shown = shown[-4000:] + process.stdout.read1(1 << 16)
    process.stdin.write((command + "\nget computer\n").encode())
    process.stdin.flush()
    time.sleep(wait)
    sent = time.monotonic()
    process.send_signal(signal.SIGINT)
    shown, answered = b"", None
    while part := process.stdout.read1(1 << 16):
        shown = shown[-200:] + part
        if answered is None and ANSWER in shown:
            answered = time.monotonic()
    process.wait()
    return answered - sent, time.monotonic() - sent


def main():
    program = pathlib.Path(sys.argv[1]).resolve()
    with tempfile.TemporaryDirectory() as name:
        directory = pathlib.Path(name)
        (directory / "many.txt").write_text(player_file(PLAYERS))
        (directory / "thousand.txt").write_text(player_file(1000))
        (directory / "million.txt").write_text(player_file(1_000_000))
        with (directory / "feeds.ini").open("w") as feeds:
            feeds.write("TOURNEY_FILE\n" + "\n" * 27 + "2000000000\n")
            for _ in range(500):
                feeds.write("\n" * (1 << 20))
        print("answer, ms  end, ms  command            works on")
        for works_on, before, command, wait in CASES:
            answer, end = run(program, directory, before, command, wait)
            print(f"{1000 * answer:10.0f} {1000 * end:8.0f}  {command:24} {works_on}", flush=True)


if __name__ == "__main__":
    main()
