#!/usr/bin/env python3
"""Types everything that README, guide and examples want typed, and looks that nothing complains and that games are played
where they should be. WinBoard is the stand-in, which knows WinBoard's options in WinBoard's spelling only.

usage: typed_blocks_test.py QUICK STUB ROOT
"""

import pathlib
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
from typed_blocks import Block, Desk, sections_of  # noqa: E402

PROGRAM = STUB = ROOT = pathlib.Path()
# Typed under Wine: tests/windows/readme_test.py.
OF_WINDOWS = ("Windows",)
# Of the jobs that slurm_stand_in.py lets wait.
CANCELLED = {"A cluster": ["900"]}


class TypedBlocks(unittest.TestCase):
    def desk(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        return Desk(pathlib.Path(directory.name).resolve(), PROGRAM, STUB, ROOT)

    def desk_in_the_middle(self):
        """Where a part of the guide begins: in a directory with the examples. Something was left there by an emergency."""
        desk = self.desk()
        desk.run("mkdir ~/cup && cd ~/cup && cp /usr/share/doc/tarvendo/examples/*.txt .")
        desk.run("tarvendo", "set name Of Yesterday\nset autosave on cup.ini\nsave emergency.ini\n")
        desk.run("rm cup.ini Tarvendo.log")
        return desk

    def type_text(self, path, desk_of):
        for heading, blocks in sections_of(path.read_text(encoding="utf-8")):
            if heading in OF_WINDOWS:
                continue
            with self.subTest(text=path.name, heading=heading):
                desk = desk_of(heading)
                desk.type_blocks(blocks)
                self.assertEqual(desk.complaints(), [], desk.seen)
                self.assertEqual(desk.cancelled_jobs(), CANCELLED.get(heading, []))
                typed = "".join(block.text for block in blocks if block.kind in ("sh", "tarvendo", "file"))
                if "\nrun\n" in typed or "--resume" in typed:
                    self.assertGreater(desk.games_started(), 0, desk.seen)

    def test_what_the_readme_wants_typed(self):
        self.type_text(ROOT / "README.md", lambda heading: self.desk())

    def test_what_the_guide_wants_typed(self):
        self.type_text(ROOT / "docs/guide.md",
                       lambda heading: self.desk() if heading == "Guide" else self.desk_in_the_middle())

    def test_the_examples(self):
        scripts = sorted((ROOT / "examples").glob("*.txt"))
        games = {"gauntlet.txt": 8, "round-robin.txt": 6, "swiss-of-8.txt": 12, "swiss-odd.txt": 6}
        self.assertEqual({script.name for script in scripts}, {*games, "engines-debian.txt"})
        for name, count in games.items():
            with self.subTest(example=name):
                desk = self.desk()
                desk.run(f"cp /usr/share/doc/tarvendo/examples/{name} /usr/share/doc/tarvendo/examples/engines-debian.txt .")
                desk.run(f"tarvendo {name} --wait --progress --exit-code")
                self.assertEqual(desk.complaints(), [], desk.seen)
                self.assertEqual(desk.games_started(), count)

    def test_each_example_that_is_a_script_is_told_in_the_guide(self):
        guide = (ROOT / "docs/guide.md").read_text(encoding="utf-8")
        for script in (ROOT / "examples").glob("*.txt"):
            self.assertTrue(script.name in guide, script.name)


class TheTestItself(unittest.TestCase):
    """A test of texts that lets everything pass would be worth nothing."""

    def complaints(self, *blocks):
        with tempfile.TemporaryDirectory() as directory:
            desk = Desk(pathlib.Path(directory).resolve(), PROGRAM, STUB, ROOT)
            desk.type_blocks(blocks)
            return desk.complaints()

    def test_finds_what_the_program_does_not_understand(self):
        for wrong in ("set nonsense 1\n", "addplayer Nobody\n", "load nothing.ini\n", "showgames -nonsense\n",
                      "nonsense\n", "readplayers nothing.txt\n"):
            with self.subTest(wrong=wrong):
                self.assertNotEqual(self.complaints(Block("tarvendo", wrong)), [])

    def test_finds_an_option_that_winboard_does_not_know(self):
        right = "readplayers engines-debian.txt\naddgroup first\nset type roundrobin\ncreaterrgames\nspool -all\nrun\n"
        copy = Block("sh", "cp /usr/share/doc/tarvendo/examples/* .\n")
        self.assertEqual(self.complaints(copy, Block("tarvendo", right)), [])
        self.assertNotEqual(self.complaints(copy, Block("tarvendo", "set whiteoptions /adjudicatedrawmoves=9\n" + right)), [])

    def test_finds_a_line_that_the_shell_cannot_run(self):
        for wrong in ("nonsense\n", "tarvendo --nonsense\n", "cp nothing.txt .\n", "tarvendo --resume nothing.ini\n"):
            with self.subTest(wrong=wrong), self.assertRaises(AssertionError):
                self.complaints(Block("sh", wrong))

    def test_wants_to_be_told_what_a_block_is(self):
        with self.assertRaises(AssertionError):
            self.complaints(Block("", "load first.ini\n"))


if __name__ == "__main__":
    PROGRAM, STUB, ROOT = (pathlib.Path(word).resolve() for word in sys.argv[1:4])
    del sys.argv[1:4]
    unittest.main()
