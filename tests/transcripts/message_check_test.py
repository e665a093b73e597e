#!/usr/bin/env python3
"""Tests of message_check.py on small houses."""

import pathlib
import tempfile
import unittest

import message_check


class MessageCheck(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.root = pathlib.Path(directory.name)

    def complaints(self, source, shown, exceptions=None, place="expected.txt"):
        """What is said of a house with this source and with a transcript that shows this."""
        for name, text in (("src/room/a.cpp", source), ("tests/transcripts/one/" + place, shown)):
            path = self.root / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text)
        return list(message_check.check(self.root, exceptions or {}))

    def test_a_message_that_is_shown_is_good(self):
        self.assertEqual(self.complaints('Print("Good day.\\n");', "x\nGood day.\n"), [])

    def test_files_and_the_log_count_too(self):
        for place in ("expected.log", "expected_files/sub/x.txt"):
            self.assertEqual(self.complaints('Print("Good day.\\n");', "Good day.\n", None, place), [])

    def test_a_message_that_nobody_shows_is_named_with_its_file(self):
        self.assertEqual(self.complaints('Print("Good day.\\n");', "Good day"),
                         ["src/room/a.cpp: no transcript shows 'Good day.\\n'"])

    def test_placeholders_stand_for_anything_on_their_line(self):
        source = 'Print("Game %d of %-*s: 100%%.\\n", 1);'
        self.assertEqual(self.complaints(source, "Game 17 of A B: 100%.\n"), [])
        self.assertEqual(len(self.complaints(source, "Game 17\n of A: 100%.\n")), 1)

    def test_literals_side_by_side_are_one_message(self):
        source = 'Print("Good "\n      "day.\\n"); f("x" + y + " and night");'
        self.assertEqual(self.complaints(source, "Good day.\n and night"), [])
        self.assertEqual(len(self.complaints(source, "Good \nday.\n and night")), 1)

    def test_comments_includes_characters_and_words_are_no_messages(self):
        source = ('#include "some room/a.h"\n// "no message"\n/* "nor this" */\nc = \'"\'; d = \'"\';\n'
                  'Take("word", "a b", " \\n", "https://x.org");')
        self.assertEqual(self.complaints(source, ""), [])

    def test_an_exception_needs_no_transcript_and_must_be_one(self):
        exceptions = {"Good day.\n": "nobody says so"}
        self.assertEqual(self.complaints('Print("Good day.\\n");', "", exceptions), [])
        for source, shown in (('Print("Good day.\\n");', "Good day.\n"), ('Print("Hello you");', "Hello you")):
            self.assertEqual(self.complaints(source, shown, exceptions),
                             ["no exception is needed for 'Good day.\\n'"])


if __name__ == "__main__":
    unittest.main()
