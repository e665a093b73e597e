#!/usr/bin/env python3
"""Installs the packages that scripts/package makes, each the way its user does, and plays the
starter tourney that comes with it.

A stand-in for WinBoard plays the games; everything else is what was packed. The clock is the real
one, in which a game takes a quarter of a minute, so all tourneys are played at the same time.
"""

import argparse
import os
import pathlib
import shutil
import sys
import tarfile
import tempfile
import unittest
import zipfile

from installation import Installation, ordinary_user, report_lines, run
from links import dead_links

HERE = pathlib.Path(__file__).resolve().parent
OPTIONS = argparse.Namespace()

REPORT_OF_FIRST_TOURNEY = """\
  1. Round 2-1   1.Fairy-Max -  2.Phalanx     -READY          1 - 0
  2. Round 3-1   3.GNU Chess -  1.Fairy-Max   -READY          0 - 1
  3. Round 1-1   2.Phalanx   -  3.GNU Chess   -READY          1 / 2
Rank|No  |Name     |1|2|3|Pts |S-B  |
----|----|---------|-|-|-|----|-----|
  1.|  1.|Fairy-Max|X|+|+| 2.0| 1.00|
  2.|  2.|Phalanx  |-|X|=| 0.5| 0.25|
  2.|  3.|GNU Chess|-|=|X| 0.5| 0.25|
""".splitlines()

DOCUMENTS = [f"docs/{path.name}" for path in (pathlib.Path(__file__).parents[2] / "docs").glob("*.md")]
COMMON_FILES = """README.txt TourneyHelp.txt first-tourney.txt
    docs/report.png docs/table.png pics/break.gif pics/full.gif pics/half.gif""".split() + DOCUMENTS
EXAMPLES = [f"examples/{path.name}" for path in (pathlib.Path(__file__).parents[2] / "examples").glob("*.txt")]
FILES_FOR_LINUX = sorted(
    COMMON_FILES + EXAMPLES + ["docs/libedit-licences.txt", "docs/xboard.md", "tarvendo", "tarvendo.bash-completion", "winboard.exe"])
FILES_FOR_WINDOWS = sorted(COMMON_FILES + ["docs/mingw-w64-licences.txt", "tarvendo.exe"])

# What is read with an editor, and where the project has it.
SOURCES_OF_TEXTS = {
    "README.txt": "README.md",
    "TourneyHelp.txt": "help/TourneyHelp.txt",
    "first-tourney.txt": "packaging/first-tourney-windows.txt",
} | {document: document for document in DOCUMENTS}

TOLD_BY_HELP = "Quit: ends the program"

ENGINES_OF_WINBOARD = """\
fmax /name="Fairy-Max"
phalanx /name="Phalanx"
gnuchess /name="GNU Chess"
"""
WINBOARD_INI = (
    f"/firstChessProgramNames={{\n{ENGINES_OF_WINBOARD}}}\n"
    f"/secondChessProgramNames={{\n{ENGINES_OF_WINBOARD}}}\n"
)


def the_package(pattern):
    """The one package whose name fits, and, of an archive, the directory in it."""
    found = list(OPTIONS.packages.glob(pattern))
    if len(found) != 1:
        raise AssertionError(f"{len(found)} packages {pattern} in {OPTIONS.packages}, not one")
    return found[0], found[0].name.removesuffix(".tar.gz").removesuffix(".zip")


def bring_stand_in_for_xboard():
    """Puts it where an ordinary user comes by, before the first game: what runs cannot be written."""
    shutil.copy(OPTIONS.stub, OPTIONS.scratch / "stub_winboard")
    shutil.copy(HERE / "stub_xboard", OPTIONS.scratch / "stub_xboard")


def with_stand_in_for_xboard():
    """The environment in which the script winboard.exe plays with a stand-in for XBoard."""
    return {
        "XBOARD": str(OPTIONS.scratch / "stub_xboard"),
        "STUB": str(OPTIONS.scratch / "stub_winboard"),
        "DISPLAY": ":7",
    }


def install_deb(root):
    """Installs the .deb with dpkg below `root`, with the packages of this machine to depend on."""
    package, _ = the_package("*.deb")
    database = root / "var/lib/dpkg"
    for folder in ("info", "updates", "triggers"):
        (database / folder).mkdir(parents=True)
    shutil.copy("/var/lib/dpkg/status", database / "status")
    dpkg(root, "--install", package)


