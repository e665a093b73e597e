#!/usr/bin/env python3
"""What a user sees at a terminal: types at the program in a window of tmux's and looks at it.

    terminal_test.py --program PROGRAM [--plain]

With --plain the program was built without the editing of lines; then everything is tried that
does not need it.
"""

import argparse
import datetime
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import unittest

from screen import PROMPT, Screen

OPTIONS = argparse.Namespace()
EMERGENCY = "Trying to save current tourney to file 'emergency.ini' in current directory."
STARTED = "Runner started."


class AtATerminal(unittest.TestCase):
    columns = 80
    rows = 24

    def setUp(self):
        self.directory = pathlib.Path(tempfile.mkdtemp(prefix="tarvendo-terminal."))
        self.addCleanup(shutil.rmtree, self.directory, ignore_errors=True)
        self.screen = self.new_screen()

    def new_screen(self, **environment):
        self.home = self.directory / "home"
        screen = Screen(self.home, self.columns, self.rows, **environment)
        self.addCleanup(screen.close)
        return screen

    def restart_screen(self, **environment):
        self.screen.close()
        self.screen = self.new_screen(**environment)

    def start(self, *words, before=""):
        """Starts the program; nothing of an earlier one is on the screen then."""
        command = " ".join([f"{before}{OPTIONS.program}", *words])
        self.screen.enter("stty -g >modes_before; clear; "
                          f"{command}; code=$?; stty -g >modes; echo code $code")

    def start_at_prompt(self, *words, before=""):
        self.start(*words, before=before)
        self.screen.await_last(">")

    def log(self):
        return (self.home / "Tarvendo.log").read_text(encoding="utf-8")

    def start_runner_soon(self):
        """The runner is going to say that it has started, in a second or two."""
        at = datetime.datetime.now(datetime.timezone.utc) + datetime.timedelta(seconds=2)
        self.screen.enter(at.strftime("run %d.%m.%Y %H:%M:%S"))
        self.screen.await_match(r"Start time set to .*\n\n+>$")


