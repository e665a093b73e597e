#!/usr/bin/env python3
"""Runs transcripts: the built program against what it is expected to print and to leave behind.

A transcript is a folder (README.md beside this file tells what it may hold). Each is run in a directory of its
own, which is empty but for the program and the files that the folder gives it. With --accept the expectations
are written anew from what the program does; the difference is then reviewed like code.
"""

import argparse
import difflib
import fnmatch
import os
import pathlib
import platform
import re
import shutil
import signal
import subprocess
import sys
import tempfile

SKIPPED = 77
TOKEN = "{DIR}"
MOST_RUNS = 9
TIMEOUT_SECONDS = 100
TIMEOUT_SECONDS_WITH_LAUNCHER = 280

# What a sanitizer says when it has found something, whatever else the transcript expects.
SANITIZER_WORDS = (b"AddressSanitizer", b"ThreadSanitizer", b"LeakSanitizer", b"runtime error:")


def refuse_threads():
    """Run in the child: a thread gets as much stack as this limit says, and there is not so much."""
    import resource  # only some hosts have it

    resource.setrlimit(resource.RLIMIT_STACK, (200 << 40, resource.RLIM_INFINITY))


def hear_hangups():
    """Run in the child: under nohup the tests ignore SIGHUP, and all that they start."""
    signal.signal(signal.SIGHUP, signal.SIG_DFL)


class Setup:
    """The lines of a folder's "setup": a word and its value."""

    def __init__(self, folder):
        self.quick = False  # the program whose clock does not wait
        self.winboard = False  # the stub lies beside the program
        self.no_threads = False  # the host refuses the program any thread but its first
        self.leaks = False  # a machine fault leaves behind what it interrupted
        self.host = ""  # the only host that this transcript is for
        self.directory = "."  # where the program is started, seen from the directory of the run
        self.ignored = []  # patterns of files whose content does not matter
        self.any_order = []  # expectations whose lines come in an order that does not matter
        self.masks = []  # patterns of what time decides, which is not compared
        path = folder / "setup"
        for line in path.read_text().splitlines() if path.exists() else []:
            word, _, value = line.partition(" ")
            if word in ("quick", "winboard", "leaks", "no_threads"):
                setattr(self, word, True)
            elif word == "host":
                self.host = value
            elif word == "start_in":
                self.directory = value
            elif word == "ignore":
                self.ignored.append(value)
            elif word == "any_order":
                self.any_order.append(value)
            elif word == "mask":
                self.masks.append(value.encode())
            elif word and not word.startswith("#"):
                raise SystemExit(f"{path}: unknown word '{word}'")


def fold(data, scratch):
    """The bytes with one kind of line ends, and the directory of this run as a token."""
    data = data.replace(b"\r\n", b"\n")
    for name in scratch_names(scratch):
        data = re.sub(re.escape(os.fsencode(name)) + rb"[/\\]", TOKEN.encode() + b"/", data)
        data = data.replace(os.fsencode(name), TOKEN.encode())
    return data


def scratch_names(scratch):
    """The directory of this run as the hosts spell it."""
    posix = str(scratch)
    windows = "Z:" + posix.replace("/", "\\")
    return [windows, windows.replace("\\", "/"), posix.replace("/", "\\"), posix]


def shown(data):
    """Text for a human: bytes that are no text as \\x escapes."""
    text = data.decode("ascii", "backslashreplace")
    return "".join(c if c.isprintable() or c == "\n" else f"\\x{ord(c):02x}" for c in text)


def everything_in(file):
    file.seek(0)
    return file.read()


def difference(what, expected, actual):
    """A unified diff of two byte texts; empty when they are the same."""
    if expected == actual:
        return ""
    lines = difflib.unified_diff(
        shown(expected).splitlines(keepends=True),
        shown(actual).splitlines(keepends=True),
        f"{what} (expected)",
        f"{what} (actual)",
    )
    text = ""
    for line in lines:
        text += line if line.endswith("\n") else line + "\n\\ no line end\n"
    return text