def dpkg(root, *words):
    path = os.environ["PATH"] + ":/usr/sbin:/sbin"
    run("dpkg", f"--root={root}", "--force-not-root", f"--log={root}/dpkg.log", *words,
        env={**os.environ, "PATH": path})


class AnyPackage:
    """What every package lets its user do. A class for one package says how it is installed."""

    @classmethod
    def setUpClass(cls):
        cls.played = cls.installed.finish_tourney()

    def test_the_starter_tourney_is_played_to_its_end(self):
        self.assertEqual(self.played.count("Starting game no. "), 3, self.played)
        report = self.installed.type(f"load {self.first_ini}", "showgames", "texttable")
        self.assertEqual(report_lines(report), REPORT_OF_FIRST_TOURNEY, self.played)
        self.assertEqual(self.pgn.read_text().count("[Number "), 3)
        self.assertTrue((self.pgn.parent / "table.htm").exists())

    def test_winboard_was_told_everything_that_an_unattended_game_needs(self):
        words = (self.pgn.parent / "stub_words.txt").read_text()
        self.assertEqual(words.count("/sgf="), 3, words)
        self.assertNotIn("\n  ", words)  # the stand-in's complaints

    def test_help_is_found(self):
        self.assertIn(TOLD_BY_HELP, self.installed.type("help quit"))

    def test_the_pictures_are_there(self):
        for name in ("full", "half", "break"):
            self.assertEqual((self.installed.pictures / f"{name}.gif").read_bytes()[:4], b"GIF8")


class LinuxPackage(AnyPackage):
    def test_the_script_for_xboard_is_found_from_anywhere(self):
        told = self.installed.type("XBOARD=no-such-xboard winboard.exe /ncp 2>&1")
        self.assertIn("cannot find the program 'no-such-xboard'", told)

    def test_a_tourney_is_saved_and_loaded_where_the_user_works(self):
        self.assertIn("Tourney saved.", self.installed.type("set name Mine", "save mine.ini"))
        self.assertIn("Name = Mine", self.installed.type("load mine.ini", "get name"))


class DebianPackage(LinuxPackage, unittest.TestCase):
    @classmethod
    def install(cls):
        root = OPTIONS.scratch / "system"
        install_deb(root)
        # The shell looks for the program the way it does for whoever types its name.
        command = ["sh", "-c", 'exec tarvendo "$@"', "sh"]
        environment = {"PATH": f"{root}/usr/bin:{os.environ['PATH']}", **with_stand_in_for_xboard()}
        desk = OPTIONS.scratch / "home of a user"
        pictures = root / "usr/share/tarvendo/pics"
        cls.installed = Installation(command, desk, pictures, environment, ordinary_user())
        cls.first_ini = "first.ini"
        cls.pgn = desk / "default.pgn"
        cls.installed.start_tourney(root / "usr/share/doc/tarvendo/examples/first-tourney.txt")

    def test_a_tourney_in_the_users_directory_is_not_loaded_by_itself(self):
        self.installed.type("set name Mine", "save")
        self.assertTrue((self.installed.desk / "tourney.ini").exists())
        self.assertIn("Name = My Own Winboard Tourney", self.installed.type("get name"))

    def test_the_examples_and_bashs_completion_are_where_they_are_looked_for(self):
        share = OPTIONS.scratch / "system/usr/share"
        for example in EXAMPLES:
            self.assertTrue((share / "doc/tarvendo" / example).is_file(), example)
        self.assertIn("_tarvendo", (share / "bash-completion/completions/tarvendo").read_text())

    def test_lintian_finds_nothing_to_complain_about(self):
        package, _ = the_package("*.deb")
        run("lintian", "--allow-root", "--fail-on", "error,warning", package)

    def test_no_link_of_its_texts_leads_nowhere(self):
        self.assertEqual(dead_links(OPTIONS.scratch / "system/usr/share/doc/tarvendo"), [])

    def test_it_asks_for_what_it_needs(self):
        package, _ = the_package("*.deb")
        depends = run("dpkg-deb", "-f", package, "Depends")
        self.assertIn("libstdc++6", depends)
        self.assertIn("libedit2", depends)
        self.assertEqual(run("dpkg-deb", "-f", package, "Recommends"), "xboard, xvfb\n")

    def test_nothing_is_left_when_it_is_removed(self):
        root = OPTIONS.scratch / "removed"
        install_deb(root)
        self.assertTrue((root / "usr/bin/tarvendo").exists())
        dpkg(root, "--remove", "tarvendo")
        self.assertFalse((root / "usr").exists())


