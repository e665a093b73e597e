#!/usr/bin/env python3
"""Holds the sources to the plan of the house.

    include_check.py ROOT

looks at every .h and .cpp file below ROOT/src (and, for the rules on hosts, ROOT/tests, ROOT/bench and ROOT/fuzz), prints a
line "file:line: what is wrong" for every breach, and exits with 1 when there is any.

- Includes go only downwards in the list of rooms; own headers are written from src: "tourney/game.h".
- The two hosts' folders are included from nowhere but themselves.
- Headers that are not the standard library's stand only in the two hosts' folders, windows.h only in sources; but for
  those that are named with the one source that may include them.
- Neither files, nor units, nor folders include each other in a circle. A unit is a header and the source of its name, which
  are understood together: "play/claim" is claim.h and claim.cpp.
- No conditional compilation asks for the host outside the platform room and its tests.
- Sources outside the platform room speak of no host, not even in a comment, and do not reach it past that room through the
  parts of the standard library that open files and the like.
- Who names what one of the usual headers declares includes that header, itself or through own headers. Most builds compile
  those headers in advance for everybody (cmake/Speed.cmake) and would not notice; one without that would fail.
- Host types and host headers are named in the two hosts' folders only; of the tests, in those of the platform room and in
  files that are one host's as a whole: "words_posix.cpp", "words_windows.cpp", "base/posix/file_test.cpp".
"""

import pathlib
import re
import sys

ROOMS = ["platform", "base", "play", "players", "tourney", "reports", "publish", "pairing", "runner", "console"]
HOSTS = ["platform/posix", "platform/windows"]

STANDARD = set("""
algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono cinttypes
climits clocale cmath compare complex concepts condition_variable coroutine csetjmp csignal cstdarg cstddef
cstdint cstdio cstdlib cstring ctime cuchar cwchar cwctype deque exception execution filesystem format
forward_list fstream functional future initializer_list iomanip ios iosfwd iostream istream iterator latch
limits list locale map memory memory_resource mutex new numbers numeric optional ostream queue random ranges
ratio regex scoped_allocator semaphore set shared_mutex source_location span sstream stack stdexcept
stop_token streambuf string string_view strstream system_error thread tuple type_traits typeindex typeinfo
unordered_map unordered_set utility valarray variant vector version
""".split())

INCLUDE = re.compile(r'^\s*#\s*include\s*(?:"([^"]*)"|<([^>]*)>|(.*))')
CONDITION = re.compile(r"^\s*#\s*(?:if|ifdef|ifndef|elif)\b(.*)")
HOST_MACRO = re.compile(
    r"\b(?:_?WIN32|_?WIN64|__WIN\w*|_?WINDOWS\w*|_MSC_VER|__MINGW\w*|__CYGWIN__|"
    r"(?:__)?linux(?:__)?|(?:__)?unix(?:__)?|__APPLE__|__MACH__|__FreeBSD__|_POSIX\w*|__has_include)\b")

HOST_NAME = re.compile(r"\b(?:linux|windows|win32|win64|posix|unix|debian|mingw|wine|macos)\b", re.IGNORECASE)
HOST_TYPE = re.compile(
    r"\b(?:HANDLE|HWND|HMODULE|HINSTANCE|BOOL|BYTE|U?LONG|WORD|DWORD|LARGE_INTEGER|LP\w*STR|LPVOID|WINAPI|CALLBACK|"
    r"STARTUPINFO[AW]?|PROCESS_INFORMATION|(?:pid|uid|gid|mode|off|ssize|sigset|socklen|dev|ino)_t|sigaction|"
    r"posix_\w+|struct stat)\b")
TEST_LIBRARIES = ("gtest/", "gmock/", "benchmark/")
ONE_HOSTS_FILE = re.compile(r"/(?:posix|windows)/|_(?:posix|windows)\.cpp$")

# Of other libraries, and who alone may know of them.
OTHER_LIBRARIES = {"nlohmann/json.hpp": ("players/engines_json.cpp", "publish/json_file.cpp")}

