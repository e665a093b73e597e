"""A terminal to type at and to look at: a window of tmux's, with a shell of its own."""

import os
import pathlib
import re
import shutil
import subprocess
import time

PATIENCE = 30  # seconds; reached only when a test fails
PROMPT = "shell$ "


class Screen:
    """Works in a directory that is the user's home, where the shell starts."""

    made = 0

    def __init__(self, home, columns=80, rows=24, **environment):
        self.home = pathlib.Path(home)
        self.home.mkdir(parents=True, exist_ok=True)
        self.socket = self.home / f"tmux{Screen.made}"
        Screen.made += 1
        kept = {name: os.environ[name] for name in ("PATH",) if name in os.environ}
        self.environment = {
            **kept, "HOME": str(self.home), "LANG": "C.UTF-8", "TZ": "UTC", "HISTFILE": "",
            **environment}
        self.tmux("new-session", "-d", "-x", str(columns), "-y", str(rows), "-c", str(self.home),
                  f"exec env PS1='{PROMPT}' bash --norc --noprofile -i")
        self.await_last(PROMPT.strip())

    def close(self):
        """Ends the window with all that runs in it, which may still have something to write."""
        tty = self.tmux("display-message", "-p", "#{pane_tty}", check=False).strip()
        self.tmux("kill-server", check=False)
        deadline = time.monotonic() + PATIENCE
        while tty and time.monotonic() < deadline and self.runs_at(tty):
            time.sleep(0.02)

    @staticmethod
    def runs_at(tty):
        told = subprocess.run(["ps", "-t", tty.removeprefix("/dev/"), "-o", "pid="], check=False,
                              capture_output=True, text=True)
        return told.stdout.strip() != ""

    def tmux(self, *words, check=True):
        command = [shutil.which("tmux"), "-u", "-S", str(self.socket), "-f", "/dev/null", *words]
        return subprocess.run(command, check=check, env=self.environment, capture_output=True,
                              text=True, encoding="utf-8").stdout

    # --- Typing -----------------------------------------------------------------------------------

    def type(self, text):
        """The keys of a text, without the Enter key."""
        self.tmux("send-keys", "-l", "--", text)

    def press(self, *keys):
        """Keys by tmux's names: Enter, Tab, C-c, Up."""
        self.tmux("send-keys", *keys)

    def enter(self, text):
        self.type(text)
        self.press("Enter")

    # --- Looking ----------------------------------------------------------------------------------

    def rows(self):
        """What the window shows, row by row, without the empty ones at the end."""
        return self.tmux("capture-pane", "-p").rstrip("\n").split("\n")

    def text(self):
        return "\n".join(self.rows())

    def cursor(self):
        """Column and row, both counted from 0."""
        column, row = self.tmux("display-message", "-p", "#{cursor_x} #{cursor_y}").split()
        return int(column), int(row)

    def await_that(self, holds, what):
        """Looks at the screen again and again until it is as it should be."""
        deadline = time.monotonic() + PATIENCE
        while time.monotonic() < deadline:
            if holds():
                return
            time.sleep(0.02)
        raise AssertionError(f"{what} did not come; the screen shows:\n{self.text()}")

    def await_text(self, text):
        self.await_that(lambda: text in self.text(), repr(text))

    def await_editing(self):
        """Waits until the program gets each key as it is typed; until then the terminal shows keys by itself."""
        tty = self.tmux("display-message", "-p", "#{pane_tty}").strip()

        def gets_keys():
            told = subprocess.run(["stty", "-a", "-F", tty], check=True, capture_output=True, text=True)
            return "-icanon" in told.stdout
        self.await_that(gets_keys, "the editing of lines")

    def await_match(self, pattern):
        self.await_that(lambda: re.search(pattern, self.text()), pattern)

    def await_last(self, row):
        """Waits until the last row that is not empty is this one (blanks at its end are not seen)."""
        self.await_that(lambda: self.rows()[-1] == row, f"the last row {row!r}")
