#!/usr/bin/env python3
"""Compares a table.htm, as headless Chromium sees it, with the text table.

    page_in_browser.py table.htm --text table.txt --title "My Cup" [--pictures]
                       [--screenshot shot.png]

table.txt is the text table of the same tourney with the same columns, but for the bar. The page is
opened as it is, in a frame of a page of this script, which reads it and writes down what it found;
several pages can be read by one start of the browser, which takes longer than the reading.
Checked are: the title and the heading; rows, columns, headings and every cell; the bar, of
characters or (--pictures) of pictures that have really been loaded; that the page holds no script
and none ran. Prints each difference; exit code 1 when there is one, or when no Chromium is found.
"""

import argparse
import html
import json
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

BROWSERS = ("chromium", "chromium-browser", "google-chrome")

BROWSER_OPTIONS = (
    "--headless",
    "--no-sandbox",
    "--disable-gpu",
    "--disable-dev-shm-usage",
    "--disable-background-networking",
    "--disable-component-update",
    "--disable-sync",
    "--no-first-run",
    "--hide-scrollbars",
    "--window-size=1000,700",
    "--allow-file-access-from-files",  # so that the reading page may look into the frame
)

READER = """<!DOCTYPE html>
<pre id="found"></pre>
<script>
function read(page) {
  const cells = row => Array.from(row.cells, cell => cell.textContent);
  return {
    title: page.title,
    heading: page.querySelector('font[size="6"]').textContent,
    tables: page.querySelectorAll('table').length,
    rows: Array.from(page.querySelector('table').rows, cells),
    pictures: Array.from(page.querySelector('table').rows, row => Array.from(
        row.querySelectorAll('img'), img => ({name: img.src.replace(/.*[/]/, ''),
                                              width: img.naturalWidth,
                                              height: img.naturalHeight}))),
    elements: Array.from(new Set(Array.from(page.querySelectorAll('*'), e => e.localName))).sort(),
    handlers: Array.from(page.querySelectorAll('*')).filter(
        e => Array.from(e.attributes).some(a => a.name.startsWith('on'))).length,
    links: Array.from(page.links, link => link.href),
    footer: page.body.textContent.trim().split('\\n').pop(),
  };
}
addEventListener('load', () => {
  const found = Array.from(document.querySelectorAll('iframe'), frame => read(frame.contentDocument));
  document.getElementById('found').textContent = JSON.stringify(found);
});
</script>
"""

# What a page may be made of. No script, no style, nothing that loads but pictures.
ELEMENTS = {"html", "head", "meta", "title", "body", "p", "font", "br", "table", "tbody", "tr", "td",
            "center", "img", "hr", "a"}

# Headings of the text form that have another name in the page.
HEADINGS = {"No": "Number", "Pts": "Points"}

FOOTER = "This tourney was arranged with Tarvendo, a tournament manager for chess engines."


def find_browser():
    for name in BROWSERS:
        path = shutil.which(name)
        if path:
            return path
    sys.exit("No Chromium found. On Debian: apt-get install chromium")


def run_browser(directory, *options):
    command = [find_browser(), *BROWSER_OPTIONS, f"--user-data-dir={directory}/profile", *options]
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=120,
                          check=False)


def read_pages(pages):
    """What the browser makes of each page, as the reader's dictionaries."""
    with tempfile.TemporaryDirectory() as directory:
        reader = pathlib.Path(directory) / "reader.html"
        addresses = [html.escape(page.resolve().as_uri()) for page in pages]
        frames = [f'<iframe src="{address}"></iframe>\n' for address in addresses]
        reader.write_text(READER + "".join(frames), encoding="utf-8")
        result = run_browser(directory, "--virtual-time-budget=20000", "--dump-dom",
                             reader.as_uri())
        dom = result.stdout.decode("utf-8", "replace")
        found = re.search(r'<pre id="found">(.+?)</pre>', dom, re.DOTALL)
        if not found:
            complaints = result.stderr.decode("utf-8", "replace")
            sys.exit(f"The browser could not read {', '.join(map(str, pages))}:\n{dom}\n{complaints}")
        return json.loads(html.unescape(found.group(1)))


