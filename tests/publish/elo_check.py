#!/usr/bin/env python3
"""Ratings by other means than the program's, to hold its own against.

    elo_check.py SCORE...          prints the ratings of a field; SCORE is FIRST,SECOND,POINTS,GAMES

The ratings are those of Hunter's minorization-maximization, step by step, in plain Python; the
intervals come from the information matrix, inverted by elimination after its mean was pinned with
a Lagrange multiplier. Slow, and short enough to be read.
"""

import math
import sys

ELO = 400 / math.log(10)


def ratings(players, scores):
    """scores: {(first, second): (points of first, games)}. Elo with the mean 0."""
    strength = [1.0] * players
    points = [0.0] * players
    for (first, second), (score, games) in scores.items():
        points[first] += score
        points[second] += games - score
    for _ in range(200000):
        share = [0.0] * players
        for (first, second), (_, games) in scores.items():
            part = games / (strength[first] + strength[second])
            share[first] += part
            share[second] += part
        new = [won / sum_ for won, sum_ in zip(points, share)]
        mean = math.exp(sum(map(math.log, new)) / players)
        new = [value / mean for value in new]
        change = max(abs(math.log(a / b)) for a, b in zip(new, strength))
        strength = new
        if change < 1e-14:
            break
    return [ELO * math.log(value) for value in strength]


def inverse(matrix):
    size = len(matrix)
    rows = [row[:] + [float(i == j) for j in range(size)] for i, row in enumerate(matrix)]
    for column in range(size):
        pivot = max(range(column, size), key=lambda row: abs(rows[row][column]))
        rows[column], rows[pivot] = rows[pivot], rows[column]
        scale = rows[column][column]
        rows[column] = [value / scale for value in rows[column]]
        for row in range(size):
            factor = rows[row][column]
            if row != column and factor != 0:
                rows[row] = [a - factor * b for a, b in zip(rows[row], rows[column])]
    return [row[size:] for row in rows]


def covariances(elo, scores):
    """In Elo, squared: the block of the inverse of the bordered information matrix."""
    players = len(elo)
    matrix = [[0.0] * (players + 1) for _ in range(players + 1)]
    for (first, second), (_, games) in scores.items():
        expected = 1 / (1 + 10 ** ((elo[second] - elo[first]) / 400))
        weight = games * expected * (1 - expected)
        matrix[first][first] += weight
        matrix[second][second] += weight
        matrix[first][second] -= weight
        matrix[second][first] -= weight
    for player in range(players):
        matrix[player][players] = matrix[players][player] = 1.0
    return [[value * ELO * ELO for value in row[:players]] for row in inverse(matrix)[:players]]


def margins(elo, scores):
    """Halves of the 95 % intervals."""
    table = covariances(elo, scores)
    return [1.959963984540054 * math.sqrt(table[i][i]) for i in range(len(elo))]


def superiority(elo, table, first, second):
    variance = table[first][first] + table[second][second] - 2 * table[first][second]
    return 0.5 * math.erfc(-(elo[first] - elo[second]) / math.sqrt(2 * variance))


def main(arguments):
    scores = {}
    for argument in arguments:
        first, second, points, games = argument.split(",")
        scores[int(first), int(second)] = (float(points), float(games))
    players = 1 + max(max(pair) for pair in scores)
    elo = ratings(players, scores)
    for player, (rating, margin) in enumerate(zip(elo, margins(elo, scores))):
        print(f"{player}: {rating:.2f} +- {margin:.2f}")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