class EveryProgram(AtATerminal):
    """What needs no editing of lines."""

    def test_ctrl_c_ends_a_shell_command_and_only_it(self):
        self.start_at_prompt()
        self.screen.enter("echo begun >begun; exec sleep 1000")
        self.screen.await_that((self.home / "begun").exists, "the command")
        self.screen.press("C-c")
        self.screen.await_match(r"\^C\n+>$")
        self.screen.enter("get name")
        self.screen.await_text("Name = My Own Winboard Tourney")
        self.assertNotIn(EMERGENCY, self.screen.text())

    def test_ctrl_c_pressed_again_and_again_in_a_shell_command_ends_nothing_else(self):
        self.start_at_prompt()
        self.screen.enter("trap 'echo heard >>heard' INT; echo begun >begun; while [ ! -e ended ]; do sleep 0.01; done")
        self.screen.await_that((self.home / "begun").exists, "the command")
        for times in range(1, 4):
            self.screen.press("C-c")
            self.screen.await_that(lambda: self.heard() == times, f"the signal no. {times}")
        (self.home / "ended").touch()
        self.screen.enter("get name")
        self.screen.await_text("Name = My Own Winboard Tourney")

    def heard(self):
        file = self.home / "heard"
        return len(file.read_text().splitlines()) if file.exists() else 0

    def test_ctrl_c_at_the_prompt_clears_the_line(self):
        self.start_at_prompt()
        self.screen.type("echo not run >file")
        self.screen.await_last("> echo not run >file")
        self.screen.press("C-c")
        self.screen.await_match(r"> echo not run >file\^C\n+>$")
        self.screen.enter("get name")
        self.screen.await_text("Name = My Own Winboard Tourney")
        self.assertFalse((self.home / "file").exists())

    def test_ctrl_c_twice_ends_the_program_through_the_emergency_save(self):
        self.start_at_prompt()
        self.screen.enter("set name Kept")
        self.screen.await_match(r"Name = Kept\n+>$")
        self.press_until_it_ends()
        self.screen.await_text("code 1")
        self.assertIn("Kept", (self.home / "emergency.ini").read_text())
        self.assert_is_given_back()

    def press_until_it_ends(self):
        """Quickly, but the first signal must have arrived before the second, or they are one."""
        def pressed():
            self.screen.press("C-c")
            return EMERGENCY in self.screen.text()
        self.screen.await_that(pressed, EMERGENCY)

    def assert_is_given_back(self):
        """The host's terminal is set as it was before; the shell has noted both."""
        self.screen.await_match(r"code \d")
        modes = (self.home / "modes").read_text()
        self.assertEqual(modes, (self.home / "modes_before").read_text())

    def test_ctrl_c_in_a_command_of_the_program_ends_it_through_the_emergency_save(self):
        players = "".join(f"PLAYER\nName:\nP{i}\nProgramExe:\nx\nEND_PLAYER\n" for i in range(2000))
        (self.home / "players").write_text(f"PLAYER_FILE\n{players}\n")
        (self.home / "script").write_text("readplayers players\naddallplayers\n"
                                          "set type roundrobin\nset name Kept\n")
        self.start_at_prompt("script", "-c", ">/dev/tty")
        self.screen.enter("createrrgames")
        self.screen.await_text("Adding game")
        self.screen.press("C-c")
        self.screen.await_text(EMERGENCY)
        self.screen.await_text("code 1")
        self.assertIn("Kept", (self.home / "emergency.ini").read_text())

    def test_ctrl_c_in_a_script_ends_it_as_it_always_did(self):
        (self.home / "script").write_text("echo begun >begun; exec sleep 1000\nset name Never\n")
        self.start("script", "-c")
        self.screen.await_that((self.home / "begun").exists, "the command")
        self.screen.press("C-c")
        self.screen.await_text(EMERGENCY)
        self.screen.await_last(PROMPT.strip())
        self.assertNotIn("Never", self.log())

    def test_signals_of_other_programs_end_it_as_they_always_did(self):
        for name in ("INT", "TERM", "HUP"):
            with self.subTest(name):
                self.start_at_prompt()
                self.screen.type("half a li")
                self.screen.await_last("> half a li")
                os.kill(self.program(), getattr(signal, f"SIG{name}"))
                self.screen.await_text(EMERGENCY)
                self.screen.await_text("code 1")
                self.screen.press("C-c")  # what plain reading has left in the line is the shell's
                self.screen.await_match(r"\^C\n+shell\$$")
                self.assert_is_given_back()

    def program(self):
        """The id of the program's process: of those in the window the one of its name."""
        tty = self.screen.tmux("display-message", "-p", "#{pane_tty}").strip()
        told = subprocess.run(["ps", "-t", tty.removeprefix("/dev/"), "-o", "pid=,args="],
                              check=True, capture_output=True, text=True).stdout
        ids = [int(line.split()[0]) for line in told.splitlines()
               if line.split()[1] == str(OPTIONS.program)]
        self.assertEqual(len(ids), 1, told)
        return ids[0]

    def test_a_fault_gives_the_terminal_back(self):
        self.start_at_prompt()
        os.kill(self.program(), signal.SIGSEGV)
        self.screen.await_text(EMERGENCY)
        self.screen.await_text("code 1")
        self.assert_is_given_back()

    def test_ctrl_d_at_an_empty_line_ends_the_input(self):
        self.start_at_prompt()
        self.screen.press("C-d")
        self.screen.await_text("code 1")
        self.assertNotIn(EMERGENCY, self.screen.text())
        self.assert_is_given_back()

    def test_a_line_can_be_typed_while_a_command_runs(self):
        self.start_at_prompt()
        self.screen.enter("echo begun >begun; while [ ! -e ended ]; do sleep 0.01; done")
        self.screen.await_that((self.home / "begun").exists, "the command")
        self.screen.enter("set name Ahead")
        (self.home / "ended").touch()
        self.screen.await_text("Name = Ahead")

    def test_long_help_goes_through_the_pager_of_the_user(self):
        pager = self.home / "pager"
        pager.write_text("#!/bin/sh\ncat >shown\necho paged by $0\n")
        pager.chmod(0o755)
        self.start_at_prompt(before="PAGER=./pager ")
        self.screen.enter("help set")
        self.screen.await_text("paged by ./pager")
        self.screen.await_last(">")
        self.assertNotIn("Short: set", self.screen.text())
        shown = (self.home / "shown").read_text()
        self.assertTrue(shown.startswith("Set: changes a setting"), shown)
        self.assertIn(shown, self.log())

    def test_short_help_does_not(self):
        self.start_at_prompt(before="PAGER='echo paged' ")
        self.screen.enter("help load")
        self.screen.await_match(r"Load: (.|\n)*\n>$")
        self.assertNotIn("\npaged", self.screen.text())

    def test_whoever_wants_no_pager_gets_none(self):
        for none in ("''", "cat"):
            with self.subTest(none):
                self.start_at_prompt(before=f"PAGER={none} ")
                self.screen.enter("help set")
                self.screen.await_match(r"(set \w+ (.|\n)*){3}\n>$")
                self.screen.enter("quit")
                self.screen.await_last(PROMPT.strip())

    def test_a_pager_that_is_missing_is_done_without(self):
        self.start_at_prompt(before="PAGER=no-such-pager ")
        self.screen.enter("help set")
        self.screen.await_match(r"(set \w+ (.|\n)*){3}\n>$")

    def test_less_is_the_pager_of_who_names_none(self):
        self.start_at_prompt(before="env -u PAGER ")
        self.screen.enter("help set")
        self.screen.await_last(":")
        self.screen.press("q")
        self.screen.await_last(">")
        self.screen.enter("get name")
        self.screen.await_text("Name = My Own Winboard Tourney")

    def test_ctrl_c_in_the_pager_is_the_pagers_own(self):
        pager = self.home / "pager"
        pager.write_text("#!/bin/sh\ntrap 'echo heard >>heard; touch ended' INT\n"
                         "touch begun; while [ ! -e ended ]; do sleep 0.01; done\n")
        pager.chmod(0o755)
        self.start_at_prompt(before="PAGER=./pager ")
        self.screen.enter("help set")
        self.screen.await_that((self.home / "begun").exists, "the pager")
        self.screen.press("C-c")
        self.screen.await_that(lambda: self.heard() == 1, "the signal")
        self.screen.enter("get name")
        self.screen.await_text("Name = My Own Winboard Tourney")

    def test_help_of_a_script_is_not_paged(self):
        (self.home / "script").write_text("help set\n")
        self.start("script", before="PAGER='echo paged' ")
        self.screen.await_text("code 1")
        self.assertNotIn("\npaged", self.screen.text())

    def test_a_message_waits_for_the_end_of_the_pager(self):
        self.start_at_prompt(before="PAGER=less ")
        self.start_runner_soon()
        self.screen.enter("help set")
        self.screen.await_last(":")
        self.screen.await_that(lambda: STARTED in self.log(), "the message in the log")
        self.assertNotIn(STARTED, self.screen.text())
        self.screen.press("q")
        self.screen.await_text(STARTED)

    def test_where_the_output_is_no_terminal_nothing_is_changed(self):
        plain = subprocess.run([OPTIONS.program], input=b"help set\nget name\nq\n", check=False,
                               capture_output=True, cwd=self.home)
        self.screen.enter(f"clear; {OPTIONS.program} >out; echo code $?")
        out = self.home / "out"
        self.screen.await_that(lambda: out.exists() and out.read_bytes().endswith(b"> "), "the prompt")
        for line in ("help set", "get name", "q"):
            self.screen.enter(line)
        self.screen.await_text("code 1")
        self.assertEqual(out.read_bytes(), plain.stdout)
        self.assertNotIn(b"\x1b", plain.stdout)

    def test_where_the_input_is_no_terminal_nothing_is_changed(self):
        (self.home / "lines").write_text("help load\nget name\n")
        self.start("<lines", before="PAGER='echo paged' ")
        self.screen.await_text("code 1")
        self.assertFalse((self.home / ".local").exists())
        self.assertNotIn("\npaged", self.screen.text())

    def test_the_log_holds_what_a_log_without_a_terminal_holds(self):
        self.start_at_prompt()
        for line in ("get name", "quit"):
            self.screen.enter(line)
        self.screen.await_text("code 1")
        at_terminal = self.log()
        subprocess.run([OPTIONS.program], input=b"get name\nquit\n", check=False,
                       capture_output=True, cwd=self.home)
        self.assertEqual(at_terminal, self.log())


