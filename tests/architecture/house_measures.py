#!/usr/bin/env python3
"""Measures the house: how large its rooms, files and functions are, and what in it is needless.

    house_measures.py ROOT [--table] [--list] [--dead BUILD] [--before OTHER]

looks at every .h and .cpp file below ROOT/src, which may be any checkout, and prints for each room and for the whole:

- files, lines, and the lines of a file: median, 95 of 100 below, largest;
- functions, and the lines of a function from its first one to its closing brace, likewise;
- duplicates: lines that stand, in runs of six or more, in a second place too. Blank lines, comments, includes and lone braces
  are passed over.

Then the circles of files, of units and of folders (include_check.py tells what they are). With --dead, the program is built in
the directory BUILD, without optimisation and every function in a section of its own, and the functions are counted that the
linker throws away because nothing in the program calls them. --table prints a table for docs/measurements.md, --list also
prints which files, functions, duplicates and functions nobody calls are meant. With --before, another checkout is measured
too, and the table tells both: "before → now".
"""

import argparse
import collections
import pathlib
import re
import statistics
import subprocess
import sys

import include_check

RUN = 6
PASSED_OVER = re.compile(r"^[\s{}();,]*$|^\s*#\s*include\b|^\s*using\b|^\s*namespace\b|^\s*(?:public|private|protected):")
THROWN_AWAY = re.compile(r"removing unused section '\.text[^']*?\.(_Z\w+)[^']*' in file '([^']*)'")
ROOM_OF_ARCHIVE = re.compile(r"libtarvendo_(\w+)\.a")


class Function:
    def __init__(self, room, path, first, last, head):
        self.room, self.path, self.first, self.last, self.head = room, path, first, last, head

    @property
    def lines(self):
        return self.last - self.first + 1

    def __str__(self):
        return f"{self.path}:{self.first}: {self.lines} lines: {self.head}"


def without_literals(lines):
    """The text with preprocessor lines blanked and nothing left of what stands in quotes: one line stays one line."""
    kept, goes_on = [], False
    for line in lines:
        is_directive = goes_on or line.lstrip().startswith("#")
        goes_on = is_directive and line.endswith("\\")
        kept.append("" if is_directive else line)
    text = "\n".join(kept)
    text = re.sub(r'R"(\w*)\((.*?)\)\1"', lambda match: '""' + "\n" * match.group(2).count("\n"), text, flags=re.S)
    return re.sub(r'"(?:\\.|[^"\\\n])*"|(?<![0-9a-fA-F])\'(?:\\.|[^\'\\\n])+\'', '""', text)


def kind_of(head):
    """What a brace behind `head` opens, at a place where declarations stand."""
    words = re.sub(r"\btemplate\s*<(?:[^<>]|<[^<>]*>)*>", " ", head)
    words = re.sub(r"\b(?:public|private|protected)\s*:(?!:)", " ", words).strip()
    if re.match(r"(?:inline\s+)?namespace\b", words) or words.startswith("extern"):
        return "scope"
    if re.match(r"(?:typedef\s+)?(?:class|struct|union|enum)\b", words) and not words.endswith(")"):
        return "scope"
    has_value = re.search(r"(?<!operator)(?<![=!<>+\-])=(?!=)", re.sub(r"\([^()]*(?:\([^()]*\)[^()]*)*\)", "()", words))
    if "(" not in words or (has_value and "operator" not in words):
        return "value"
    # A member that is initialised in braces: the function's own brace is still to come.
    if re.search(r"\)[^()]*:(?!:)", words) and re.search(r"[\w>]$", words):
        return "value"
    return "function"


