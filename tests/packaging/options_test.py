#!/usr/bin/env python3
"""What bash completes and what the manual page tells are the options that --help tells.

usage: options_test.py PROGRAM ROOT
"""

import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

PROGRAM = ""
ROOT = pathlib.Path()


def told_by_help():
    """The options of --help: word to the name of its value, which may be empty."""
    text = subprocess.run([PROGRAM, "--help"], capture_output=True, text=True, timeout=60, check=True).stdout
    return dict(re.findall(r"^  (-c|--[a-z-]+) ?([A-Z]*)", text, re.M))


def completed(directory, *words):
    """What bash offers for the last one of the words, which it splits at an equals sign."""
    script = """source "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _tarvendo
        if [[ ${#COMPREPLY[@]} -gt 0 ]]; then printf '%s\\n' "${COMPREPLY[@]}"; fi"""
    completion = ROOT / "packaging" / "tarvendo.bash-completion"
    asked = subprocess.run(["bash", "-c", script, "bash", str(completion), "tarvendo", *words], cwd=directory,
                           capture_output=True, text=True, timeout=60, check=True)
    return set(asked.stdout.split("\n")) - {""}


class Options(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.directory = pathlib.Path(directory.name)
        (self.directory / "my first.ini").touch()
        (self.directory / "pages").mkdir()

    def test_bash_offers_all_of_them(self):
        self.assertEqual(completed(self.directory, "-"), set(told_by_help()))
        self.assertEqual(completed(self.directory, "--res"), {"--resume"})
        self.assertEqual(completed(self.directory, "go.txt", "--wa"), {"--wait"})

    def test_bash_offers_files_where_a_file_is_meant(self):
        for option, value in told_by_help().items():
            for words in ((option, ""), (option, "="), (option, "=", "")):
                with self.subTest(words=words):
                    offered = completed(self.directory, *words)
                    if value in ("N", "MINUTES", "WORDS"):
                        self.assertEqual(offered, set())
                    elif value == "DIR":
                        self.assertEqual(offered, {"pages"})
                    elif value == "SCHEDULER":
                        self.assertEqual(offered, {"slurm"})
                    elif value in ("FILE", "CLAIM", ""):
                        self.assertEqual(offered, {"my first.ini", "pages"})
                    else:
                        self.fail(f"what is offered behind {option} {value}?")
        self.assertEqual(completed(self.directory, "my"), {"my first.ini"})

    def test_the_manual_page_tells_all_of_them(self):
        page = (ROOT / "packaging" / "tarvendo.1").read_text(encoding="utf-8").replace("\\-", "-")
        options = page[page.index(".SH OPTIONS") : page.index(".SH EXIT STATUS")]
        told = set(re.findall(r"^\.TP\n\.BI? (-[a-z-]+)", options, re.M))
        self.assertEqual(told, set(told_by_help()))


if __name__ == "__main__":
    ROOT = pathlib.Path(sys.argv.pop()).resolve()
    PROGRAM = str(pathlib.Path(sys.argv.pop()).resolve())
    unittest.main()
