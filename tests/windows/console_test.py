#!/usr/bin/env python3
"""Ctrl-C at a real console: the tourney is saved to emergency.ini, the program ends, and a game goes on.

usage: console_test.py --program PROGRAM --quick QUICK --stub STUB --scratch DIRECTORY --launcher WINE

Wine makes a terminal a console, and a key that is typed there the event that Windows would tell of.
"""

import argparse
import os
import pathlib
import pty
import select
import shutil
import sys
import termios
import time

CTRL_C = b"\x03"
PATIENCE_SECONDS = 30
MESSAGES = (
    b"An exception has occurred and tourney will be closed.",
    b"Trying to save current tourney to file 'emergency.ini' in current directory.",
)
NAME_LINE = 17  # 0-based, in a tourney file
GAME_SET_UP = ["set name Left during a game", "createplayer", "Alpha", "", "", "", "", "alpha", "", "createplayer", "Beta", "",
               "", "", "", "beta", "", "addallplayers", "set type roundrobin", "createrrgames", "spool -all", "run"]


class Differs(Exception):
    pass


def await_true(condition, what):
    end = time.monotonic() + PATIENCE_SECONDS
    while not condition():
        if time.monotonic() > end:
            raise Differs(f"waited in vain: {what}")
        time.sleep(0.01)


class Console:
    """The program at a terminal of its own, in a directory of its own, after a script and with the prompt."""

    def __init__(self, options, program, script, **files):
        self.directory = options.scratch / f"run{len(list(options.scratch.iterdir()))}"
        self.directory.mkdir()
        for name, lines in {"script": script, **files}.items():
            (self.directory / (name + ".txt")).write_text("".join(line + "\n" for line in lines))
        self.shown = b""
        copy = self.directory / "tarvendo.exe"
        shutil.copy(program, copy)
        shutil.copy(options.stub, self.directory / "winboard.exe")
        self.process, self.terminal = pty.fork()
        if self.process == 0:
            os.chdir(self.directory)
            os.environ["TERM"] = "xterm"
            os.execvp(options.launcher[0], [*options.launcher, str(copy), "script.txt", "-c"])
        self.await_keyboard()

    def read(self):
        """Takes what is shown meanwhile. False at the end."""
        ready, _, _ = select.select([self.terminal], [], [], 0.05)
        if not ready:
            return True
        try:
            text = os.read(self.terminal, 4096)
        except OSError:  # This is how a terminal tells that nobody writes to it any more.
            return False
        self.shown += text
        return bool(text)

    def await_keyboard(self):
        """Until the prompt is there and keys are taken as they come; the terminal's own lines are not Wine's."""

        def is_taken():
            self.read()
            return b">" in self.shown and not termios.tcgetattr(self.terminal)[3] & termios.ICANON

        await_true(is_taken, "the prompt")

    def await_shown(self, text):
        """The console may be slower than the program."""

        def is_shown():
            self.read()
            return text in self.shown

        await_true(is_shown, f"'{text.decode()}' on the console; it shows\n{self.shown.decode(errors='replace')}")

    def type(self, line):
        os.write(self.terminal, line.encode() + b"\r")

    def press(self, key):
        os.write(self.terminal, key)

    def await_end(self):
        """The exit code."""
        code = []

        def has_ended():
            self.read()
            if not code:
                ended, status = os.waitpid(self.process, os.WNOHANG)
                code.extend([os.waitstatus_to_exitcode(status)] if ended else [])
            return bool(code)

        await_true(has_ended, "the end of the program")
        return code[0]

    def has(self, name):
        return (self.directory / name).exists()

    def expect_emergency(self, tourney):
        code = self.await_end()
        if code != 1:
            raise Differs(f"the exit code is {code}")
        for message in MESSAGES:
            self.await_shown(message)
        if not self.has("emergency.ini"):
            raise Differs("there is no emergency.ini")
        saved = (self.directory / "emergency.ini").read_text().splitlines()[NAME_LINE]
        if saved != tourney:
            raise Differs(f"emergency.ini holds the tourney '{saved}', not '{tourney}'")


def at_the_prompt(options):
    console = Console(options, options.program, ["set name Left at the prompt"])
    console.press(CTRL_C)
    console.expect_emergency("Left at the prompt")


def during_a_command(options):
    console = Console(options, options.program, ["set name Left during a command"])
    console.type("winboard.exe /touch /file=started & winboard.exe /await /file=never")
    await_true(lambda: console.read() and console.has("started"), "the start of the command")
    console.press(CTRL_C)
    console.expect_emergency("Left during a command")


def during_a_game(options):
    console = Console(options, options.quick, GAME_SET_UP, stub_plan=["* hold 1-0"])
    await_true(lambda: console.read() and console.has("stub_playing"), "the game")
    console.press(CTRL_C)
    console.expect_emergency("Left during a game")
    if not console.has("stub_running"):
        raise Differs("the game ended with the program")
    (console.directory / "stub_go").touch()
    await_true(lambda: not console.has("stub_running"), "the end of the game")
    if "1-0" not in (console.directory / "g1.PGN").read_text():
        raise Differs("the game was not played to its end")


def main(words):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    for name in ("program", "quick", "stub", "scratch"):
        parser.add_argument("--" + name, type=pathlib.Path, required=True)
    parser.add_argument("--launcher", type=str.split, required=True)
    options = parser.parse_args(words)
    shutil.rmtree(options.scratch, ignore_errors=True)
    options.scratch.mkdir(parents=True)
    failed = 0
    for case in (at_the_prompt, during_a_command, during_a_game):
        try:
            case(options)
            print(f"Ctrl-C {case.__name__}: the tourney was saved")
        except Differs as differs:
            failed += 1
            print(f"Ctrl-C {case.__name__}: {differs}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