class WithEditing(AtATerminal):
    def start_at_prompt(self, *words, before=""):
        """The prompt is there a moment before the program gets the keys."""
        super().start_at_prompt(*words, before=before)
        self.screen.await_editing()

    def test_a_line_is_edited(self):
        self.start_at_prompt()
        self.screen.type("set name Spring Turney")
        self.screen.press("Left", "Left", "Left", "Left", "Left")
        self.screen.type("o")
        self.screen.press("C-a", "Delete", "Delete", "Delete", "Delete", "C-e")
        self.screen.type("!")
        self.screen.press("Home")
        self.screen.type("set ")
        self.screen.await_last("> set name Spring Tourney!")
        self.screen.press("Enter")
        self.screen.await_text("Name = Spring Tourney!")

    def test_letters_of_other_languages_are_edited_whole(self):
        self.start_at_prompt()
        self.screen.type("set name Jägerü 棋")
        self.screen.press("Left", "Left", "BSpace")
        self.screen.await_last("> set name Jäger 棋")
        self.screen.press("Enter")
        self.screen.await_text("Name = Jäger 棋")

    def test_a_line_is_completed(self):
        (self.home / "spring.ini").touch()
        self.start_at_prompt()
        self.screen.type("sho")
        self.screen.press("Tab")
        self.screen.await_last("> Show")
        self.screen.press("Tab")
        self.screen.await_match(r"\nShowBrackets +ShowGames +ShowPlayers\n> Show$")
        self.screen.type("g")
        self.screen.press("Tab")
        self.screen.type("-st")
        self.screen.press("Tab")
        self.screen.type("r")
        self.screen.press("Tab")
        self.screen.await_last("> ShowGames -status ready")
        self.screen.press("C-u")
        self.screen.type("set pon")
        self.screen.press("Tab")
        self.screen.type("of")
        self.screen.press("Tab", "Enter")
        self.screen.await_text("Ponder is now OFF.")
        self.screen.type("load s")
        self.screen.press("Tab")
        self.screen.await_last("> load spring.ini")

    def test_players_and_participants_are_completed(self):
        (self.home / "players").write_text("".join(
            f"PLAYER\nName:\n{name}\nProgramExe:\nx\nEND_PLAYER\n"
            for name in ("Big Engine 2", "Big Engine 3", "Älter")).join(["PLAYER_FILE\n", "\n"]))
        self.start_at_prompt()
        self.screen.enter("readplayers players")
        self.screen.await_text("Players read.")
        self.screen.type("addplayer b")
        self.screen.press("Tab")
        self.screen.await_last("> addplayer Big Engine")
        self.screen.type("3")
        self.screen.press("Enter")
        self.screen.await_text("Player Big Engine 3 added to tourney.")
        self.screen.type("addplayer Ä")
        self.screen.press("Tab", "Enter")
        self.screen.await_text("Player Älter added to tourney.")
        self.screen.type("forfeit b")
        self.screen.press("Tab")
        self.screen.await_last("> forfeit Big Engine 3")

    def test_what_can_stand_nowhere_is_not_completed(self):
        self.start_at_prompt()
        self.screen.type("set foo ")
        self.screen.press("Tab", "Tab")
        self.screen.type("x")
        self.screen.await_last("> set foo x")

    def test_earlier_lines_are_there_at_the_next_start(self):
        self.start_at_prompt()
        for line in ("get name", "get type", "quit"):
            self.screen.enter(line)
        self.screen.await_text("code 1")
        self.assertEqual((self.home / ".local/state/tarvendo/history").read_text(),
                         "get name\nget type\nquit\n")
        self.start_at_prompt()
        self.screen.press("Up", "Up", "Up")
        self.screen.await_last("> get name")
        self.screen.press("Down", "Enter")
        self.screen.await_text("Type = SWISS.")
        self.screen.press("C-r")
        self.screen.type("na")
        self.screen.press("Escape", "Enter")
        self.screen.await_text("Name = My Own Winboard Tourney")

    def test_the_history_lies_where_the_user_keeps_such_files(self):
        self.restart_screen(XDG_STATE_HOME=str(self.directory / "state"))
        self.start_at_prompt()
        self.screen.enter("quit")
        self.screen.await_text("code 1")
        self.assertTrue((self.directory / "state/tarvendo/history").exists())
        self.assertFalse((self.home / ".local").exists())

    def test_a_history_that_cannot_be_kept_costs_nothing_but_itself(self):
        (self.home / ".local").write_text("a file")
        self.start_at_prompt()
        self.screen.enter("get name")
        self.screen.await_text("Name = My Own Winboard Tourney")
        self.screen.press("Up")
        self.screen.await_last("> get name")

    def test_answers_to_questions_are_edited_but_not_remembered(self):
        self.start_at_prompt()
        self.screen.enter("createplayer")
        self.screen.await_last("Name:")
        self.screen.press("Up", "Tab")
        self.screen.type("Omaga")
        self.screen.press("Left", "Left", "BSpace")
        self.screen.type("e")
        self.screen.await_last("Name:Omega")
        self.screen.press("Enter")
        for question in ("Dir", "InitString", "WhiteOptions", "BlackOptions"):
            self.screen.await_last(f"{question}:")
            self.screen.press("Enter")
        self.screen.await_last("ProgramExe:")
        self.screen.enter("omega")
        self.screen.await_last("Group:")
        self.screen.press("Enter")
        self.screen.await_text("Player Omega created.")
        self.screen.press("Up")
        self.screen.await_last("> createplayer")

    def assert_stays_whole(self, typed, lefts):
        """A message comes while that is being typed."""
        self.start_at_prompt()
        self.start_runner_soon()
        self.screen.type(typed)
        self.screen.press(*["Left"] * lefts)
        self.screen.await_text(STARTED)
        shown = "> " + typed
        rows = [shown[i:i + self.columns].rstrip() for i in range(0, len(shown), self.columns)]
        column = (len(shown) - lefts) % self.columns
        self.screen.await_that(lambda: self.screen.rows()[-len(rows):] == rows, "the whole line")
        text = self.screen.text()
        self.assertEqual(text.count(rows[0]), 1, text)
        self.assertRegex(text, r"\n\*+\nRunner started.\n\*+\n> " + re.escape(typed[:20]))
        self.screen.await_that(lambda: self.screen.cursor()[0] == column, f"column {column}")
        self.screen.press("Enter")
        self.screen.await_text("Name = " + typed.removeprefix("set name ")[:60])
        self.assertEqual(self.log().count(typed), 1)

    def test_a_message_leaves_the_line_whole_that_is_being_typed(self):
        self.assert_stays_whole("set name Spring Tourney", 5)

    def test_a_message_leaves_a_line_of_several_rows_whole(self):
        self.assert_stays_whole("set name Jäger " + "und so weiter " * 9 + "!", 60)

    def test_a_message_leaves_a_line_whole_that_fills_its_row(self):
        self.assert_stays_whole("set name " + "1234567" * 9 + "abcdef", 0)

    def test_a_message_finds_the_prompt_alone(self):
        self.start_at_prompt()
        self.start_runner_soon()
        self.screen.await_match(r"Runner started.\n\*+\n>$")
        self.assertEqual(self.screen.cursor()[0], 2)

    def test_the_program_is_stopped_and_goes_on(self):
        self.start_at_prompt()
        self.screen.type("get na")
        self.screen.await_last("> get na")
        self.screen.press("C-z")
        self.screen.await_match(r"Stopped(.|\n)*\nshell\$$")
        self.screen.enter("fg")
        self.screen.await_last("> get na")
        self.screen.type("me")
        self.screen.press("Enter")
        self.screen.await_text("Name = My Own Winboard Tourney")

    def test_a_window_of_another_size_has_the_line_too(self):
        self.start_at_prompt()
        self.screen.type("set name " + "x" * 60)
        self.screen.await_last("> set name " + "x" * 60)
        self.screen.tmux("resize-window", "-x", "50", "-y", "24")
        self.screen.await_last("x" * 21)
        self.screen.press("C-a")
        self.screen.type(" ")
        self.screen.await_last("x" * 22)

    def test_a_terminal_without_a_cursor_to_move_is_read_plainly(self):
        self.start(before="TERM=dumb ")
        self.screen.await_last(">")
        self.screen.enter("get name")
        self.screen.await_text("Name = My Own Winboard Tourney")
        self.assertFalse((self.home / ".local").exists())

    def test_the_user_may_have_bound_keys_of_his_own(self):
        (self.home / ".editrc").write_text('bind "^T" em-upper-case\n')
        self.start_at_prompt()
        self.screen.type("set name spring")
        self.screen.press("C-a", "M-f", "M-f", "C-t", "Enter")
        self.screen.await_text("Name = SPRING")


class OnASmallWindow(AtATerminal):
    columns = 40
    rows = 8

    def test_what_is_short_elsewhere_is_paged(self):
        self.start_at_prompt(before="PAGER='echo paged' ")
        self.screen.enter("help quit")
        self.screen.await_text("\npaged")


def read_options():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--program", type=pathlib.Path, required=True)
    parser.add_argument("--plain", action="store_true")
    _, others = parser.parse_known_args(namespace=OPTIONS)
    OPTIONS.program = OPTIONS.program.resolve()
    return others


if __name__ == "__main__":
    arguments = read_options()
    if OPTIONS.plain:
        del WithEditing
    unittest.main(argv=sys.argv[:1] + arguments)