def take_screenshot(page, target):
    with tempfile.TemporaryDirectory() as directory:
        run_browser(directory, f"--screenshot={target.resolve()}", page.resolve().as_uri())
    if not target.exists():
        sys.exit(f"No screenshot of {page}")


def read_text_table(path):
    """The lines of a text table as lists of cells, without the line of dashes."""
    lines = path.read_text(encoding="cp1252").splitlines()
    rows = [line.split("|")[:-1] for line in lines if line.count("|") > 0]
    return rows[:1] + rows[2:]


def bar_of(points):
    """"|##\\|" for "2.5"."""
    whole, half = points.strip(" *").split(" ")[0].split(".")
    return "|" + "#" * int(whole) + ("\\" if half == "5" else "") + "|"


def pictures_of(points):
    names = {"|": "break.gif", "#": "full.gif", "\\": "half.gif"}
    return [names[piece] for piece in bar_of(points)]


class Comparison:
    def __init__(self):
        self.differences = 0

    def same(self, what, expected, found):
        if expected != found:
            self.differences += 1
            print(f"{what}:\n  expected {expected!r}\n  found    {found!r}")

    def row(self, number, headings, expected, found):
        for heading, text, cell in zip(headings, expected, found):
            is_cross = heading.strip().isdigit()
            self.same(f"row {number}, column {heading.strip()}", text if is_cross else text.strip(),
                      cell if is_cross else cell.strip())

    def table(self, expected, found, pictures):
        headings = [HEADINGS.get(text.strip(), text.strip()) for text in expected[0]]
        self.same("headings", headings, found["rows"][0])
        self.same("number of rows", len(expected), len(found["rows"]))
        points = headings.index("Points")
        for number, (text, cells) in enumerate(zip(expected[1:], found["rows"][1:]), 1):
            self.same(f"row {number}, number of columns", len(headings) + 1, len(cells))
            self.row(number, headings, text, cells)
            self.same(f"row {number}, bar", "" if pictures else bar_of(text[points]), cells[-1])
            self.same(f"row {number}, pictures", pictures_of(text[points]) if pictures else [],
                      [picture["name"] for picture in found["pictures"][number]])

    def pictures_are_loaded(self, found):
        pictures = [picture for row in found["pictures"] for picture in row]
        self.same("pictures that are not loaded", [],
                  sorted({p["name"] for p in pictures if p["width"] <= 0}))
        self.same("a height for all pictures", True, len({p["height"] for p in pictures}) <= 1)

    def nothing_but_text(self, found):
        self.same("elements that no table holds", [],
                  [name for name in found["elements"] if name not in ELEMENTS])
        self.same("elements with handlers", 0, found["handlers"])
        self.same("links", ["https://tarvendo.example.org/"], found["links"])
        self.same("footer", FOOTER, found["footer"])


def differences(found, text, title, pictures):
    """Prints how a page, as it was read, differs from the text table; how often it does."""
    comparison = Comparison()
    # A title that a script has changed shows here too.
    comparison.same("title", title, found["title"])
    comparison.same("heading", title, found["heading"])
    comparison.same("number of tables", 1, found["tables"])
    comparison.table(read_text_table(text), found, pictures)
    comparison.pictures_are_loaded(found)
    comparison.nothing_but_text(found)
    return comparison.differences


def parse_arguments():
    parser = argparse.ArgumentParser(
        description="Compares a table.htm, seen by a browser, with its text table.")
    parser.add_argument("page", type=pathlib.Path)
    parser.add_argument("--text", type=pathlib.Path, required=True,
                        help="the text table of the same tourney")
    parser.add_argument("--title", required=True, help="the tourney's name")
    parser.add_argument("--pictures", action="store_true", help="the bars are made of pictures")
    parser.add_argument("--screenshot", type=pathlib.Path,
                        help="also write a PNG for somebody to look at")
    return parser.parse_args()


def main():
    arguments = parse_arguments()
    page = read_pages([arguments.page])[0]
    found = differences(page, arguments.text, arguments.title, arguments.pictures)
    if arguments.screenshot:
        take_screenshot(arguments.page, arguments.screenshot)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