def functions_in(room, path, lines):
    """The functions of a source, those inside of other functions left out."""
    found, scopes, head, begin = [], [], "", 0
    number = 1
    for c in without_literals(lines):
        if c == "\n":
            number += 1
        is_inside = any(kind in ("function", "value") for kind, _, _ in scopes)
        if c == "{":
            kind = "block" if is_inside else kind_of(head)
            scopes.append((kind, begin, head))
            if kind == "scope":
                head = ""
        elif c == "}" and scopes:
            kind, first, its_head = scopes.pop()
            if kind == "function":
                found.append(Function(room, path, first, number, " ".join(its_head.split())[:90]))
            if kind in ("function", "scope"):
                head = ""
            elif kind == "value":
                head = its_head + "()"
        elif not is_inside:
            if c == ";" and head.count("(") == head.count(")"):
                head = ""
                continue
            if not head.strip():
                begin = number
                head = ""
            head += c
            if re.fullmatch(r"\s*(?:public|private|protected)\s*:", head):
                head = ""
    return found


class House:
    """All that is measured of the sources alone."""

    def __init__(self, root):
        self.root = root
        self.files = {}
        self.functions = []
        self.places = collections.defaultdict(list)
        for path in include_check.sources(root, "src"):
            name = path.relative_to(root / "src").as_posix()
            lines = include_check.read(path)
            self.files[name] = path.read_text(encoding="utf-8", errors="replace").count("\n")
            self.functions += functions_in(include_check.room_of(name), name, lines)
            self.note_runs(name, lines)
        self.repeated = self.find_repeated()

    def note_runs(self, name, lines):
        told = [(number, " ".join(line.split())) for number, line in enumerate(lines, 1) if not PASSED_OVER.match(line)]
        for first in range(len(told) - RUN + 1):
            run = told[first:first + RUN]
            self.places[tuple(text for _, text in run)].append((name, [number for number, _ in run]))

    def find_repeated(self):
        """The lines that stand in a second place too: (file, line)."""
        repeated = set()
        for places in self.places.values():
            if len(places) > 1:
                repeated.update((name, number) for name, numbers in places for number in numbers)
        return repeated

    def rooms(self):
        there = {include_check.room_of(name) for name in self.files}
        return [room for room in include_check.ROOMS if room in there] + sorted(there - set(include_check.ROOMS))

    def circles(self):
        includes = include_check.includes_of(self.root)
        kinds = {"files": lambda name: name, "units": include_check.unit_of, "folders": include_check.folder_of}
        return {what: list(include_check.circles(include_check.edges_between(includes, part_of), what))
                for what, part_of in kinds.items()}


def spread(numbers):
    """Median, 95 of 100 below, largest."""
    if not numbers:
        return "none"
    ordered = sorted(numbers)
    p95 = ordered[min(len(ordered) - 1, int(0.95 * len(ordered)))]
    return f"{statistics.median_low(ordered)}, {p95}, {ordered[-1]}"


def rows_of(house, dead):
    """For each room, and for the whole: what is told of it."""
    for room in house.rooms() + ["all"]:
        def is_meant(name):
            return room in ("all", include_check.room_of(name))

        files = [lines for name, lines in house.files.items() if is_meant(name)]
        functions = [function.lines for function in house.functions if is_meant(function.path)]
        repeated = sum(1 for name, _ in house.repeated if is_meant(name))
        row = [room, str(len(files)), str(sum(files)), spread(files), str(len(functions)), spread(functions), str(repeated)]
        if dead is not None:
            row.append(str(sum(1 for its_room, _ in dead if room in ("all", its_room))))
        yield row


def run(*words):
    return subprocess.run(words, check=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True).stdout


def functions_nobody_calls(root, build):
    """Builds the program and returns (room, name) of each function that the linker threw away, once."""
    run("cmake", "-S", str(root), "-B", str(build), "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Plain", "-DBUILD_TESTING=OFF",
        "-DTARVENDO_PRECOMPILED_HEADERS=ON", "-DTARVENDO_UNITY=ON", "-DCMAKE_CXX_COMPILER_LAUNCHER=ccache",
        "-DCMAKE_CXX_FLAGS=-O0 -ffunction-sections -fdata-sections",
        "-DCMAKE_EXE_LINKER_FLAGS=-Wl,--gc-sections -Wl,--print-gc-sections")
    program = build / "tarvendo"
    program.unlink(missing_ok=True)
    told = run("cmake", "--build", str(build), "--target", "tarvendo", "-j", "2")
    if not program.is_file():
        raise SystemExit("the program was not built:\n" + told)
    thrown = {}
    for symbol, file in THROWN_AWAY.findall(told):
        room = ROOM_OF_ARCHIVE.search(file)
        if room:
            thrown[symbol] = room.group(1)
    symbols = sorted(thrown)
    names = subprocess.run(["c++filt"], input="\n".join(symbols), check=True, stdout=subprocess.PIPE, text=True).stdout
    alive = {line.split(" ")[0] for line in run("nm", "--defined-only", "--format=posix", str(program)).splitlines()}
    dead = {(thrown[symbol], name) for symbol, name in zip(symbols, names.splitlines())
            if is_ours(name) and symbol not in alive}
    return sorted(dead)


