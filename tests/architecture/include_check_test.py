#!/usr/bin/env python3
"""Tests of include_check.py on small houses, most of them badly built."""

import contextlib
import io
import pathlib
import re
import tempfile
import unittest

import include_check


class IncludeCheck(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.root = pathlib.Path(directory.name)

    def outcome(self, files):
        """Writes the files (name: text) and runs the check: its exit code and its lines."""
        for name, text in files.items():
            path = self.root / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text)
        printed = io.StringIO()
        with contextlib.redirect_stdout(printed):
            code = include_check.main(["include_check.py", str(self.root)])
        return code, printed.getvalue().splitlines()

    def expect_good(self, files):
        self.assertEqual(self.outcome(files), (0, []))

    def expect_bad(self, files, *beginnings):
        """The check fails with as many lines as there are beginnings, each beginning so."""
        code, lines = self.outcome(files)
        self.assertEqual(code, 1)
        self.assertEqual(len(lines), len(beginnings), lines)
        for line, beginning in zip(lines, beginnings):
            self.assertTrue(line.startswith(beginning), line)

    def test_another_library_is_known_to_one_source_only(self):
        self.expect_good({"src/publish/json_file.cpp": "#include <nlohmann/json.hpp>\n"})
        self.expect_bad({"src/publish/page.cpp": "#include <nlohmann/json.hpp>\n"},
                        "src/publish/page.cpp:1: <nlohmann/json.hpp> is known to players/engines_json.cpp and "
                        "publish/json_file.cpp only")

    def test_includes_that_go_down_or_stay_in_the_room_are_good(self):
        self.expect_good({
            "src/base/a.h": "#pragma once\n#include <string>\n",
            "src/tourney/b.h": '#include <vector>\n#include "base/a.h"\n',
            "src/tourney/c.cpp": '#include "tourney/b.h"\n  #  include "platform/files.h"\n',
            "src/platform/files.h": "#include <cstdint>\n",
        })

    def test_an_include_that_goes_up_is_named_with_its_line(self):
        self.expect_bad({
            "src/base/a.h": '#pragma once\n\n#include "tourney/b.h"\n',
            "src/tourney/b.h": "\n",
        }, "src/base/a.h:3: base must not include")

    def test_every_breach_is_named(self):
        self.expect_bad({
            "src/base/a.cpp": '#include "runner/b.h"\n#include "console/c.h"\n',
            "src/runner/b.h": "\n",
            "src/runner/d.h": '#include "console/c.h"\n',
            "src/console/c.h": "\n",
        }, "src/base/a.cpp:1:", "src/base/a.cpp:2:", "src/runner/d.h:1:")

    def test_own_headers_are_written_from_src(self):
        self.expect_bad({
            "src/base/a.h": "\n",
            "src/base/a.cpp": '#include "a.h"\n',
            "src/base/b.cpp": '#include "../tourney/c.h"\n',
            "src/base/d.cpp": '#include "tests/e.h"\n',
        }, "src/base/a.cpp:1:", "src/base/b.cpp:1:", "src/base/d.cpp:1:")

    def test_an_unknown_room_is_bad(self):
        self.expect_bad({"src/attic/a.cpp": '#include "base/b.h"\n', "src/base/b.h": "\n"},
                        'src/attic/a.cpp:1: "attic" is none of the rooms')

    def test_host_headers_stand_in_the_hosts_folders_only(self):
        self.expect_good({
            "src/platform/posix/a.cpp": "#include <unistd.h>\n#include <sys/wait.h>\n",
            "src/platform/posix/b.h": "#include <signal.h>\n",
            "src/platform/windows/a.cpp": "#include <windows.h>\n",
        })
        self.expect_bad({
            "src/platform/c.cpp": "#include <unistd.h>\n",
            "src/runner/d.cpp": "#include <string>\n#include <Windows.h>\n",
        }, "src/platform/c.cpp:1: <unistd.h>", "src/runner/d.cpp:2: <Windows.h>")

    def test_windows_h_stands_in_sources_only(self):
        self.expect_bad({"src/platform/windows/a.h": "#include <windows.h>\n"},
                        "src/platform/windows/a.h:1: <windows.h>")

    def test_no_other_library_is_used(self):
        self.expect_bad({"src/base/a.cpp": "#include <boost/any.hpp>\n"}, "src/base/a.cpp:1:")

    def test_a_hosts_folder_is_included_by_itself_only(self):
        self.expect_bad({
            "src/platform/posix/a.h": "\n",
            "src/platform/posix/a.cpp": '#include "platform/posix/a.h"\n',
            "src/platform/b.cpp": '#include "platform/posix/a.h"\n',
            "src/platform/windows/c.cpp": '#include "platform/posix/a.h"\n',
        }, "src/platform/b.cpp:1: only platform/posix", "src/platform/windows/c.cpp:1: only")

    def test_files_in_a_circle_are_named(self):
        self.expect_bad({
            "src/base/a.h": '#include <string>\n#include "base/b.h"\n',
            "src/base/b.h": '#include "base/c.h"\n',
            "src/base/c.h": '\n\n#include "base/a.h"\n',
        }, "src/base/c.h:3: files include each other in a circle: "
           "base/a.h -> base/b.h -> base/c.h -> base/a.h")

    def test_a_file_that_includes_itself_is_a_circle(self):
        self.expect_bad({"src/base/a.h": '#include "base/a.h"\n'}, "src/base/a.h:1: files")

    def test_units_in_a_circle_are_named(self):
        self.expect_bad({
            "src/base/a.h": "\n",
            "src/base/a.cpp": '#include "base/a.h"\n#include "base/b.h"\n',
            "src/base/b.h": "\n",
            "src/base/b.cpp": '#include "base/b.h"\n\n#include "base/c.h"\n',
            "src/base/c.h": '#include "base/a.h"\n',
        }, "src/base/c.h:1: units include each other in a circle: base/a -> base/b -> base/c -> base/a")

    def test_a_source_that_needs_who_needs_its_header_is_a_circle_of_units(self):
        self.expect_bad({
            "src/base/a.h": "\n",
            "src/base/a.cpp": '#include "base/b.h"\n',
            "src/base/b.h": '#include "base/a.h"\n',
        }, "src/base/b.h:1: units include each other in a circle: base/a -> base/b -> base/a")

    def test_a_source_and_its_header_are_one_unit_and_no_circle(self):
        self.expect_good({
            "src/base/a.h": "\n",
            "src/base/a.cpp": '#include "base/a.h"\n#include "base/b.h"\n',
            "src/base/b.h": "\n",
            "src/base/b.cpp": '#include "base/b.h"\n',
        })

    def test_what_stands_in_a_hosts_folder_is_a_unit_of_its_own(self):
        self.expect_good({
            "src/platform/files.h": "\n",
            "src/platform/posix/files.cpp": '#include "platform/files.h"\n#include "platform/posix/lock.h"\n',
            "src/platform/posix/lock.h": '#include "platform/files.h"\n',
        })

    def test_folders_in_a_circle_are_named(self):
        self.expect_bad({
            "src/base/a.h": '#include "base/deep/b.h"\n',
            "src/base/deep/b.h": "\n",
            "src/base/deep/c.h": '#include "base/d.h"\n',
            "src/base/d.h": "\n",
        }, "src/base/deep/c.h:1: folders include each other in a circle: "
           "base -> base/deep -> base")

    def test_two_ways_to_one_file_are_no_circle(self):
        self.expect_good({
            "src/base/a.h": '#include "base/b.h"\n#include "base/c.h"\n',
            "src/base/b.h": '#include "base/d.h"\n',
            "src/base/c.h": '#include "base/d.h"\n',
            "src/base/d.h": "\n",
        })

    def test_nobody_asks_for_the_host_outside_the_platform_room(self):
        self.expect_bad({
            "src/base/a.cpp": "#ifdef _WIN32\n#endif\n",
            "src/runner/b.h": "\n# if defined(__linux__) && 1\n#elif __MINGW32__\n#endif\n",
            "tests/base/c_test.cpp": "#ifndef WIN32\n#endif\n",
            "bench/d_bench.cpp": "#if __has_include(<unistd.h>)\n#endif\n",
        }, "src/base/a.cpp:1: asks for the host (_WIN32)", "src/runner/b.h:2:", "src/runner/b.h:3:",
           "tests/base/c_test.cpp:1:", "bench/d_bench.cpp:1:")

    def test_the_platform_room_and_its_tests_may_ask_for_the_host(self):
        self.expect_good({
            "src/platform/a.cpp": "#ifdef _WIN32\n#endif\n",
            "tests/platform/a_test.cpp": "#ifdef _WIN32\n#endif\n",
            "src/base/b.cpp": "#ifdef NDEBUG\n#endif\nconst char* kText = R\"(#x _WIN32)\";\n",
        })

    def test_nobody_outside_the_platform_room_speaks_of_a_host(self):
        self.expect_bad({
            "src/base/a.cpp": "// On Windows this is another thing.\n",
            "src/console/b.h": '\nconst char* const kText = "for Linux";\n',
        }, "src/base/a.cpp:1: speaks of a host (Windows)", "src/console/b.h:2: speaks of a host (Linux)")

    def test_the_platform_room_speaks_of_hosts(self):
        self.expect_good({
            "src/platform/a.h": "/// On Windows the command processor, on Linux the shell.\n",
            "src/base/b.h": "/// WinBoard and XBoard are no hosts.\n",
            "tests/base/c_test.cpp": "// As on Linux.\n",
        })

    def test_host_types_stand_in_the_hosts_folders_only(self):
        self.expect_bad({
            "src/platform/a.h": "#pragma once\npid_t Start();\n",
            "src/runner/b.cpp": "void* handle;\nHANDLE other;  // pid_t\n",
            "tests/base/c_test.cpp": "DWORD count = 0;\n",
            "fuzz/d.cpp": "ssize_t count = 0;\n",
        }, "src/platform/a.h:2: names a host's type (pid_t)", "src/runner/b.cpp:2: names a host's type (HANDLE)",
           "tests/base/c_test.cpp:1:", "fuzz/d.cpp:1:")

    def test_what_is_one_hosts_as_a_whole_names_its_types(self):
        self.expect_good({
            "src/platform/posix/a.h": "#include <sys/types.h>\npid_t Start();\n",
            "src/platform/windows/a.cpp": "HANDLE handle;\n",
            "tests/platform/faults_test.cpp": "#include <signal.h>\npid_t Start();\n",
            "tests/stub/words_windows.cpp": "#include <windows.h>\nHANDLE handle;\n",
            "tests/stub/words_posix.cpp": "#include <unistd.h>\n",
            "tests/base/posix/file_test.cpp": "#include <unistd.h>\nuid_t owner;\n",
        })

    def test_tests_of_every_host_use_no_hosts_headers(self):
        self.expect_good({"src/base/a.cpp": "\n",
                          "tests/base/a_test.cpp": "#include <gtest/gtest.h>\n#include <fstream>\n",
                          "bench/b.cpp": "#include <benchmark/benchmark.h>\n"})
        self.expect_bad({"tests/base/c_test.cpp": "#include <string>\n#include <unistd.h>\n"},
                        "tests/base/c_test.cpp:2: <unistd.h>")

    def test_nobody_reaches_the_host_past_the_platform_room(self):
        self.expect_good({"src/platform/a.cpp": "#include <filesystem>\n"})
        self.expect_bad({"src/base/b.cpp": "#include <fstream>\n"}, "src/base/b.cpp:1: <fstream> reaches the host")

    def test_who_names_what_a_usual_header_declares_includes_it(self):
        self.expect_good({
            "src/base/a.h": "#include <vector>\n",
            "src/base/a.cpp": '#include "base/a.h"\nstd::vector<int> numbers;\n// std::string says nothing here\n',
        })
        self.expect_bad({
            "src/base/b.h": "#include <vector>\n",
            "src/base/b.cpp": '#include "base/b.h"\n\nstd::vector<std::string> a;\nstd::string b;\n',
            "src/base/c.cpp": "void f() { std::sort(a, b); std::sorted(c); }\n",
        }, "src/base/b.cpp:3: nothing that is included here leads to <string>",
                        "src/base/c.cpp:1: nothing that is included here leads to <algorithm>")

    def test_the_usual_headers_are_those_that_are_compiled_in_advance(self):
        speed = (pathlib.Path(__file__).resolve().parents[2] / "cmake/Speed.cmake").read_text()
        headers = re.search(r"set\(TARVENDO_USUAL_HEADERS ([^)]*)\)", speed).group(1)
        self.assertEqual(re.findall(r"<(\w+)>", headers), list(include_check.USUAL))

    def test_comments_and_texts_are_no_includes(self):
        self.expect_good({
            "src/base/a.cpp": '// #include "console/a.h"\n/*\n#include "console/b.h"\n#ifdef _WIN32\n*/\n'
                              'const char* kText = "/*";\n#include <string>\n',
        })

    def test_line_numbers_hold_behind_comments(self):
        self.expect_bad({"src/base/a.cpp": '/* one\ntwo */\n#include <unistd.h>  // why\n'},
                        "src/base/a.cpp:3: <unistd.h>")

    def test_a_house_without_sources_is_no_success(self):
        code, lines = self.outcome({"src/readme.txt": "nothing\n"})
        self.assertEqual(code, 2)
        self.assertEqual(len(lines), 1)


if __name__ == "__main__":
    unittest.main()
