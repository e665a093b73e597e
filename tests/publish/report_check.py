#!/usr/bin/env python3
"""Lets the built program write reports of made tourneys, and computes their numbers anew.

    report_check.py PROGRAM

Points, counts, ranks, ratings, intervals and chances of tourney.json are held against what plain Python makes of the
games in it (elo_check.py), the two CSV files and games.pgn against tourney.json.
"""

import csv
import json
import pathlib
import re
import subprocess
import sys
import tempfile

import elo_check
from made_tourney import HOSTILE, LATIN1, MadeTourney, names_of

SCORE = {"1-0": 1.0, "0-1": 0.0, "1/2-1/2": 0.5}


class Check:
    def __init__(self):
        self.faults = 0

    def same(self, what, expected, found):
        if expected != found:
            self.faults += 1
            print(f"{what}:\n  expected {expected!r}\n  found    {found!r}")

    def near(self, what, expected, found, by):
        if found is None or abs(expected - found) > by:
            self.same(what, expected, found)


def write_report(program, tourney, directory):
    """Makes the tourney's files in the directory and lets the program write its report; the report's directory."""
    (directory / "script.txt").write_text(f"load {tourney.write(directory)}\n", encoding="ascii")
    result = subprocess.run([program, "script.txt", "--report", "out"], cwd=directory, stdin=subprocess.DEVNULL,
                            capture_output=True, timeout=120, check=False)
    if result.stderr or not (directory / "out" / "index.html").exists():
        sys.exit(f"The program has written no report:\n{result.stdout.decode()}{result.stderr.decode()}")
    return directory / "out"


def read_json(report):
    return json.loads((report / "tourney.json").read_text(encoding="utf-8"))


def fought(data):
    byes = {player["number"] for player in data["participants"] if player["bye"]}
    for game in data["games"]:
        if game["state"] == "played" and game["result"] in SCORE and not {game["white"], game["black"]} & byes:
            yield game["white"], game["black"], SCORE[game["result"]]


def counts(check, data):
    games = list(fought(data))
    for player in data["participants"]:
        number = player["number"]
        scores = [s for w, b, s in games if w == number] + [1 - s for w, b, s in games if b == number]
        found = [player[field] for field in ("games", "won", "drawn", "lost")]
        check.same(f"{player['name']}: games, won, drawn, lost",
                   [len(scores), scores.count(1.0), scores.count(0.5), scores.count(0.0)], found)
    check.same("played", len(games), data["counts"]["played"])


def ratings(check, data):
    numbers = [player["number"] for player in data["participants"] if player["rating"] and "elo" in player["rating"]]
    place = {number: i for i, number in enumerate(numbers)}
    scores = {}
    for white, black, score in fought(data):
        if white not in place or black not in place:
            continue
        first, second = sorted((place[white], place[black]))
        points, games = scores.get((first, second), (0.0, 0.0))
        scores[first, second] = (points + (score if first == place[white] else 1 - score), games + 1)
    elo = elo_check.ratings(len(numbers), scores)
    table = elo_check.covariances(elo, scores)
    players = {player["number"]: player for player in data["participants"]}
    lines = {player["number"]: i for i, player in enumerate(data["participants"])}
    for number, i in place.items():
        rating = players[number]["rating"]
        margin = 1.959963984540054 * table[i][i] ** 0.5
        check.near(f"Elo of {number}", elo[i], rating["elo"], 0.02)
        check.near(f"low end of {number}", elo[i] - margin, rating["low"], 0.02)
        check.near(f"high end of {number}", elo[i] + margin, rating["high"], 0.02)
        for other, j in place.items():
            if other != number:
                check.near(f"chance of {number} over {other}", elo_check.superiority(elo, table, i, j),
                           data["superiority"][lines[number]][lines[other]], 0.0002)
    check.same("participants with a rating", True, len(numbers) > 1)


def tables(check, data, report):
    with open(report / "standings.csv", encoding="utf-8", newline="") as file:
        rows = list(csv.DictReader(file))
    players = {str(player["number"]): player for player in data["participants"]}
    check.same("standings.csv: lines", len(players), len(rows))
    for row in rows:
        player = players[row["number"]]
        check.same("standings.csv: name", player["name"], row["name"])
        check.same("standings.csv: rank", "" if player["bye"] else str(player["rank"]), row["rank"])
        check.near("standings.csv: points", player["points"], float(row["points"]), 0)
    ranks = [int(row["rank"]) for row in rows if row["rank"]]
    check.same("standings.csv: in the order of rank", sorted(ranks), ranks)
    with open(report / "games.csv", encoding="utf-8", newline="") as file:
        rows = list(csv.DictReader(file))
    check.same("games.csv: games", [str(game["number"]) for game in data["games"]], [row["game"] for row in rows])
    for row, game in zip(rows, data["games"]):
        check.same("games.csv: result", game.get("result", ""), row["result"])
        check.same("games.csv: ending", game.get("ending", ""), row["ending"])
        check.same("games.csv: White", players[str(game["white"])]["name"], row["white"])


def records(check, data, report):
    pgn = (report / "games.pgn").read_text(encoding="utf-8")
    numbers = [int(number) for number in re.findall(r'^\[Number "(\d+)"\]$', pgn, re.M)]
    expected = [game["number"] for game in data["games"] if "plies" in game]
    check.same("games.pgn: games", expected, numbers)
    known = [game["termination"] for game in data["games"] if "termination" in game]
    check.same("games.pgn: Termination", known, re.findall(r'^\[Termination "(.*)"\]$', pgn, re.M))


def check_tourney(program, name, tourney):
    check = Check()
    with tempfile.TemporaryDirectory() as directory:
        report = write_report(program, tourney, pathlib.Path(directory))
        data = read_json(report)
        check.same("games in all.pgn", bool(data["counts"]["played"]), any("plies" in game for game in data["games"]))
        counts(check, data)
        ratings(check, data)
        tables(check, data, report)
        records(check, data, report)
    print(f"{name}: {check.faults} faults")
    return check.faults


def main(arguments):
    program = pathlib.Path(arguments[0]).resolve()
    tourneys = {
        "round robin": MadeTourney(names=names_of(9), sub_rounds=2),
        "round robin, names of all kinds": MadeTourney(names=[*HOSTILE, LATIN1], played=0.8),
        "swiss with a bye": MadeTourney(kind="swiss", names=[*names_of(15), "BYE"], rounds=8, played=0.9),
    }
    return 1 if sum(check_tourney(program, name, tourney) for name, tourney in tourneys.items()) else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
