#!/usr/bin/env python3
"""Plays small tourneys with the built program and looks at their HTML tables in headless Chromium.

    tables_in_browser.py PROGRAM [FORM...] [--screenshots DIRECTORY]

FORM is one of FORMS below; all of them are looked at when none is named. The results are typed in,
so nothing but the program and the browser runs. Each page is compared with the text table of the same tourney (page_in_browser.py). The names
are those of somebody who would like to run a script in the reader's browser.
"""

import argparse
import pathlib
import shutil
import subprocess
import sys
import tempfile

import page_in_browser

NAMES = ("<script>document.title='x'</script>", "Rook & Sons", '"Quoted" <b>bold', "O'Neill &amp;",
         "Plain", "</table></td><img src=x onerror=alert(1)>")
TITLE = "Cup of </title><script>document.title='x'</script> & Sons"
TEXTS = (f"set name {TITLE}",
         'set computer "><script>document.title=\'x\'</script>',
         "set hashtables 64 MB <i>each",
         "set tablebases </p><img src=x onerror=\"document.title='x'\">",
         "set timecontrol 40 1:30 2")

# What is typed for each form: the settings, then the switches of Table and TextTable.
FORMS = {
    "swiss": (("set type swiss", "set rounds 3"), ""),
    "swiss-pictures": (("set type swiss", "set rounds 3", "set picsdir pics/"), ""),
    "swiss-sub-rounds": (("set type swiss", "set rounds 3", "set subrounds 2"), "-games"),
    "swiss-long": (("set type swiss", "set rounds 3", "set subrounds 2", "set picsdir pics/"),
                   "-long -bynumber"),
    "round-robin": (("set type round", "set subrounds 2"), ""),
    "round-robin-pictures": (("set type round", "set picsdir pics/"), "-games"),
    "round-robin-long": (("set type round", "set subrounds 2"), "-long"),
}

# The next round of a Swiss tourney waits until every game of this one has a result.
RESULTS = ("1-0", "1/2", "0-1", "1/2", "1-0", "1-0")
LAST_RESULTS = ("un", "1/2", "0-1", "1-0", "1/2", "1-0")


def create_players():
    """The lines that create one player each, its Name and ProgramExe given."""
    lines = []
    for number, name in enumerate(NAMES, 1):
        lines += ["createplayer", name, "", "", "", "", f"engine{number}", ""]
    return lines


def play(first_game, games, results):
    lines = []
    for i in range(games):
        number = first_game + i
        lines += [f"game {number} sta 2", f"game {number} res {results[i % len(results)]}"]
    return lines


def script(settings, switches):
    """A tourney of which most games have been played, one of them without a result."""
    lines = [*create_players(), *TEXTS, *settings, "addall"]
    if "set type swiss" in settings:
        games = 6 if "set subrounds 2" in settings else 3
        lines += ["pair", *play(1, games, RESULTS), "pair", *play(games + 1, games, LAST_RESULTS)]
    else:
        lines += ["createrr", *play(1, 6, RESULTS), *play(7, 6, LAST_RESULTS)]
    return lines + [f"table table.htm {switches}", f"texttable table.txt {switches}"]


def write_tables(program, form, directory):
    """Lets the program write table.htm and table.txt into the directory, the pictures beside."""
    settings, switches = FORMS[form]
    shutil.copytree(program.parent / "pics", directory / "pics")
    lines = script(settings, switches)
    (directory / "script.txt").write_text("\n".join(lines) + "\n", encoding="ascii")
    result = subprocess.run([program, "script.txt"], cwd=directory, stdin=subprocess.DEVNULL,
                            stdout=subprocess.PIPE, timeout=60, check=False)
    if not (directory / "table.htm").exists() or not (directory / "table.txt").exists():
        sys.exit("The program has written no tables:\n" + result.stdout.decode("ascii"))


def parse_arguments():
    parser = argparse.ArgumentParser(description="Looks at tourneys' HTML tables in Chromium.")
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("forms", metavar="form", nargs="*", help=", ".join(FORMS))
    parser.add_argument("--screenshots", type=pathlib.Path,
                        help="also write a PNG of each form for somebody to look at")
    arguments = parser.parse_args()
    unknown = [form for form in arguments.forms if form not in FORMS]
    if unknown:
        parser.error(f"no such form: {', '.join(unknown)}")
    return arguments


def main():
    arguments = parse_arguments()
    differences = 0
    with tempfile.TemporaryDirectory() as name:
        directories = {form: pathlib.Path(name) / form for form in arguments.forms or FORMS}
        for form, directory in directories.items():
            write_tables(arguments.program.resolve(), form, directory)
        pages = page_in_browser.read_pages([path / "table.htm" for path in directories.values()])
        for (form, directory), page in zip(directories.items(), pages, strict=True):
            has_pictures = "set picsdir pics/" in FORMS[form][0]
            found = page_in_browser.differences(page, directory / "table.txt", TITLE, has_pictures)
            print(f"{form}: {found} differences")
            differences += found
            if arguments.screenshots:
                arguments.screenshots.mkdir(parents=True, exist_ok=True)
                page_in_browser.take_screenshot(directory / "table.htm",
                                                arguments.screenshots / f"{form}.png")
    return 1 if differences else 0


if __name__ == "__main__":
    sys.exit(main())
