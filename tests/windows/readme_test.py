#!/usr/bin/env python3
"""Types the first tourney of the README's section Windows, as it stands there, and looks at what becomes of it. Then
the same for the starter tourney of the Windows package.

usage: readme_test.py --readme README --quick QUICK --stub STUB --scratch DIRECTORY --launcher WINE

The directories of the README lie in DIRECTORY instead of C:\\. WinBoard is the stand-in, with three engines in its
winboard.ini; it changes nothing of where files lie, so what is told of them must be told in full. It knows
WinBoard's options in WinBoard's spelling only, so a wrong letter in one leaves every game without a result. Options that
these lines do not type are compared, in all documents, with its list.
"""

import argparse
import pathlib
import re
import shutil
import subprocess
import sys

SECONDS = 100
ROOT = pathlib.Path(__file__).resolve().parents[2]
STARTER = ROOT / "packaging/first-tourney-windows.txt"
DOCUMENTS = ("README.md", "help/TourneyHelp.txt", "adapters/xboard/README.md", "docs/files.md", "docs/behaviour.md", "docs/guide.md", *(
    f"packaging/{name}" for name in ("first-tourney-windows.txt", "first-tourney-linux.txt", "tarvendo.1")))
KNOWN_OPTIONS = ROOT / "tests/stub_winboard/known_options.cpp"
OPTION = re.compile(r"(?<![\w/\\.<])/([A-Za-z]\w*)(=|(?![\w/\\]))")
ALONE = re.compile(r"(?:^|`)/([A-Za-z]\w*)(?:`|$)", re.MULTILINE)
# What documents name besides: words of winboard.ini alone and longer names of WinBoard's own.
OTHER_OPTIONS = {
    "name", "group", "firstDirectory", "secondDirectory", "firstChessProgramNames", "secondChessProgramNames"}
# What looks like an option and is a form of one, an option of another program, or told to be wrong.
NO_OPTIONS = {"docs/behaviour.md": {"c"}, "adapters/xboard/README.md": {"debugFile", "xname"}}
ENGINES = ("alpha", "beta", "gamma")
FIRST_LINE = "set winboardpath "


def first_tourney(readme):
    """The lines that the README wants typed."""
    section = readme.read_text().split("\n## Windows\n")[1].split("\n## ")[0]
    blocks = re.findall(r"```\w*\n(.*?)```", section, re.DOTALL)
    return next(block for block in blocks if block.startswith(FIRST_LINE))


def winboard_ini():
    """As WinBoard writes it: an engine of each list, and options of no concern."""
    text = "; WinBoard\n"
    for name, letter in (("first", "f"), ("second", "s")):
        lines = "".join(f'{engine} /{letter}d="..\\Engines"\n' for engine in ENGINES)
        text += f"/{name}ChessProgramNames={{\n{lines}}}\n"
    return text + "/size=medium\n"


def play(options, scratch, lines):
    """Plays the tourney that these lines set up; returns what the program says."""
    winboard, tourney = scratch / "WinBoard", scratch / "tourney"
    winboard.mkdir(parents=True)
    if "mkdir " not in lines:
        tourney.mkdir()
    shutil.copy(options.stub, winboard / "winboard.exe")
    (winboard / "winboard.ini").write_text(winboard_ini())
    program = scratch / "tarvendo.exe"
    shutil.copy(options.quick, program)
    here = "Z:" + str(scratch).replace("/", "\\") + "\\"
    (scratch / "script.txt").write_text(lines.replace("C:\\", here) + "texttable\n")
    done = subprocess.run(
        [*options.launcher, str(program), "script.txt", "--wait"],
        cwd=scratch, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, timeout=SECONDS, check=False)
    return done.stdout.decode()


def complaints(scratch, said):
    tourney = scratch / "tourney"
    there = {path.name for path in tourney.iterdir()}
    for name in sorted({"first.ini", "first.pgn", "table.htm", "stub_words.txt"} - there):
        yield f"{name} is not in the tourney's directory"
    if any(path.name not in ("winboard.exe", "winboard.ini") for path in (scratch / "WinBoard").iterdir()):
        yield "something was written into WinBoard's directory"
    for complaint in sorted(set(re.findall("^  .*", (tourney / "stub_words.txt").read_text(), re.MULTILINE))):
        yield f"WinBoard was started in a wrong way:{complaint}"
    if (tourney / "first.pgn").read_text().count("[Event ") != 3:
        yield "first.pgn does not hold three games"
    if "Error" in said or "UNKNOWN" in said:
        yield "a game went wrong"


def misspelled_options():
    """Options in the documents that WinBoard does not know, or not in this spelling."""
    known = set(re.findall(r'"(\w+)"', KNOWN_OPTIONS.read_text())) | OTHER_OPTIONS
    folded = {name.lower() for name in known}
    for document in DOCUMENTS:
        text = (ROOT / document).read_text()
        named = {name for name, value in OPTION.findall(text) if value or name.lower() in folded}
        named.update(ALONE.findall(text))
        for name in sorted(named - known - NO_OPTIONS.get(document, set())):
            yield f"{document} names an option /{name}, which is not one of WinBoard's"


def what_is_wrong(options, scratch, lines):
    shutil.rmtree(scratch, ignore_errors=True)
    said = play(options, scratch, lines)
    found = []
    try:
        found.extend(complaints(scratch, said))
    except OSError as error:
        found.append(str(error))
    return found + ([said] if found else [])


def main(words):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    for name in ("readme", "quick", "stub", "scratch"):
        parser.add_argument("--" + name, type=pathlib.Path, required=True)
    parser.add_argument("--launcher", type=str.split, required=True)
    options = parser.parse_args(words)
    scratch = options.scratch.resolve()
    found = list(misspelled_options())
    for name, lines in (("readme", first_tourney(options.readme)), ("starter", STARTER.read_text())):
        wrong = what_is_wrong(options, scratch / name, lines)
        found.extend([f"{name}:", *wrong] if wrong else [])
    for text in found:
        print(text)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
