#!/usr/bin/env python3
"""Types every example of the help file into the program and compares what it answers.

usage: help_examples.py [--launcher=WINE] PROGRAM HELP_FILE [TOPIC...]

An example is a row of lines that are indented by four blanks. A line "> COMMAND" is typed at the
prompt; the lines below it are the answer, "..." standing for any lines; blank lines do not count. Each
topic is run by a program of its own, copied into an empty directory, which has read the four engines
of ENGINES.
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile

ENGINES = [("Alpha", "strong"), ("Beta", "strong fast"), ("Gamma", "fast"), ("Delta", "")]
INDENT = "    "
QUESTIONS = ("Name", "Dir", "InitString", "WhiteOptions", "BlackOptions", "ProgramExe", "Group")
MARK = "@@@"
SECONDS = 60


def topics(path):
    """The topics of the help file as (name, lines)."""
    with open(path, encoding="ascii") as file:
        texts = file.read().split("-ENDTOPIC-\n")
    return [(text.split(":")[0], text.split("\n")) for text in texts if text]


def examples(lines):
    """The examples of a topic as [typed lines, lines of the answer]."""
    found = []
    inside = False
    for line in lines:
        if line.startswith(INDENT + "> "):
            found.append([[line[len(INDENT) + 2:]], []])
            inside = True
        elif inside and line.startswith(INDENT):
            add_answer(found[-1], line[len(INDENT):])
        elif line:
            inside = False
    return found


def add_answer(example, line):
    """Adds a line of the answer; behind a question of createplayer stands what is typed next."""
    typed, answer = example
    question = re.match("(%s):" % "|".join(QUESTIONS), line)
    if not typed[0].startswith("createplayer") or not question:
        answer.append(line)
        return
    typed.append(line[question.end():])
    answer.append(question.group())


def player_file():
    """A player file with the engines that the help speaks of."""
    blocks = ["PLAYER\nName:\n%s\nProgramExe:\n%s\nGroup:\n%s\nEND_PLAYER\n"
              % (name, name.lower(), group) for name, group in ENGINES]
    return "PLAYER_FILE\n" + "\n".join(blocks)


def script(parts, before):
    """The lines of a script that types everything, with a mark behind each command."""
    lines = list(before)
    for number, (typed, _) in enumerate(parts):
        lines += ["echo %s%d" % (MARK, number)] + typed
    return "".join(line + "\n" for line in lines + ["quit"])


def run(launcher, program, help_file, lines):
    """What the program prints while it runs a script of these lines."""
    with tempfile.TemporaryDirectory() as directory:
        copy = os.path.join(directory, os.path.basename(program))
        shutil.copy(program, copy)
        shutil.copy(help_file, os.path.join(directory, "TourneyHelp.txt"))
        for name, text in (("engines.txt", player_file()), ("script.txt", lines)):
            with open(os.path.join(directory, name), "w", encoding="ascii") as file:
                file.write(text)
        result = subprocess.run(launcher + [copy, "script.txt"], cwd=directory, stdin=subprocess.DEVNULL,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                                timeout=SECONDS, check=False)
    return result.stdout


def plain(text):
    """The lines of a text that say something, without the prompts that the runner repeats."""
    lines = [line.rstrip() for line in text.split("\n")]
    return [line for line in lines if line and line != ">"]


def fits(answer, lines):
    """Whether the lines are those of the answer, "..." standing for any number of them."""
    if not answer:
        return not lines
    if answer[0] == "...":
        return any(fits(answer[1:], lines[i:]) for i in range(len(lines) + 1))
    return bool(lines) and answer[0] == lines[0] and fits(answer[1:], lines[1:])


def join_questions(answer):
    """The questions of createplayer come on one line, because their answers are not printed back."""
    joined = []
    for line in answer:
        if joined and re.fullmatch("((%s):)+" % "|".join(QUESTIONS), joined[-1]):
            joined[-1] += line
        else:
            joined.append(line)
    return joined


def check_topic(launcher, program, help_file, name, lines):
    """Runs the examples of one topic; prints what differs and returns how many do."""
    parts = examples(lines)
    if not parts:
        print("%s: no example" % name)
        return 1
    before = [] if parts[0][0][0].startswith("readplayers") else ["readplayers engines.txt"]
    output = run(launcher, program, help_file, script(parts, before))
    # The last line that a shell command prints is always shown twice, so each mark is, too.
    pieces = re.split(r"%s\d+\n%s\d+\n" % (MARK, MARK), output)[1:]
    return compare(name, parts, pieces)


def compare(name, parts, pieces):
    """Prints every example whose answer is another one; returns how many."""
    wrong = 0
    for number, (typed, answer) in enumerate(parts):
        piece = pieces[number] if number < len(pieces) else "(the program had ended)"
        if fits(join_questions(answer), plain(piece)):
            continue
        wrong += 1
        print("%s: > %s" % (name, typed[0]))
        print("\n".join("  help: %s" % line for line in answer))
        print("\n".join("  said: %s" % line for line in plain(piece)))
    return wrong


def main():
    option = "--launcher="
    words = sys.argv[1:]
    launcher = words.pop(0)[len(option):].split() if words[0].startswith(option) else []
    program, help_file, wanted = os.path.abspath(words[0]), words[1], words[2:]
    checked = [(name, lines) for name, lines in topics(help_file) if not wanted or name in wanted]
    wrong = sum(check_topic(launcher, program, help_file, name, lines) for name, lines in checked)
    print("%d topics, %d differences" % (len(checked), wrong))
    return 1 if wrong or not checked else 0


if __name__ == "__main__":
    sys.exit(main())
