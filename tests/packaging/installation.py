"""A program that was installed from a package, and the user who works with it."""

import os
import re
import subprocess
import unittest

NOBODY = 65534  # the ordinary user, when the test itself runs as root
SECONDS_OF_A_COMMAND = 60
SECONDS_OF_A_TOURNEY = 240
LINE_OF_A_REPORT = re.compile(r"^(?: *\d+\. Round | *\d+\.\||Rank\||-+\|).*$", re.MULTILINE)


def run(*words, **more):
    """Runs a command that has to succeed; returns what it prints."""
    words = [str(word) for word in words]
    output = {"stdout": subprocess.PIPE, "stderr": subprocess.STDOUT, "text": True}
    done = subprocess.run(words, **output, **more)
    if done.returncode != 0:
        raise AssertionError(f"{' '.join(words)} ended with {done.returncode}:\n{done.stdout}")
    return done.stdout


def ordinary_user():
    """How a process is started as somebody who may not write into what is installed."""
    if os.getuid() != 0:
        return {}
    return {"user": NOBODY, "group": NOBODY, "extra_groups": []}


def report_lines(console):
    """The lines of a report that tell of games and places, without the blanks behind them."""
    return [line.rstrip() for line in LINE_OF_A_REPORT.findall(console)]


class Started:
    """A program that runs. Its output goes to a file, for its games may outlive it."""

    def __init__(self, command, output, **more):
        self.output = open(output, "w+b")
        self.process = subprocess.Popen(
            [str(word) for word in command],
            stdin=subprocess.DEVNULL,
            stdout=self.output,
            stderr=subprocess.DEVNULL,
            **more,
        )

    def console(self, seconds):
        """What it has printed when it has ended, with one kind of line ends."""
        try:
            self.process.wait(seconds)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
        self.output.seek(0)
        text = self.output.read().decode("latin-1").replace("\r\n", "\n")
        self.output.close()
        if self.process.returncode != 1:  # the program's own exit code, whatever happened
            raise AssertionError(f"ended with {self.process.returncode}:\n{text}")
        return text


class Installation:
    """An installed program. It is started by `command` in the directory `desk`, where its user
    keeps the tourney, and has its pictures in the directory `pictures`."""

    def __init__(self, command, desk, pictures, environment, identity):
        self.command = command
        self.desk = desk
        self.pictures = pictures
        self.desk.mkdir(parents=True, exist_ok=True)
        self.more = {"cwd": desk, "env": {**os.environ, **environment}, **identity}
        if "user" in identity:
            os.chown(desk, identity["user"], identity["group"])
        self.tourney = None

    def type(self, *lines):
        """What the program prints behind its banner when it is given these lines as a script."""
        (self.desk / "lines.txt").write_text("".join(line + "\n" for line in lines))
        started = Started([*self.command, "lines.txt"], self.desk / "output.txt", **self.more)
        return started.console(SECONDS_OF_A_COMMAND).rpartition("|______")[2]

    def start_tourney(self, script):
        """Hands the starter script to the program, which plays all its games."""
        output = self.desk / "tourney-output.txt"
        self.tourney = Started([*self.command, script, "--wait"], output, **self.more)
        unittest.addModuleCleanup(self.tourney.process.kill)

    def finish_tourney(self):
        """What was printed while the tourney was played."""
        return self.tourney.console(SECONDS_OF_A_TOURNEY)
