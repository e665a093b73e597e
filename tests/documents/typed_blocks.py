"""The blocks of a text that can be typed, and a desk to type them at.

What a block is stands behind its three back quotes:
  sh          lines for the shell; when the last one starts the program without a script, the next block is typed there
  tarvendo    lines for the program's prompt
  file NAME   a file to be made
  ini, text   nothing to type
  bat         lines for the shell of Windows, which are not typed here
Each heading begins with a new desk.
"""

import os
import pathlib
import re
import shutil
import subprocess

import slurm_stand_in

BLOCK = re.compile(r"^```([^\n`]*)\n(.*?)^```$", re.MULTILINE | re.DOTALL)
KINDS = ("sh", "tarvendo", "file", "ini", "text", "bat")
SECONDS = 120

# The program waits for the games, where whoever types would; then the exit code, which says nothing, is none.
PROGRAM = """#!/bin/bash
case " $* " in
  *" --help "* | *" --version "* | *" --resume"* | *" --exit-code "*) exec {program} "$@" ;;
  *" --wait "*) {program} "$@" ;;
  *) {program} "$@" --wait ;;
esac
[ $? -eq 1 ]
"""
# Commands of the blocks that would change the machine.
STAND_INS = {"sudo": '#!/bin/sh\nexec "$@"\n', "apt-get": "#!/bin/sh\n", "systemctl": "#!/bin/sh\n",
             "cmake": "#!/bin/sh\n", "dpkg": "#!/bin/sh\n", **slurm_stand_in.COMMANDS}

COMPLAINTS = re.compile(
    r"I just don't know|don't understand|do(es)? not exist|doesn't exist|failed|Error|not found|No such file|cannot|Can't|"
    r"No games removed|What do you want|already (taken|exists)|--help tells|: \*$|not played|without a result: |Unrecognized",
    re.MULTILINE)
UNHEEDED = ("Even pairing", "0 without result")


class Block:
    def __init__(self, kind, text):
        self.kind, _, self.name = kind.partition(" ")
        self.text = text


def sections_of(text):
    """(heading, its blocks) of a text, as far as there are any."""
    for part in re.split(r"^(?=##+ )", text, flags=re.MULTILINE):
        heading = part.splitlines()[0].lstrip("# ") if part else ""
        blocks = [Block(*found) for found in BLOCK.findall(part)]
        if blocks:
            yield heading, blocks


class Desk:
    """A home of its own, with the program and its stand-in for WinBoard, and what package and sources put beside."""

    def __init__(self, directory, program, stub, root):
        self.home = directory / "home"
        self.home.mkdir(parents=True)
        self.commands = directory / "bin"
        self.commands.mkdir()
        self.package = directory / "package"
        shutil.copytree(root / "examples", self.package / "examples")
        shutil.copy(root / "packaging/first-tourney-linux.txt", self.package / "examples/first-tourney.txt")
        installed = directory / "installed"
        installed.mkdir()
        shutil.copy(program, installed / "tarvendo")
        shutil.copy(stub, installed / "winboard.exe")
        self.add_command("tarvendo", PROGRAM.format(program=installed / "tarvendo"))
        for name, text in STAND_INS.items():
            self.add_command(name, text)
        built = self.home / "build"
        built.mkdir()
        (built / "tarvendo").symlink_to(self.commands / "tarvendo")
        (self.home / "packaging").mkdir()
        shutil.copy(root / "packaging/first-tourney-linux.txt", self.home / "packaging")
        self.shared = directory / "srv" / "cup"
        self.shared.mkdir(parents=True)
        self.place = self.home
        self.seen = ""

    def add_command(self, name, text):
        (self.commands / name).write_text(text)
        (self.commands / name).chmod(0o755)

    def told(self, text):
        """The lines with the directories of this desk in place of the system's."""
        return text.replace("/usr/share/doc/tarvendo", str(self.package)).replace("/srv/cup", str(self.shared))

    def run(self, script, typed=""):
        """Runs lines of the shell, with what is typed into the last one; the next ones run where these have led to."""
        where = self.home / ".where"
        environment = {"HOME": str(self.home), "PATH": f"{self.commands}:{os.environ['PATH']}", "LC_ALL": "C",
                       "TZ": "UTC0"}
        done = subprocess.run(["bash", "-ec", f"{self.told(script)}\nwait\npwd > '{where}'"], cwd=self.place,
                              env=environment, input=self.told(typed), stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, text=True, timeout=SECONDS, check=False)
        self.seen += done.stdout
        if done.returncode != 0:
            raise AssertionError(f"this ended with {done.returncode}:\n{script}\n{done.stdout}")
        self.place = pathlib.Path(where.read_text().strip())

    def type_blocks(self, blocks):
        blocks = list(blocks)
        while blocks:
            block = blocks.pop(0)
            if block.kind not in KINDS:
                raise AssertionError(f"what kind of block is '{block.kind}'?\n{block.text}")
            if block.kind == "file":
                (self.place / block.name).write_text(block.text)
            elif block.kind == "tarvendo":
                self.run("tarvendo", block.text)
            elif block.kind == "sh":
                starts = block.text.splitlines()[-1].strip() == "tarvendo"
                typed = blocks.pop(0).text if starts and blocks and blocks[0].kind == "tarvendo" else ""
                self.run(block.text, typed)

    def stub_lines(self):
        """What the stand-in for WinBoard has written down."""
        return [line for place in (self.home, self.shared) for words in place.rglob("stub_words.txt")
                for line in words.read_text().splitlines()]

    def cancelled_jobs(self):
        """What the stand-in for Slurm was told to cancel."""
        told = self.home / ".cancelled"
        return told.read_text().split() if told.exists() else []

    def complaints(self):
        """What the program, the shell or the stand-in for WinBoard had to say against it, a line each."""
        lines = [line for line in self.seen.splitlines()
                 if COMPLAINTS.search(line) and not any(words in line for words in UNHEEDED)]
        return lines + [line for line in self.stub_lines()
                        if line.startswith("  ") and "ANOTHER GAME IS BEING PLAYED" not in line]

    def games_started(self):
        return sum(re.match(r"g\d+:", line) is not None for line in self.stub_lines())