class Transcript:
    def __init__(self, folder, options):
        self.folder = folder
        self.options = options
        self.setup = Setup(folder)
        self.scratch = options.scratch / folder.name
        self.stderr = b""

    def is_for_this_host(self):
        return self.setup.host in ("", self.options.host)

    def prepare(self):
        shutil.rmtree(self.scratch, ignore_errors=True)
        self.scratch.mkdir(parents=True)
        program = self.options.quick if self.setup.quick else self.options.program
        suffix = program.suffix
        self.program = self.scratch / ("tarvendo" + suffix)
        shutil.copy(program, self.program)
        if self.setup.winboard:
            shutil.copy(self.options.stub, self.scratch / "winboard.exe")
        files = self.folder / "files"
        if files.exists():
            shutil.copytree(files, self.scratch, dirs_exist_ok=True, symlinks=True)
        for path in self.scratch.rglob("*"):
            if path.is_file() and self.is_given(path):
                self.write_input(path, path.read_bytes())
        self.before = self.files_there()

    def is_given(self, path):
        return path != self.program and path.name != "winboard.exe"

    def write_input(self, path, data):
        """Input may name the directory of the run; it is not known before."""
        if TOKEN.encode() in data:
            path.write_bytes(data.replace(TOKEN.encode(), os.fsencode(self.native_scratch())))
        elif not path.exists():
            path.write_bytes(data)

    def native_scratch(self):
        return scratch_names(self.scratch)[0 if self.options.host == "windows" else -1]

    def runs(self):
        """The inputs of each run: (script, keyboard, args), each a path that may not exist."""
        for number in range(1, MOST_RUNS + 1):
            mark = "" if number == 1 else f".{number}"
            paths = [
                self.folder / f"script{mark}.txt",
                self.folder / f"keyboard{mark}.txt",
                self.folder / f"args{mark}",
            ]
            if any(path.exists() for path in paths):
                yield paths

    def run_once(self, script, keyboard, args):
        words = []
        if script.exists():
            words = [script.name]
            self.write_input(self.scratch / script.name, script.read_bytes())
        if args.exists():
            words = args.read_text().splitlines()
        typed = keyboard.read_bytes() if keyboard.exists() else b""
        typed = typed.replace(TOKEN.encode(), os.fsencode(self.native_scratch()))
        command = self.options.launcher.split() + [str(self.program)] + words
        # Not through pipes: a game that goes on after the program's end would hold them open.
        with tempfile.TemporaryFile() as typing, tempfile.TemporaryFile() as out:
            with tempfile.TemporaryFile() as err:
                typing.write(typed)
                typing.seek(0)
                note = self.await_end(command, typing, out, err)
                self.stderr += everything_in(err)
            return everything_in(out) + note

    def await_end(self, command, typing, out, err):
        """Runs a command to its end; returns what is to be said of it."""
        process = subprocess.Popen(
            command,
            cwd=self.scratch / self.setup.directory,
            env=self.environment(),
            stdin=typing,
            stdout=out,
            stderr=err,
            start_new_session=True,
            preexec_fn=self.prepare_child if os.name == "posix" else None,
        )
        try:
            process.wait(TIMEOUT_SECONDS_WITH_LAUNCHER if self.options.launcher else TIMEOUT_SECONDS)
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            process.wait()
            return b"\n*** the program did not end ***\n"
        return self.exit_note(process.returncode)

    def prepare_child(self):
        hear_hangups()
        if self.setup.no_threads:
            refuse_threads()

    @staticmethod
    def exit_note(code):
        return b"" if code == 1 else f"\n*** exit code {code} ***\n".encode()

    def environment(self):
        kept = ("PATH", "WINEPREFIX", "WINEDEBUG", "WINEARCH", "LD_LIBRARY_PATH", "SYSTEMROOT")
        environment = {name: os.environ[name] for name in kept if name in os.environ}
        environment.update(HOME=str(self.scratch), LC_ALL="C", TZ="UTC0")
        # A sanitizer's own exit code, so that it is not taken for the program's.
        for name in ("ASAN_OPTIONS", "TSAN_OPTIONS", "UBSAN_OPTIONS"):
            environment[name] = os.environ.get(name, "") + ":exitcode=66"
        environment["ASAN_OPTIONS"] += ":handle_abort=0:allow_user_segv_handler=1"
        if self.setup.leaks:
            environment["ASAN_OPTIONS"] += ":detect_leaks=0"
        return environment

    def files_there(self):
        """What lies in the scratch directory, but for programs, scripts and the log: name to bytes."""
        found = {}
        for path in sorted(self.scratch.rglob("*")):
            name = path.relative_to(self.scratch).as_posix()
            if path.is_dir() and not path.is_symlink():
                if not any(path.iterdir()):
                    found[name + "/"] = b""
            elif self.is_given(path) and not self.is_passed_over(name):
                found[name] = fold(path.read_bytes(), self.scratch)
        return found

    def is_passed_over(self, name):
        if re.fullmatch(r"(.*/)?Tarvendo\.log|script(\.\d)?\.txt", name):
            return True
        return any(fnmatch.fnmatch(name, pattern) for pattern in self.setup.ignored)

    def run(self):
        """Everything that can be compared: name of the expectation to bytes."""
        self.prepare()
        console = b""
        for number, paths in enumerate(self.runs(), 1):
            console += b"" if number == 1 else f"=== run {number} ===\n".encode()
            console += self.run_once(*paths)
        seen = {"expected.txt": fold(console, self.scratch)}
        if (self.folder / "expected.log").exists():
            log = self.scratch / self.setup.directory / "Tarvendo.log"
            seen["expected.log"] = fold(log.read_bytes(), self.scratch) if log.exists() else b""
        if (self.folder / "expected_stderr.txt").exists():
            seen["expected_stderr.txt"] = fold(self.stderr, self.scratch)
        after = self.files_there()
        has_expected = (self.folder / "expected_files").exists() and not self.options.accept
        if after != self.before or has_expected:
            for name, data in after.items():
                seen["expected_files/" + name] = data
        for pattern in self.setup.masks:
            seen = {name: re.sub(pattern, b"{MASKED}", data) for name, data in seen.items()}
        for name in self.setup.any_order:
            if name in seen:
                seen[name] = b"".join(sorted(seen[name].splitlines(keepends=True)))
        return seen

    def expectations(self):
        expected = {}
        for name in ("expected.txt", "expected.log", "expected_stderr.txt"):
            path = self.folder / name
            if path.exists():
                expected[name] = path.read_bytes()
        files = self.folder / "expected_files"
        for path in sorted(files.rglob("*")) if files.exists() else []:
            name = path.relative_to(self.folder).as_posix()
            # A directory that is to be empty holds a mark, for git keeps no empty ones.
            if path.name == "empty_directory":
                expected[name[: -len("empty_directory")]] = b""
            elif path.is_file():
                expected[name] = path.read_bytes()
        return {name: data.replace(b"\r\n", b"\n") for name, data in expected.items()}

    def accept(self, seen):
        shutil.rmtree(self.folder / "expected_files", ignore_errors=True)
        for name, data in seen.items():
            if name.endswith("/"):
                name += "empty_directory"
            path = self.folder / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(data)

    def complaints(self):
        seen = self.run()
        text = ""
        if any(word in self.stderr for word in SANITIZER_WORDS):
            text += "a sanitizer complains:\n" + shown(self.stderr)
        if self.options.accept:
            self.accept(seen)
            return text
        expected = self.expectations()
        for name in sorted(set(expected) | set(seen)):
            if name not in expected:
                text += f"{name} was not expected; it holds\n{shown(seen[name])}\n"
            elif name not in seen:
                text += f"{name} was expected and is not there\n"
            else:
                text += difference(f"{self.folder.name}/{name}", expected[name], seen[name])
        if text and self.stderr:
            text += "standard error:\n" + shown(fold(self.stderr, self.scratch))
        return text


