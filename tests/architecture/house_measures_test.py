#!/usr/bin/env python3
"""Tests of house_measures.py on small sources."""

import contextlib
import io
import pathlib
import tempfile
import unittest

import house_measures

SOURCE = """#include "a/b.h"
namespace tarvendo {
namespace {

constexpr int kTable[] = {1, 2};
const auto kLambda = [](int a) {
  return a;
};

struct Point {
  Point() : x_{1}, y_(2) {
    x_ = 2;
  }
  bool operator==(const Point& other) const { return x_ == other.x_; }
  int x_ = 0;
  int y_{0};
};

// void Commented() { }
template <typename T>
T Twice(T value) {
  for (int i = 0; i < 1; ++i) {
    value = [&] { return value + value; }();
  }
  return value;
}

}  // namespace

const char* Text() {
  return "} {";
}

Point Declared(int a = 1);

void Long(int a,
          int b = 2) {
  Text();
}

}  // namespace tarvendo
"""


class HouseMeasures(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.root = pathlib.Path(directory.name)

    def write(self, name, text):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)

    def house(self, files):
        for name, text in files.items():
            self.write("src/" + name, text)
        return house_measures.House(self.root)

    def output_of(self, *words):
        printed = io.StringIO()
        with contextlib.redirect_stdout(printed):
            code = house_measures.main([str(self.root), *words])
        return code, printed.getvalue()

    def test_every_function_is_found_with_its_lines_and_nothing_else(self):
        functions = self.house({"base/a.cpp": SOURCE}).functions
        self.assertEqual([(one.head.split("(")[0].split()[-1], one.lines) for one in functions],
                         [("Point", 3), ("operator==", 1), ("Twice", 7), ("Text", 3), ("Long", 4)])

    def test_a_run_of_six_lines_in_two_places_is_repeated_and_five_are_not(self):
        lines = [f"  int a{i} = {i};\n" for i in range(6)]
        house = self.house({"base/a.h": "".join(lines), "play/b.h": "// first\n\n" + "\n".join(lines),
                            "play/c.h": "".join(lines[:5])})
        self.assertEqual({name for name, _ in house.repeated}, {"base/a.h", "play/b.h"})
        self.assertEqual(len(house.repeated), 12)

    def test_rooms_are_told_one_by_one_and_together(self):
        self.house({"base/a.cpp": SOURCE, "runner/b.cpp": "void F() {\n}\n"})
        code, text = self.output_of("--table")
        self.assertEqual(code, 0)
        self.assertIn("| base | 1 | 41 | 41, 41, 41 | 5 | 3, 7, 7 | 0 |", text)
        self.assertIn("| runner | 1 | 2 | 2, 2, 2 | 1 | 2, 2, 2 | 0 |", text)
        self.assertIn("| all | 2 | 43 | 2, 41, 41 | 6 | 3, 7, 7 | 0 |", text)

    def test_two_houses_are_told_in_one_table(self):
        self.write("old/src/base/a.cpp", "void F() {\n}\n")
        self.house({"base/a.cpp": "void F() {\n}\n\nvoid G() {\n}\n", "play/b.h": "\n"})
        code, text = self.output_of("--before", str(self.root / "old"))
        self.assertEqual(code, 0)
        self.assertIn("| base | 1 | 2 → 5 | 2, 2, 2 → 5, 5, 5 | 1 → 2 | 2, 2, 2 | 0 |", text)
        self.assertIn("| play | 1 | 1 | 1, 1, 1 | 0 | none | 0 |", text)
        self.assertIn("Circles before: 0 of files, 0 of units, 0 of folders.", text)

    def test_circles_are_told(self):
        self.house({"base/a.h": "", "base/a.cpp": '#include "base/b.h"\n', "base/b.h": "",
                    "base/b.cpp": '#include "base/a.h"\n'})
        self.assertIn("Circles: 0 of files, 1 of units, 0 of folders.", self.output_of()[1])

    def test_a_directory_without_sources_is_refused(self):
        self.assertEqual(self.output_of()[0], 2)

    def test_what_the_compiler_makes_by_itself_is_nobodys(self):
        for name in ("std::vector<tarvendo::Game>::push_back(tarvendo::Game&&)", "tarvendo::Game::~Game()",
                     "tarvendo::Game::Game(tarvendo::Game&&)", "tarvendo::Game::operator=(tarvendo::Game const&)"):
            self.assertFalse(house_measures.is_ours(name), name)
        for name in ("tarvendo::HasMet(tarvendo::Tourney const&, int)", "tarvendo::PairGraph::Allow(unsigned long)"):
            self.assertTrue(house_measures.is_ours(name), name)


if __name__ == "__main__":
    unittest.main()