class LinuxArchive(LinuxPackage, unittest.TestCase):
    @classmethod
    def install(cls):
        package, name = the_package("*.tar.gz")
        home = OPTIONS.scratch / "home"
        home.mkdir()
        run("tar", "-xzf", package, "-C", home)
        cls.program = home / name
        desk = home / "first"
        cls.installed = cls.as_started_in(desk, cls.program)
        cls.first_ini = "first.ini"
        cls.pgn = desk / "default.pgn"
        cls.installed.start_tourney(cls.program / "first-tourney.txt")

    @staticmethod
    def as_started_in(desk, program):
        command = [program / "tarvendo"]
        environment = with_stand_in_for_xboard()
        return Installation(command, desk, program / "pics", environment, ordinary_user())

    def test_it_holds_what_it_should(self):
        package, name = the_package("*.tar.gz")
        with tarfile.open(package) as archive:
            files = sorted(member.name for member in archive if not member.isdir())
        self.assertEqual(files, [f"{name}/{file}" for file in FILES_FOR_LINUX])

    def test_no_link_of_its_texts_leads_nowhere(self):
        self.assertEqual(dead_links(self.program), [])

    def test_its_program_needs_nothing_but_the_compilers_libraries(self):
        told = run("objdump", "-p", self.program / "tarvendo")
        needed = {line.split()[-1].split(".so")[0] for line in told.splitlines() if "NEEDED" in line}
        self.assertLessEqual(needed, {"libstdc++", "libgcc_s", "libm", "libc", "ld-linux-x86-64"})

    def test_the_licences_of_what_it_has_in_it_are_there(self):
        licences = (self.program / "docs/libedit-licences.txt").read_text(encoding="utf-8")
        for library in ("libedit", "libbsd", "libmd", "libncurses"):
            self.assertIn(f"== {library} ==", licences)

    def test_a_start_up_tourney_beside_the_program_is_loaded_by_itself(self):
        other = OPTIONS.scratch / "another place"
        shutil.copytree(self.program, other)
        user = self.as_started_in(OPTIONS.scratch / "another desk", other)
        user.type("set name Mine", "save mine.ini")
        shutil.copy(user.desk / "mine.ini", other / "tourney.ini")
        self.assertIn("Name = Mine", user.type("get name"))


