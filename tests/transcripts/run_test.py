#!/usr/bin/env python3
"""Tests of the transcript runner: a runner that lets everything pass would make every transcript worthless.

The "program" is a script of our own, so these tests run where there is a /bin/sh, and nowhere else.
"""

import contextlib
import io
import os
import pathlib
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
import run  # noqa: E402

PROGRAM = """#!/bin/sh
echo "hello from $(pwd)/ with $1"
cat "$1" 2>/dev/null
cat
echo made > made.txt
exit ${CODE:-1}
"""


@unittest.skipUnless(os.name == "posix", "needs /bin/sh")
class RunTest(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.base = pathlib.Path(directory.name)
        self.folder = self.base / "case"
        self.folder.mkdir()
        self.program = self.base / "program"
        self.write_program(PROGRAM)
        (self.folder / "script.txt").write_text("a line of {DIR}\n")
        self.run_folder("--accept")

    def write_program(self, text):
        self.program.write_text(text)
        self.program.chmod(0o755)

    def run_folder(self, *options):
        words = ["--program", str(self.program), "--scratch", str(self.base / "scratch")]
        self.output = io.StringIO()
        with contextlib.redirect_stdout(self.output):
            return run.main([*words, "--host", "linux", *options, str(self.folder)])

    def test_what_was_accepted_passes(self):
        self.assertEqual(self.run_folder(), 0)

    def test_the_directory_of_the_run_becomes_a_token(self):
        expected = (self.folder / "expected.txt").read_text()
        self.assertEqual(expected, "hello from {DIR}/ with script.txt\na line of {DIR}\n")

    def test_what_a_mask_fits_is_not_compared(self):
        (self.folder / "setup").write_text("mask hel+o \\w+\n")
        self.run_folder("--accept")
        self.assertIn("{MASKED} {DIR}/ with", (self.folder / "expected.txt").read_text())
        self.write_program(PROGRAM.replace("hello from", "helllo at"))
        self.assertEqual(self.run_folder(), 0)
        self.write_program(PROGRAM.replace("hello", "goodbye"))
        self.assertEqual(self.run_folder(), 1)

    def test_another_console_text_fails_with_a_difference(self):
        self.write_program(PROGRAM.replace("hello", "goodbye"))
        self.assertEqual(self.run_folder(), 1)
        self.assertIn("-hello from", self.output.getvalue())
        self.assertIn("+goodbye from", self.output.getvalue())

    def test_a_missing_line_end_fails(self):
        self.write_program(PROGRAM.replace('echo "hello', 'printf "%s" "hello'))
        self.assertEqual(self.run_folder(), 1)

    def test_another_content_of_a_file_fails(self):
        self.write_program(PROGRAM.replace("echo made", "echo other"))
        self.assertEqual(self.run_folder(), 1)
        self.assertIn("expected_files/made.txt", self.output.getvalue())

    def test_a_missing_file_fails(self):
        self.write_program(PROGRAM.replace("echo made > made.txt", ""))
        self.assertEqual(self.run_folder(), 1)

    def test_a_file_too_many_fails(self):
        self.write_program(PROGRAM + "\n")
        self.write_program(PROGRAM.replace("made.txt", "made.txt; echo more > more.txt"))
        self.assertEqual(self.run_folder(), 1)
        self.assertIn("more.txt was not expected", self.output.getvalue())

    def test_another_exit_code_fails(self):
        self.write_program(PROGRAM.replace("CODE:-1", "CODE:-0"))
        self.assertEqual(self.run_folder(), 1)
        self.assertIn("exit code 0", self.output.getvalue())

    def test_a_missing_expectation_fails(self):
        (self.folder / "expected.txt").unlink()
        self.assertEqual(self.run_folder(), 1)

    def test_what_a_sanitizer_says_fails(self):
        self.write_program(PROGRAM.replace("exit", "echo 'WARNING: ThreadSanitizer: race' >&2\nexit"))
        self.assertEqual(self.run_folder(), 1)

    def test_an_expected_log_is_compared(self):
        (self.folder / "expected.log").write_text("something\n")
        self.assertEqual(self.run_folder(), 1)

    def test_a_folder_for_another_host_is_skipped(self):
        (self.folder / "setup").write_text("host windows\n")
        self.assertEqual(self.run_folder(), run.SKIPPED)

    def test_the_keyboard_and_a_second_run_are_fed(self):
        (self.folder / "keyboard.2.txt").write_text("typed\n")
        self.assertEqual(self.run_folder("--accept"), 0)
        self.assertIn("=== run 2 ===\n", (self.folder / "expected.txt").read_text())
        self.assertIn("typed\n", (self.folder / "expected.txt").read_text())

    def test_given_files_that_stay_need_no_expectation(self):
        self.write_program(PROGRAM.replace("echo made > made.txt", ""))
        (self.folder / "files").mkdir()
        (self.folder / "files" / "given.txt").write_text("given\n")
        self.run_folder("--accept")
        self.assertFalse((self.folder / "expected_files").exists())
        self.assertEqual(self.run_folder(), 0)


if __name__ == "__main__":
    unittest.main()
