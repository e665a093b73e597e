#!/usr/bin/env python3
"""The check of links finds those that are dead, and only those."""

import pathlib
import sys
import tempfile
import unittest

from links import dead_links, dead_links_of

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent


class Links(unittest.TestCase):
    def dead(self, text, name="README.txt"):
        with tempfile.TemporaryDirectory() as directory:
            root = pathlib.Path(directory)
            (root / "docs").mkdir()
            (root / "docs/files.md").write_text("# The files\n\n## Player file (`x`)\n")
            (root / "docs/a b.png").write_bytes(b"\xff")
            (root / name).write_text(text)
            return dead_links(root)

    def test_a_link_to_a_file_that_is_there_is_none_to_complain_about(self):
        for link in ("docs/files.md", "./docs/files.md", "docs", "docs/a%20b.png", "<docs/files.md>",
                     "docs/files.md#player-file-x", "https://example.org/x", "mailto:a@example.org"):
            self.assertEqual(self.dead(f"see [it]({link}) and\n"), [], link)

    def test_a_link_to_a_file_that_is_not_there_is_named_with_its_text(self):
        for text in ("[it](help/x.txt)", "[a](docs) [it](help/x.txt)", "![it](help/x.txt)",
                     '[it](help/x.txt "title")', '<img src="help/x.txt">', "[it]: help/x.txt"):
            self.assertEqual(self.dead(text + "\n"), ["README.txt: help/x.txt"], text)

    def test_links_are_seen_from_their_text(self):
        self.assertEqual(self.dead("[it](files.md)\n", "docs/x.md"), [])
        self.assertEqual(self.dead("[it](docs/files.md)\n", "docs/x.md"), ["docs/x.md: docs/files.md"])

    def test_a_link_to_a_heading_that_is_not_there_is_dead(self):
        self.assertEqual(self.dead("# One two\n[it](#one-two)\n"), [])
        self.assertEqual(self.dead("# One\n```\n# Two\n```\n[it](#two)\n"), ["README.txt: #two"])
        self.assertEqual(self.dead("[it](docs/files.md#no)\n"), ["README.txt: docs/files.md#no"])

    def test_what_stands_in_code_is_no_link(self):
        self.assertEqual(self.dead("`[it](x)`\n```\n[it](x)\n```\n"), [])

    def test_no_link_of_the_projects_own_texts_leads_nowhere(self):
        texts = [*ROOT.glob("*.md"), *(ROOT / "docs").glob("*.md"), *(ROOT / "adapters").rglob("*.md"),
                 *(ROOT / "tests").rglob("*.md")]
        self.assertGreater(len(texts), 5)
        for path in texts:
            self.assertEqual(dead_links_of(path), [], path)


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=2))