class WindowsArchive(AnyPackage, unittest.TestCase):
    """Under Wine, as on a machine with WinBoard in C:\\WinBoard and the program in a directory
    with a blank in its name."""

    @classmethod
    def install(cls):
        drive = make_windows()
        (drive / "WinBoard").mkdir()
        shutil.copy(OPTIONS.windows_stub, drive / "WinBoard/winboard.exe")
        (drive / "WinBoard/winboard.ini").write_text(WINBOARD_INI)
        cls.installed = cls.unpacked("*-windows-x86_64.zip", drive / "Chess Programs")
        cls.first_ini = "C:\\tourney\\first.ini"
        cls.pgn = drive / "tourney/first.pgn"
        cls.installed.start_tourney("first-tourney.txt")

    @staticmethod
    def unpacked(pattern, place):
        program = unpack_zip(pattern, place)
        command = ["wine", program / "tarvendo.exe"]
        return Installation(command, program, program / "pics", {}, {})

    def test_it_holds_what_it_should_for_64_and_for_32_bits(self):
        for machine in OPTIONS.machines:
            package, name = the_package(f"*-windows-{machine}.zip")
            with zipfile.ZipFile(package) as archive:
                files = sorted(file for file in archive.namelist() if not file.endswith("/"))
            self.assertEqual(files, [f"{name}/{file}" for file in FILES_FOR_WINDOWS])

    def test_its_texts_have_the_line_ends_of_windows(self):
        for machine in OPTIONS.machines:
            for name, text in self.texts(f"*-windows-{machine}.zip").items():
                self.assertGreater(text.count(b"\n"), 10, name)
                self.assertEqual(text.count(b"\r\n"), text.count(b"\n"), name)
                self.assertNotIn(b"\r\r", text, name)

    def test_its_texts_are_those_of_the_project_but_for_line_ends_and_links(self):
        texts = self.texts("*-windows-x86_64.zip")
        for packed, source in SOURCES_OF_TEXTS.items():
            text = texts[packed].replace(b"\r\n", b"\n")
            expected = (HERE.parent.parent / source).read_bytes()
            if packed == "README.txt":
                expected = expected.replace(b"help/TourneyHelp.txt", b"TourneyHelp.txt")
            self.assertEqual(text, expected, packed)

    @staticmethod
    def texts(pattern):
        package, name = the_package(pattern)
        with zipfile.ZipFile(package) as archive:
            return {text: archive.read(f"{name}/{text}") for text in SOURCES_OF_TEXTS}

    def test_no_link_of_its_texts_leads_nowhere(self):
        for machine in OPTIONS.machines:
            place = OPTIONS.scratch / f"links {machine}"
            self.assertEqual(dead_links(unpack_zip(f"*-windows-{machine}.zip", place)), [])

    def test_both_are_console_programs_that_need_no_library_but_those_of_windows(self):
        for machine in OPTIONS.machines:
            place = OPTIONS.scratch / machine
            program = unpack_zip(f"*-windows-{machine}.zip", place) / "tarvendo.exe"
            told = run(f"{machine}-w64-mingw32-objdump", "-p", program)
            self.assertIn("(Windows CUI)", told)
            needed = {line.split()[-1] for line in told.splitlines() if "DLL Name:" in line}
            self.assertEqual(needed, {"KERNEL32.dll", "msvcrt.dll"})

    def test_the_32_bit_program_runs_where_wine_can_run_it(self):
        drive = OPTIONS.wine_prefix / "drive_c"
        if "i686" not in OPTIONS.machines:
            print("(not run, for there is no such package) ", end="", file=sys.stderr)
            return
        if not (drive / "windows/syswow64/cmd.exe").exists():
            print("(not run, for this Wine knows 64 bits only) ", end="", file=sys.stderr)
            return
        user = self.unpacked("*-windows-i686.zip", drive / "Chess Programs of 32 bits")
        self.assertIn(TOLD_BY_HELP, user.type("help quit"))


def setUpModule():
    """All tourneys run at the same time, while Wine makes its Windows too."""
    bring_stand_in_for_xboard()
    for package in (DebianPackage, LinuxArchive, WindowsArchive):
        package.install()


def make_windows():
    """A fresh Windows of Wine's; returns its drive C."""
    shutil.rmtree(OPTIONS.wine_prefix, ignore_errors=True)
    # No browser and no .NET, for which Wine would ask.
    os.environ.update(
        WINEPREFIX=str(OPTIONS.wine_prefix), WINEDEBUG="-all", WINEDLLOVERRIDES="mscoree,mshtml=")
    run("wine", "wineboot", "--init")
    return OPTIONS.wine_prefix / "drive_c"


def unpack_zip(pattern, place):
    """Unpacks a package; returns the directory of the program in it."""
    package, name = the_package(pattern)
    with zipfile.ZipFile(package) as archive:
        archive.extractall(place)
    return place / name


def read_options():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--packages", type=pathlib.Path, required=True)
    parser.add_argument("--stub", type=pathlib.Path, required=True)
    parser.add_argument("--windows-stub", type=pathlib.Path, required=True)
    parser.add_argument("--wine-prefix", type=pathlib.Path, required=True)
    parser.add_argument("--only-64-bit", action="store_true", help="there is no package for Windows of 32 bits")
    given = parser.parse_args()
    for name in ("packages", "stub", "windows_stub", "wine_prefix"):
        setattr(OPTIONS, name, getattr(given, name).resolve())
    OPTIONS.machines = ("x86_64",) if given.only_64_bit else ("x86_64", "i686")


if __name__ == "__main__":
    read_options()
    os.umask(0o022)
    with tempfile.TemporaryDirectory(prefix="tarvendo-packages.") as scratch:
        os.chmod(scratch, 0o755)  # the ordinary user has to come by
        OPTIONS.scratch = pathlib.Path(scratch)
        unittest.main(argv=sys.argv[:1], verbosity=2)