def read_options(words):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--program", type=pathlib.Path, required=True, help="the program")
    parser.add_argument("--quick", type=pathlib.Path, help="the program with the quick clock")
    parser.add_argument("--stub", type=pathlib.Path, help="the stand-in for WinBoard")
    parser.add_argument("--scratch", type=pathlib.Path, required=True, help="where to run them")
    parser.add_argument("--launcher", default="", help="what starts the programs (wine)")
    parser.add_argument("--host", choices=("linux", "windows"), help="the host of the programs")
    parser.add_argument("--accept", action="store_true", help="write the expectations anew")
    parser.add_argument("folders", type=pathlib.Path, nargs="+")
    options = parser.parse_args(words)
    options.scratch = options.scratch.resolve()
    options.program = options.program.resolve()
    if options.host is None:
        is_windows = options.program.suffix == ".exe" or platform.system() == "Windows"
        options.host = "windows" if is_windows else "linux"
    return options


def main(words):
    options = read_options(words)
    failed = 0
    skipped = 0
    for folder in options.folders:
        transcript = Transcript(folder.resolve(), options)
        if not transcript.is_for_this_host():
            print(f"{folder.name}: only for {transcript.setup.host}")
            skipped += 1
            continue
        complaints = transcript.complaints()
        if complaints:
            failed += 1
            print(f"{folder.name}: differs\n{complaints}")
        elif len(options.folders) > 1:
            print(f"{folder.name}: {'accepted' if options.accept else 'as expected'}")
    if failed:
        return 1
    return SKIPPED if skipped == len(options.folders) else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