def is_ours(name):
    """Of the program's own, and written by somebody: no thunk and no lambda's surroundings, nothing that only came of a type."""
    if not re.match(r"(?:[\w:<>,*& ]+ )?tarvendo::", name) or "std::" in name.split("(")[0]:
        return False
    last = re.split(r"::", re.sub(r"\(.*", "", name.replace("(anonymous namespace)::", "")))
    is_made_by_compiler = last[-1].startswith(("~", "operator=")) or (len(last) > 1 and last[-1] == last[-2])
    return not is_made_by_compiler and "{lambda" not in name


def print_table(rows, with_dead):
    heads = ["room", "files", "lines", "lines of a file: median, 95 of 100 below, largest", "functions",
             "lines of a function: likewise", "repeated lines"] + (["called by nobody"] if with_dead else [])
    print("| " + " | ".join(heads) + " |")
    print("|---|" + "---:|" * (len(heads) - 1))
    for row in rows:
        print("| " + " | ".join(row) + " |")


def both(before, now):
    """The rows of two houses as one; a room that is new has no figures of before."""
    earlier = {row[0]: row for row in before}
    for row in now:
        old = earlier.get(row[0], row)
        yield [is_now if was == is_now else f"{was} → {is_now}" for was, is_now in zip(old, row)]


def circles_in_words(house):
    return ", ".join(f"{len(found)} of {what}" for what, found in house.circles().items())


def print_plainly(rows):
    for row in rows:
        print(f"{row[0]:10} {row[1]:>4} files {row[2]:>6} lines ({row[3]})  {row[4]:>5} functions ({row[5]})  "
              f"{row[6]:>4} repeated lines" + (f"  {row[7]:>3} called by nobody" if len(row) > 7 else ""))


def print_list(house, dead):
    for function in sorted(house.functions, key=lambda one: -one.lines)[:20]:
        print(function)
    for name, lines in sorted(house.files.items(), key=lambda entry: -entry[1])[:10]:
        print(f"{name}: {lines} lines")
    for name, number in sorted(house.repeated):
        print(f"{name}:{number}: stands in a second place too")
    for room, name in dead or []:
        print(f"{room}: nobody calls {name}")


def main(arguments):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("root", type=pathlib.Path)
    parser.add_argument("--table", action="store_true")
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--dead", type=pathlib.Path, metavar="BUILD")
    parser.add_argument("--before", type=pathlib.Path, metavar="OTHER")
    options = parser.parse_args(arguments)
    house = House(options.root)
    if not house.files:
        print(f"{options.root}: no sources below src")
        return 2
    dead = functions_nobody_calls(options.root.resolve(), options.dead.resolve()) if options.dead else None
    rows = list(rows_of(house, dead))
    if options.before:
        other = House(options.before)
        build = options.dead.resolve() / "before" if options.dead else None
        other_dead = functions_nobody_calls(options.before.resolve(), build) if build else None
        print_table(both(rows_of(other, other_dead), rows), dead is not None)
        print("Circles before: " + circles_in_words(other) + ".")
    elif options.table:
        print_table(rows, dead is not None)
    else:
        print_plainly(rows)
    print("Circles: " + circles_in_words(house) + ".")
    for found in house.circles().values():
        for breach in found:
            print(breach)
    if options.list:
        print_list(house, dead)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
