#!/usr/bin/env python3
"""What read_sources.py says of build folders with good and bad sources."""

import contextlib
import io
import json
import pathlib
import tempfile
import unittest

import read_sources

GOOD = "int Answer() { return Usual{42}.number; }\n"
MISSPELT = "int Answer() { return Unusual{42}.number; }\n"
CARELESS = "void Nothing(int number) {}\n"


class ReadSources(unittest.TestCase):
    def read(self, *sources):
        """(exit code, what is printed) for a folder in which these sources are compiled, a header in advance."""
        with tempfile.TemporaryDirectory() as folder:
            build = pathlib.Path(folder)
            (build / "usual.h").write_text("struct Usual { int number; };\n")
            commands = ["c++ -x c++-header -o made/usual.h.gch -c usual.h"]
            for number, source in enumerate(sources):
                (build / f"{number}.cpp").write_text(source)
                commands.append(f"c++ -Wunused-parameter -Werror -include made/usual.h -o {number}.o -c {number}.cpp")
            entries = [{"directory": folder, "command": command} for command in commands]
            (build / "compile_commands.json").write_text(json.dumps(entries))
            printed = io.StringIO()
            with contextlib.redirect_stdout(printed):
                code = read_sources.main(build)
            self.assertEqual(list(build.glob("*.o")), [])
            return code, printed.getvalue()

    def test_good_sources_are_only_counted(self):
        self.assertEqual(self.read(GOOD, GOOD), (0, "2 sources read\n"))

    def test_errors_and_warnings_are_printed_for_each_source(self):
        code, printed = self.read(GOOD, MISSPELT, CARELESS)
        self.assertEqual(code, 1)
        self.assertIn("1.cpp:1:", printed)
        self.assertIn("Unusual", printed)
        self.assertIn("2.cpp:1:", printed)
        self.assertIn("unused parameter", printed)

    def test_a_folder_in_which_nothing_is_compiled_is_no_success(self):
        with self.assertRaises(SystemExit):
            self.read()


if __name__ == "__main__":
    unittest.main()
