#!/usr/bin/env python3
"""Sees to it that every text of the program is shown by a transcript.

    message_check.py ROOT

takes every string literal below ROOT/src (but the platform room, and the report's pages, which are held against their data
in a browser) that reads like a message: three letters in a
row, and a blank or a line feed. Each must be found in what some folder of ROOT/tests/transcripts expects on the
console, in the log, on standard error or in a file; printf's placeholders stand for anything on their line. What
no run can show is listed in EXCEPTIONS with the reason; an exception that is no longer one is wrong, too.
"""

import pathlib
import re
import sys

NEVER_SHOWN = "the text of an exception, which nobody is shown"
EXCEPTIONS = {
    "asked to end between two lines": NEVER_SHOWN,
    "' holds more than a tourney can, so it is not read.\n": "such a file is too large for a transcript; a unit test has it",
    "There are %d players, more are not read.\n": "a million players are too many for a transcript; a unit test has fewer",
    "asked to end while the runner was playing": NEVER_SHOWN,
    "a thread has died while it worked on the tourney": NEVER_SHOWN,
    "the thread holds the tourney already": NEVER_SHOWN,
    "This is not a swiss tourney, so no swiss round can be paired!\n":
        "who pairs a round has asked for the type before; a unit test asks the driver itself",
    "Game %d: its debug file '%s' has not grown for 30 minutes.\n": "half an hour is too long; a unit test does",
    "', so it is written in place:\nshould the machine stop meanwhile, it is lost.\n":
        "the superuser, who runs the tests, may write everywhere; a unit test says it",
    "No file can be made beside '": "likewise",
    "%lld players have more games to play than the %d that a tourney can hold.\n":
        "two thousand players are too many for a transcript; a unit test has them",
    " playing, ": "a minute is too long for a transcript; unit tests show it",
    ", round %d/%d": "likewise",
    "%7d  in other ways\n": "sixteen different ends are too many for a transcript; a unit test has them",
    "Error deleting file:  ": "the superuser, who runs the tests, may delete everything; a unit test says it",
    "The 'emergency.ini' of an earlier time is replaced.\n": "likewise, of a file that cannot be renamed",
    "--cluster is not known on this system.": "it is known on Linux, where the other answers to it are shown",
    "job ": "in the claim of a cluster's game; scripts/test_cluster makes some",
    "Games that were handed to a scheduler: %d,\nthe first is game no. %d. Start the program with '--cluster' to\n"
    "take them over. Stopping runner.\n": "likewise",
    "Stopping runner. What was not begun stays to be played.\n": "likewise",
    " /ncp /td 0 ": "a part of a command line, not printed",
    '/lgf="%s" /lgi=%zu ': "likewise",
    '/lpf="%s" /lpi=%zu ': "likewise",
    "has a name that WinBoard cannot be told.":
        "a name with a double quote is none on every host; a unit test gives one",
    '[white "': "looked for in the files of games, not printed",
    '[black "': "looked for in the files of games, not printed",
}

# Parts of files that are looked at by other means.
# What is told of a cluster's queue and by its jobs is shown by the tests of the game hosts and scripts/test_cluster.
NOT_LOOKED_AT = re.compile("platform/|publish/(?!report_files)|play/(cluster_|job_player|slurm)")

TOKEN = re.compile(r'//[^\n]*|/\*.*?\*/|\'(?:\\.|[^\'\\\n])*\'|"(?:\\.|[^"\\\n])*"', re.S)
INCLUDE = re.compile(r"^\s*#.*$", re.M)
PLACEHOLDER = re.compile(r"(%[-*.\d]*[dsu])")
ESCAPES = {"n": "\n", "t": "\t", '"': '"', "\\": "\\", "'": "'"}


def unescaped(literal):
    return re.sub(r"\\(.)", lambda match: ESCAPES.get(match.group(1), ""), literal)


def literals(source):
    """The string literals of a source, those that stand side by side joined."""
    source = INCLUDE.sub("", source)
    texts = []
    end = None
    for match in TOKEN.finditer(source):
        token = match.group(0)
        if token.startswith("/"):
            continue
        if token.startswith('"'):
            text = unescaped(token[1:-1])
            if end is not None and not source[end:match.start()].strip():
                texts[-1] += text
            else:
                texts.append(text)
            end = match.end()
    return texts


def reads_like_a_message(text):
    return re.search("[A-Za-z]{3}", text) and re.search("[ \n]", text)


def messages(root):
    """(file, text) of everything that reads like a message."""
    for path in sorted((root / "src").rglob("*.cpp")):
        name = path.relative_to(root / "src").as_posix()
        if NOT_LOOKED_AT.match(name):
            continue
        for text in literals(path.read_text(encoding="utf-8")):
            if reads_like_a_message(text):
                yield name, text


def everything_shown(root):
    folder = root / "tests" / "transcripts"
    paths = list(folder.glob("*/expected*")) + list(folder.glob("*/expected_files/**/*"))
    return "\0".join(path.read_bytes().decode("latin-1") for path in paths if path.is_file())


def is_shown(text, shown):
    if "%" not in text:
        return text in shown
    parts = PLACEHOLDER.split(text)
    pattern = "".join(".*?" if PLACEHOLDER.fullmatch(part) else re.escape(part.replace("%%", "%"))
                      for part in parts)
    return re.search(pattern, shown) is not None


def check(root, exceptions):
    """A line for each message that no transcript shows, and for each exception without need."""
    shown = everything_shown(root)
    unneeded = dict(exceptions)
    for name, text in messages(root):
        if is_shown(text, shown):
            continue
        if text not in exceptions:
            yield f"src/{name}: no transcript shows {text!r}"
        unneeded.pop(text, None)
    for text in unneeded:
        yield f"no exception is needed for {text!r}"


def main(arguments):
    if len(arguments) != 2:
        print(__doc__)
        return 2
    root = pathlib.Path(arguments[1])
    if not any(messages(root)):
        print(f"{root}: no messages below src")
        return 2
    complaints = list(check(root, EXCEPTIONS))
    for complaint in complaints:
        print(complaint)
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
