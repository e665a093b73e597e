#!/usr/bin/env python3
"""Asks the program for help and version, and for what it does not know, and looks that it ends at once with the right
exit code and touches nothing.

usage: answers_at_once.py [--launcher=WINE] PROGRAM
"""

import pathlib
import subprocess
import sys
import tempfile
import unittest

LAUNCHER = []
PROGRAM = ""


class AnswersAtOnce(unittest.TestCase):
    def ask(self, *words):
        """Starts the program in an empty directory, which it leaves empty: exit code, output, error output."""
        with tempfile.TemporaryDirectory() as directory:
            asked = subprocess.run([*LAUNCHER, PROGRAM, *words], cwd=directory, stdin=subprocess.DEVNULL, timeout=60,
                                   capture_output=True, text=True)
            self.assertEqual(list(pathlib.Path(directory).iterdir()), [])
        return asked.returncode, asked.stdout, asked.stderr

    def test_help_is_printed_and_the_program_ends_well(self):
        code, output, errors = self.ask("go.txt", "--help")
        self.assertEqual((code, errors), (0, ""))
        self.assertTrue(output.startswith("Usage: tarvendo [SCRIPT] [-c] [OPTION...]\n"), output)
        self.assertIn("Examples:\n", output)

    def test_version_is_printed_and_the_program_ends_well(self):
        self.assertEqual(self.ask("--version"), (0, "Tarvendo 0.32\n", ""))

    def test_a_word_that_is_no_option_is_told_with_the_nearest_one(self):
        told = "'--gmaes' is no option of tarvendo; the nearest one is --games. --help tells them all.\n"
        self.assertEqual(self.ask("go.txt", "--gmaes", "4"), (2, "", told))

    def test_a_value_that_makes_no_sense_is_told(self):
        self.assertEqual(self.ask("--games", "none"), (2, "", "--games takes a number from 1 to 512, not 'none'.\n"))


if __name__ == "__main__":
    if sys.argv[1].startswith("--launcher="):
        LAUNCHER = sys.argv.pop(1).removeprefix("--launcher=").split()
    PROGRAM = sys.argv.pop(1)
    unittest.main()
