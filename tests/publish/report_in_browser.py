#!/usr/bin/env python3
"""Looks at the report's page in headless Chromium.

    report_in_browser.py PROGRAM --axe DIRECTORY [--screenshots DIRECTORY]

DIRECTORY is where axe-core is installed to, with npm, when it is not there yet. The tourneys are made (made_tourney.py),
the pages written by the built program. Each page is looked at in several ways: on a wide and on a narrow screen, dark, on
paper, and without scripts. Prints each fault; exit code 1 when there is one. With TARVENDO_LONG set large tourneys are
looked at too, and axe-core looks at more.
"""

import argparse
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

import page_checks
from browser import Browser
from made_tourney import HOSTILE, LATIN1, MadeTourney, names_of
from report_check import read_json, write_report

HERE = pathlib.Path(__file__).parent
HOSTILE_TITLE = "Cup of </title><script>document.title='x'</script> & Sons"

TOURNEYS = {
    "round_robin": MadeTourney(names=names_of(8), sub_rounds=4),
    "swiss": MadeTourney(kind="swiss", names=[*names_of(11), "BYE"], rounds=7, played=0.8),
    "sixty": MadeTourney(names=[*HOSTILE, LATIN1, *names_of(59 - len(HOSTILE))], title=HOSTILE_TITLE, played=0.9),
    "nothing_played": MadeTourney(names=names_of(4), played=0),
}

LARGE = {
    "three_hundred": MadeTourney(names=names_of(300), records=False),
    "a_thousand": MadeTourney(kind="swiss", names=names_of(1000), rounds=11, records=False),
}

LOOKS = {
    "wide": {"width": 1400},
    "narrow": {"width": 390, "height": 844},
    "dark": {"width": 1400, "dark": True},
    "dark_narrow": {"width": 390, "height": 844, "dark": True},
    "no_script": {"width": 1400, "script": False},
    "paper": {"width": 1050, "paper": True},
}

LONG = "TARVENDO_LONG" in os.environ

# A page that takes longer is of no use to anybody; on a free machine the largest takes less than two.
LOADED_IN = 30  # seconds


def install_axe(directory):
    """The source of axe-core, which looks for what shuts people out; npm checks what it gets against the lock file."""
    script = directory / "node_modules" / "axe-core" / "axe.min.js"
    locked = directory / "package-lock.json"
    if not script.exists() or not locked.exists() or \
            locked.read_bytes() != (HERE / "axe" / "package-lock.json").read_bytes():
        directory.mkdir(parents=True, exist_ok=True)
        for name in ("package.json", "package-lock.json"):
            shutil.copy(HERE / "axe" / name, directory / name)
        try:
            result = subprocess.run(["npm", "ci", "--ignore-scripts", "--no-audit", "--no-fund"], cwd=directory,
                                    stdin=subprocess.DEVNULL, capture_output=True, timeout=120, check=False)
            why = result.stderr.decode("utf-8", "replace") if result.returncode else ""
        except (OSError, subprocess.TimeoutExpired) as error:
            why = str(error)
        if why or not script.exists():
            sys.exit(f"axe-core could not be installed from the npm registry, so nothing was looked at:\n{why}")
    return script.read_text(encoding="utf-8")


def look_at(browser, name, report, axe, screenshots):
    data = read_json(report)
    faults = []
    for look, settings in LOOKS.items():
        began = time.monotonic()
        page = browser.open(report / "index.html", **settings)
        found = page_checks.read_everywhere(page, data)
        if look == "no_script":
            found += page_checks.reads_well_without_script(page, data)
        elif look == "wide" or (look in ("narrow", "dark") and (name == "round_robin" or LONG and name != "sixty")):
            found += page_checks.has_no_serious_fault(page, axe, data)
        if look == "paper":
            found += page_checks.is_of_use_on_paper(page, data)
        else:
            found += page_checks.lines_up(page)
        if look == "dark":
            found += page_checks.is_dark(page)
        if look == "wide":
            found += page_checks.sorts_by_a_click(page, data)
            found += page_checks.keeps_heads_in_view(page)
            found += page_checks.shows_single_results(page, data)
        if screenshots:
            page.screenshot(screenshots / f"{name}-{look}.png")
        page.close()
        print(f"{name}, {look}: {len(found)} faults, {time.monotonic() - began:.1f} s", flush=True)
        faults += [f"{name}, {look}: {fault}" for fault in found]
    return faults


def look_at_large(browser, name, report, screenshots):
    page = browser.open(report / "index.html", width=1400)
    faults = page_checks.is_quick(page, LOADED_IN)
    size = (report / "index.html").stat().st_size
    print(f"{name}: {size / 1e6:.1f} MB, loaded in {page.seconds:.1f} s, "
          f"{page.evaluate('document.getElementsByTagName(`*`).length')} elements")
    if screenshots:
        page.screenshot(screenshots / f"{name}.png", whole=False)
    page.close()
    return [f"{name}: {fault}" for fault in faults]


def check_reload(browser, report):
    """A page of a tourney with games left loads itself anew, one without does not."""
    return [f"reload: {fault}" for fault in page_checks.loads_itself_anew(browser, report / "index.html")]


def parse_arguments():
    parser = argparse.ArgumentParser(description="Looks at the report's page in headless Chromium.")
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("--axe", type=pathlib.Path, required=True, help="where axe-core is, or is installed to")
    parser.add_argument("--screenshots", type=pathlib.Path, help="also write pictures for somebody to look at")
    return parser.parse_args()


def main():
    arguments = parse_arguments()
    program = arguments.program.resolve()
    axe = install_axe(arguments.axe)
    if arguments.screenshots:
        arguments.screenshots.mkdir(parents=True, exist_ok=True)
    faults = []
    with tempfile.TemporaryDirectory() as directory, Browser() as browser:
        for name, tourney in {**TOURNEYS, **(LARGE if LONG else {})}.items():
            place = pathlib.Path(directory) / name
            place.mkdir()
            report = write_report(program, tourney, place)
            if name in LARGE:
                faults += look_at_large(browser, name, report, arguments.screenshots)
            else:
                faults += look_at(browser, name, report, axe, arguments.screenshots)
        faults += check_reload(browser, pathlib.Path(directory) / "swiss" / "out")
    print("\n".join(faults) if faults else "no faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