# The headers that are compiled in advance, and what of the library shows that one of them is needed.
USUAL = {header: re.compile(rf"\bstd::(?:{names})\b") for header, names in {
    "algorithm": "(?:adjacent_find|(?:all|any|none)_of|binary_search|clamp|copy(?:_if|_n)?|count(?:_if)?|equal(?:_range)?|"
                 "fill(?:_n)?|find(?:_if(?:_not)?|_first_of)?|for_each|generate|is_sorted|lexicographical_compare|"
                 "(?:lower|upper)_bound|max|min|(?:max|min|minmax)_element|merge|mismatch|nth_element|partial_sort|"
                 "(?:stable_)?partition|remove(?:_if)?|replace|reverse|rotate|search|set_difference|(?:stable_)?sort|"
                 r"swap_ranges|transform|unique)(?=\()",
    "array": "array|to_array",
    "chrono": "chrono",
    "condition_variable": "condition_variable",
    "cstdint": r"u?int(?:\d+|max|ptr)_t",
    "functional": "function|less|greater|hash|ref|cref|bind|invoke",
    "map": "(?:multi)?map",
    "memory": "(?:unique|shared|weak)_ptr|make_(?:unique|shared)",
    "mutex": "(?:recursive_|timed_)?mutex|lock_guard|(?:unique|scoped)_lock|call_once|once_flag",
    "optional": "optional|nullopt|make_optional",
    "string": "string|to_string|stoi|getline",
    "string_view": "string_view",
    "thread": "j?thread|this_thread",
    "utility": "pair|make_pair|move|forward|exchange|swap|as_const|index_sequence",
    "vector": "vector",
}.items()}
PAST_THE_PLATFORM = {"filesystem", "fstream", "iostream", "csignal", "ctime"}


class Breach:
    def __init__(self, path, line, text):
        self.path, self.line, self.text = path, line, text

    def __str__(self):
        return f"{self.path}:{self.line}: {self.text}"


class Include:
    """One #include: who includes, where, and what, both written from src."""

    def __init__(self, path, line, target, own):
        self.path, self.line, self.target, self.own = path, line, target, own


def lines_without_comments(text):
    """The lines of a source, with comments blanked and the numbers of the lines kept."""

    def blank(match):
        return match.group(0) if match.group(1) else re.sub(r"[^\n]", " ", match.group(0))

    literal = r'("(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])*\')'
    return re.sub(literal + r"|//[^\n]*|/\*.*?\*/", blank, text, flags=re.S).split("\n")


def sources(root, *folders):
    for folder in folders:
        for path in sorted((root / folder).rglob("*")):
            if path.suffix in (".h", ".cpp") and path.is_file():
                yield path


def read(path):
    return lines_without_comments(path.read_text(encoding="utf-8", errors="replace"))


def includes_of(root):
    found = []
    for path in sources(root, "src"):
        name = path.relative_to(root / "src").as_posix()
        for number, line in enumerate(read(path), 1):
            match = INCLUDE.match(line)
            if match:
                own, other, odd = match.groups()
                found.append(Include(name, number, own or other or (odd or "").strip(), bool(own)))
    return found


def room_of(name):
    return name.split("/")[0]


def folder_of(name):
    return name.rsplit("/", 1)[0]


def unit_of(name):
    return name.rsplit(".", 1)[0]


def host_of(name):
    return next((host for host in HOSTS if name.startswith(host + "/")), None)


def what_is_wrong_with_own(include):
    from_room, to_room = room_of(include.path), room_of(include.target)
    if to_room not in ROOMS or "/" not in include.target:
        return f'"{include.target}" is not written from src, in one of the rooms {" < ".join(ROOMS)}'
    if from_room not in ROOMS:
        return f'"{from_room}" is none of the rooms {" < ".join(ROOMS)}'
    if ROOMS.index(to_room) > ROOMS.index(from_room):
        return f'{from_room} must not include "{include.target}": {to_room} stands above it'
    if host_of(include.target) not in (None, host_of(include.path)):
        return f'only {host_of(include.target)} itself may include "{include.target}"'
    return None


def what_is_wrong_with_other(include):
    if include.target in STANDARD:
        return None
    if include.target in OTHER_LIBRARIES:
        users = OTHER_LIBRARIES[include.target]
        return None if include.path in users else f"<{include.target}> is known to {' and '.join(users)} only"
    if host_of(include.path) is None:
        return f"<{include.target}> is not the standard library's; the host is known to {HOSTS} only"
    if include.target.lower() == "windows.h" and include.path.endswith(".h"):
        return "<windows.h> stands in sources only"
    return None


def wrong_directions(includes):
    for include in includes:
        judge = what_is_wrong_with_own if include.own else what_is_wrong_with_other
        text = judge(include)
        if text:
            yield Breach("src/" + include.path, include.line, text)


def circles(edges, what):
    """The last step of each circle that a walk through `edges` (from: {to: Include}) meets."""
    state = {}

    def walk(start):
        stack = [(start, iter(sorted(edges.get(start, {}))))]
        state[start] = "open"
        while stack:
            node, rest = stack[-1]
            following = next(rest, None)
            if following is None:
                state[node] = "done"
                stack.pop()
            elif state.get(following) == "open":
                names = [entry[0] for entry in stack]
                circle = names[names.index(following):] + [following]
                include = edges[node][following]
                text = f"{what} include each other in a circle: {' -> '.join(circle)}"
                yield Breach("src/" + include.path, include.line, text)
            elif following not in state:
                state[following] = "open"
                stack.append((following, iter(sorted(edges.get(following, {})))))

    for start in sorted(edges):
        if start not in state:
            yield from walk(start)


