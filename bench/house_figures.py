#!/usr/bin/env python3
"""Tells how large the house is, and what in it is there twice.

    house_figures.py ROOT

prints a table for docs/measurements.md: of each room below ROOT/src the files, their lines, the lines of the longest file, and of
its functions how many there are and how long they are (body and signature; median, 95th of 100, longest); then the stretches
of six or more lines that stand in two files (comments and blank lines left out), and the circles of files, units and folders.
It judges nothing; include_check.py does.
"""

import pathlib
import re
import statistics
import sys

ARCHITECTURE = pathlib.Path(__file__).resolve().parent.parent / "tests" / "architecture"
sys.path.insert(0, str(ARCHITECTURE))
import include_check  # noqa: E402  (it lies with the tests)

STRETCH = 6
NOT_CPP = ("page_script.cpp", "page_style.cpp")  # one text each, in another language
NO_FUNCTION = re.compile(r"\s*(?:namespace|class|struct|enum|union|extern|if|for|while|switch|do|else|return|try|template|[})])\b|.*\[[&=\]]")
LITERAL = re.compile(r'"(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])*\'')
OPENING = re.compile(r"[)}\w]\s*\{$")


def functions_of(lines):
    """Where the functions that have a block of their own begin and end, from the signature to the last brace."""
    behind = 0
    for number, line in enumerate(lines):
        if number < behind or not OPENING.search(line):
            continue
        depth, end = 0, number
        while end < len(lines):
            bare = LITERAL.sub("", lines[end])
            depth += bare.count("{") - bare.count("}")
            if depth <= 0:
                break
            end += 1
        indent = re.match(" *", lines[min(end, len(lines) - 1)]).group(0)
        start = number
        while start > 0 and re.match(" *", lines[start]).group(0) != indent:
            start -= 1
        signature = " ".join(lines[start:number + 1])
        if "(" in signature and not NO_FUNCTION.match(lines[start]) and not NO_FUNCTION.match(signature):
            yield start, end
            behind = end


def without_blanks(lines):
    return [(number, line.strip()) for number, line in enumerate(lines, 1)
            if len(line.strip()) > 3 and not line.lstrip().startswith("#")]


def repeated(sources):
    """The stretches that stand in two files: (file, file), each pair of neighbouring lines counted once."""
    places = {}
    for name, lines in sources.items():
        kept = without_blanks(lines)
        for index in range(len(kept) - STRETCH + 1):
            text = "\n".join(line for _, line in kept[index:index + STRETCH])
            places.setdefault(text, []).append((name, index))
    found = set()
    for holders in places.values():
        for name, index in holders:
            for other, other_index in holders:
                if name < other:
                    found.add((name, other, index - other_index))
    return sorted(found)


def percentile(values, share):
    return sorted(values)[min(len(values) - 1, int(share * len(values)))]


def row(name, sources):
    lengths = sorted(end - start + 1 for lines in sources.values() for start, end in functions_of(lines))
    sizes = [len(lines) - 1 for lines in sources.values()]
    return (f"| {name} | {len(sizes)} | {sum(sizes)} | {max(sizes)} | {len(lengths)} | {statistics.median(lengths):.0f} | "
            f"{percentile(lengths, 0.95)} | {lengths[-1]} |")


def main(arguments):
    if len(arguments) != 2:
        print(__doc__)
        return 2
    root = pathlib.Path(arguments[1])
    sources = {path.relative_to(root / "src").as_posix(): include_check.read(path)
               for path in include_check.sources(root, "src") if path.name not in NOT_CPP}
    print("| room | files | lines | longest file | functions | median | 95 of 100 | longest |")
    print("|---|---:|---:|---:|---:|---:|---:|---:|")
    for room in include_check.ROOMS:
        of_room = {name: lines for name, lines in sources.items() if include_check.room_of(name) == room}
        if of_room:
            print(row(room, of_room))
    print(row("all", sources))
    twice = repeated(sources)
    print(f"\nstretches of {STRETCH} lines or more in two files: {len(twice)}")
    for name, other, _ in twice:
        print(f"  {name} and {other}")
    includes = include_check.includes_of(root)
    for what, part_of in (("files", lambda name: name), ("units", include_check.unit_of),
                          ("folders", include_check.folder_of)):
        found = list(include_check.circles(include_check.edges_between(includes, part_of), what))
        print(f"circles of {what}: {len(found)}")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