def edges_between(includes, part_of):
    edges = {}
    for include in includes:
        if not include.own:
            continue
        start, end = part_of(include.path), part_of(include.target)
        if start != end or start == include.path:
            edges.setdefault(start, {}).setdefault(end, include)
    return edges


def lines_of_all(root, is_wanted, reader=read):
    """Every line of the sources whose name is wanted: (name, number, line)."""
    for path in sources(root, "src", "tests", "bench", "fuzz"):
        name = path.relative_to(root).as_posix()
        if is_wanted(name):
            for number, line in enumerate(reader(path), 1):
                yield name, number, line


def is_outside_the_platform_room(name):
    return not name.startswith(("src/platform/", "tests/platform/"))


def is_of_no_host(name):
    """Whether a source is for every host. Public headers of the platform room are."""
    if name.startswith("src/"):
        return host_of(name[len("src/"):]) is None
    return not name.startswith("tests/platform/") and not ONE_HOSTS_FILE.search(name)


def host_conditions(root):
    for name, number, line in lines_of_all(root, is_outside_the_platform_room):
        match = CONDITION.match(line)
        asked = HOST_MACRO.search(match.group(1)) if match else None
        if asked:
            yield Breach(name, number, f"asks for the host ({asked.group(0)}) outside src/platform")


def host_names(root):
    def as_it_stands(path):
        return path.read_text(encoding="utf-8", errors="replace").split("\n")

    def is_wanted(name):
        return name.startswith("src/") and is_outside_the_platform_room(name)

    for name, number, line in lines_of_all(root, is_wanted, as_it_stands):
        match = HOST_NAME.search(line)
        if match and not INCLUDE.match(line):
            yield Breach(name, number, f"speaks of a host ({match.group(0)}) outside src/platform")


def host_types(root):
    for name, number, line in lines_of_all(root, is_of_no_host):
        match = HOST_TYPE.search(line)
        if match:
            yield Breach(name, number, f"names a host's type ({match.group(0)})")


def host_headers_of_tests(root):
    def is_wanted(name):
        return not name.startswith("src/") and is_of_no_host(name)

    for name, number, line in lines_of_all(root, is_wanted):
        match = INCLUDE.match(line)
        other = match.group(2) if match else None
        if other and other not in STANDARD and not other.startswith(TEST_LIBRARIES):
            yield Breach(name, number, f"<{other}> is neither the standard library's nor a test library's")


def ways_past_the_platform_room(includes):
    for include in includes:
        if room_of(include.path) != "platform" and not include.own and include.target in PAST_THE_PLATFORM:
            yield Breach("src/" + include.path, include.line,
                         f"<{include.target}> reaches the host past the platform room")


def headers_within_reach(includes):
    """For each file the other libraries' headers that it includes, itself or through own ones."""
    direct = {}
    for include in includes:
        direct.setdefault(include.path, []).append(include)

    def reach(start):
        seen, waiting, found = {start}, [start], set()
        while waiting:
            for include in direct.get(waiting.pop(), []):
                if not include.own:
                    found.add(include.target)
                elif include.target not in seen:
                    seen.add(include.target)
                    waiting.append(include.target)
        return found

    return {path: reach(path) for path in direct}


def forgotten_headers(root, includes):
    within_reach = headers_within_reach(includes)
    for path in sources(root, "src"):
        name = path.relative_to(root / "src").as_posix()
        missing = [header for header in USUAL if header not in within_reach.get(name, ())]
        for number, line in enumerate(read(path), 1):
            for header in [header for header in missing if USUAL[header].search(line)]:
                missing.remove(header)
                yield Breach("src/" + name, number, f"nothing that is included here leads to <{header}>")


def check(root):
    """All breaches below `root`, in the order of the rules."""
    includes = includes_of(root)
    breaches = list(wrong_directions(includes))
    file_circles = list(circles(edges_between(includes, lambda name: name), "files"))
    # A circle of files is one of their units too; it is named once.
    breaches += file_circles or circles(edges_between(includes, unit_of), "units")
    breaches += circles(edges_between(includes, folder_of), "folders")
    breaches += host_conditions(root)
    breaches += host_names(root)
    breaches += host_types(root)
    breaches += host_headers_of_tests(root)
    breaches += ways_past_the_platform_room(includes)
    breaches += forgotten_headers(root, includes)
    return breaches


def main(arguments):
    if len(arguments) != 2:
        print(__doc__)
        return 2
    root = pathlib.Path(arguments[1])
    if not any(sources(root, "src")):
        print(f"{root}: no sources below src")
        return 2
    breaches = check(root)
    for breach in breaches:
        print(breach)
    return 1 if breaches else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
