#!/usr/bin/env python3
"""A second search for the pairs of a Swiss round, to compare the program's with.

    second_search.py PRINT_CHAINS [--count N] [--seed S]

lets the test helper PRINT_CHAINS print N random chains (1,000, or what TARVENDO_SECOND_SEARCH says), from the seed S on, with
the program's answers, finds its own answer to each, and fails with the first chain whose answers differ.

It is written from docs/swiss-search.md alone, shares nothing with the program, and is named as that page names things: the numbers
in the comments are those of its sections.
"""

import argparse
import json
import os
import subprocess
import sys

FIRST, FLOATERS, FULL = "first", "floaters", "full"


def may_meet(state, other, level):
    """Whether two wishes for a colour allow a pair at that level."""
    if state == 2 or other == 2 or state % 2 != other % 2:
        return True
    yielding = {4: (), 8: (4, 5), 16: (4, 5, 8, 9)}[level]
    return state in yielding or other in yielding


def maximum_matching(players, neighbours):
    """A largest set of pairs among the players: {player: partner}. Augmenting paths, blossoms shrunk (Edmonds)."""
    partner = {}
    for root in players:
        if root not in partner:
            augment(root, set(players), neighbours, partner)
    return partner


def augment(root, players, neighbours, partner):
    """Looks for one path from the single player `root`, and swaps the pairs along it."""
    base = {player: player for player in players}
    parent, outer, queue = {}, {root}, [root]

    def ancestors(player):
        while True:
            player = base[player]
            yield player
            if player not in partner:
                return
            player = parent[partner[player]]

    def shrink(player, child, top, blossom):
        while base[player] != top:
            mate = partner[player]
            blossom.update((base[player], base[mate]))
            parent[player], child = child, mate
            player = parent[mate]

    def contract(one, other):
        above = set(ancestors(one))
        top = next(player for player in ancestors(other) if player in above)
        blossom = set()
        shrink(one, other, top, blossom)
        shrink(other, one, top, blossom)
        for player in players:
            if base[player] in blossom:
                base[player] = top
                if player not in outer:
                    outer.add(player)
                    queue.append(player)

    for player in queue:
        for other in neighbours[player] & players:
            if base[player] == base[other] or partner.get(player) == other:
                continue
            if other in outer:
                contract(player, other)
            elif other not in parent:
                parent[other] = player
                if other in partner:
                    outer.add(partner[other])
                    queue.append(partner[other])
                else:
                    swap_along(other, parent, partner)
                    return


def swap_along(end, parent, partner):
    while end is not None:
        new = parent[end]
        following = partner.get(new)
        partner[end], partner[new] = new, end
        end = following


class Graphs:
    """Who may be paired with whom, at each level, and questions about that."""

    def __init__(self, states, met, colours_count):
        numbers = range(1, len(states) + 1)
        self.met = {number: {number} for number in numbers}
        for one, other in met:
            self.met[one].add(other)
            self.met[other].add(one)
        self.at = {
            level: {
                one: {other for other in numbers if other not in self.met[one] and
                      (not colours_count or may_meet(states[one - 1], states[other - 1], level))}
                for one in numbers}
            for level in (4, 8, 16)}
        self.left = {}

    def left_over(self, players):
        """How many players a maximum matching leaves over."""
        key = frozenset(players)
        if key not in self.left:
            self.left[key] = len(key) - len(maximum_matching(sorted(key), self.at[16]))
        return self.left[key]

    def have_perfect_matching(self, players, level=16):
        players = list(players)
        if len(players) % 2:
            return False
        if level == 16:
            return self.left_over(players) == 0
        return len(maximum_matching(players, self.at[level])) == len(players)


class Bracket:
    def __init__(self, entries):
        self.entries = list(entries)  # players, in order
        self.arrivals = []
        self.floated = []  # players who have left it, in that order

    def free(self):
        gone = set(self.floated)
        return [player for player in self.entries if player not in gone]


class Search:
    def __init__(self, graphs, brackets):
        self.graphs = graphs
        self.chain = [Bracket(entries) for entries in brackets]
        self.made = [frozenset(entries) for entries in brackets]
        self.failed = {}  # 1: the largest k that a state has failed with; -1 in FIRST

    def run(self):
        """The answer: for each bracket its entries as [player, partner or -1, absent]; None when there is none."""
        if not self.pair_chain(0, FULL, 0):
            return None
        return [self.paired(bracket) for bracket in self.chain]

    # One bracket (2, 3)

    def choosers(self, bracket):
        """E, when an arrival has floated on; None when none has."""
        gone = set(bracket.floated)
        chosen = []
        for player in bracket.arrivals:
            if player in gone:
                return chosen
            chosen.append(player)
        return None

    def works(self, free, choosers, level=16):
        """Whether these can be paired, all pairs but one by somebody of `choosers` when there is such a list."""
        if choosers is None or len(free) <= 2:
            return self.graphs.have_perfect_matching(free, level)
        if len(free) % 2 or len(choosers) < len(free) // 2 - 1:
            return False
        graph = self.graphs.at[level]
        others = [player for player in free if player not in choosers]
        # Others do not pair with each other, but for one pair at most.
        bound = {player: graph[player] if player in choosers else graph[player] & set(choosers) for player in free}
        if len(maximum_matching(free, bound)) == len(free):
            return True
        for index, one in enumerate(others):
            for other in others[index + 1:]:
                rest = [player for player in free if player not in (one, other)]
                if other in graph[one] and len(maximum_matching(rest, bound)) == len(rest):
                    return True
        return False

    def can_pair(self, bracket):
        return self.works(bracket.free(), self.choosers(bracket))

    def paired(self, bracket):
        """The entries with the first pairing that the rules reach."""
        free, choosers = bracket.free(), self.choosers(bracket)
        levels = (4, 8, 16) if len(free) < 11 else (8, 16) if len(free) < 17 else (16,)
        level = next(level for level in levels if self.works(free, choosers, level))
        partner = self.first_pairing(free, bracket.arrivals if choosers is None else choosers, choosers is not None, level)
        gone = set(bracket.floated)
        return [[player, -1 if player in gone else partner[player], player in gone] for player in bracket.entries]

    def first_pairing(self, free, waiting, bound, level):
        """`waiting` choose first; `bound`: only they do, until two are left."""
        free, waiting, partner = list(free), list(waiting), {}

        def take(player, candidates):
            for other in candidates:
                if other == player or other not in self.graphs.at[level][player]:
                    continue
                rest = [one for one in free if one not in (player, other)]
                still = [one for one in waiting if one not in (player, other)]
                if self.works(rest, still if bound else None, level):
                    partner[player], partner[other] = other, player
                    free[:], waiting[:] = rest, still
                    return
            raise AssertionError("a bracket that works has no next pair")

        while free:
            first = free[0]
            half = len(free) // 2
            if len(free) == 2:
                take(first, free[1:])
            elif waiting:
                take(waiting[0], list(free))
            else:
                take(first, free[half:] + free[1:half])
        return partner

    # The chain

    def pair_chain(self, place, mode, k):
        bracket = self.chain[place]
        if place + 1 == len(self.chain):
            return self.here(place, mode, k)
        if not self.graphs.have_perfect_matching(self.players_from(place)):  # 4
            return False
        odd = len(bracket.entries) % 2
        if self.first_pass(place, odd):
            return True
        if mode == FIRST:
            return False
        if self.floater_pass(place, odd, min(k, len(self.players_from(place)) + 2)):  # 8
            return True
        if mode == FLOATERS:
            return False
        size = len(bracket.entries)
        if self.here(place, FULL, size) or self.float_down(place, FULL, size):
            return True
        for behind in self.chain[place + 1:]:
            bracket.entries += behind.entries
        del self.chain[place + 1:]
        return True  # 4: the perfect matching is there

    def state(self, place):
        return place, tuple(self.chain[place].arrivals)

    def first_pass(self, place, odd):
        state = self.state(place)
        if state in self.failed or not self.limits_suffice(place, 0):
            return False
        if self.float_down(place, FIRST, 1) if odd else self.here(place, FIRST, 0):
            return True
        self.failed[state] = -1
        return False

    def floater_pass(self, place, odd, k):
        state = self.state(place)
        for m in range(1 if odd else 2, k + 1, 2):
            if m <= self.failed.get(state, -1):
                continue
            if self.limits_suffice(place, m):
                if not odd and self.here(place, FLOATERS, m):
                    return True
                if self.float_down(place, FLOATERS, m):
                    return True
            self.failed[state] = m
        return False

    def here(self, place, mode, k):
        bracket = self.chain[place]
        if len(bracket.entries) % 2 or not self.can_pair(bracket):
            return False
        return place + 1 == len(self.chain) or self.pair_chain(place + 1, mode, k)

    def counts(self, entries, most):
        """The numbers of floaters that are tried."""
        m = entries % 2
        while m <= most:
            yield m
            if m >= entries or 2 * m > entries:
                return
            m += 2

    def float_down(self, place, mode, k):
        bracket = self.chain[place]
        fewest = max(self.graphs.left_over(bracket.entries), self.graphs.left_over(self.made_from(place + 1)))  # 7
        return any(self.choose(place, mode, k, m, 0)
                   for m in self.counts(len(bracket.entries), k) if m >= max(fewest, 1))

    def choose(self, place, mode, k, missing, start):
        bracket, behind = self.chain[place], self.chain[place + 1]
        if missing == 0:
            return self.can_pair(bracket) and self.pair_chain(place + 1, mode, k)
        for index in range(start, len(bracket.entries)):
            player = bracket.entries[index]
            if all(other in self.graphs.met[player] for other in behind.entries):
                continue  # not movable
            bracket.floated.append(player)
            behind.entries.append(player)
            behind.arrivals.append(player)
            if self.choice_can_work(place, mode, index + 1) and self.choose(place, mode, k, missing - 1, index + 1):
                return True
            bracket.floated.pop()
            behind.entries.pop()
            behind.arrivals.pop()
            if not self.choice_can_work(place, mode, index + 1):
                return False
        return False

    # What can be foreseen (4 to 6)

    def made_from(self, place):
        return frozenset().union(*self.made[place:])

    def players_from(self, place):
        return frozenset(self.chain[place].entries) | self.made_from(place + 1)

    def choice_can_work(self, place, mode, decided):
        if mode != FULL:
            return True
        bracket = self.chain[place]
        going = set(bracket.floated)
        staying = set(bracket.entries[:decided]) - going
        below = going | self.made_from(place + 1)
        graph = self.graphs.at[16]
        players = sorted(set(bracket.entries) | below)
        bound = {player: graph[player] - (below if player in staying else staying if player in below else set())
                 for player in players}
        return len(maximum_matching(players, bound)) == len(players)

    def limits(self, place, k):
        """How many may float out of each bracket from `place` on."""
        found, players, most, coming = [], 0, k, 0
        for index in range(place, len(self.chain)):
            size = len(self.chain[index].entries)
            players += size
            parity = players % 2
            if most % 2 != parity and most > 0:
                most -= 1
            coming = min(max(most, parity), list(self.counts(size + coming, size + coming + 2))[-1])
            found.append(coming)
        return found

    def limits_suffice(self, place, k):
        limits = self.limits(place, k)
        last = len(self.chain) - 1
        above = set(self.chain[place].entries)
        for index in range(place, last):
            if index > place:
                above |= self.made[index]
            if max(self.graphs.left_over(above), self.graphs.left_over(self.made_from(index + 1))) > limits[index - place]:
                return False
        for first in range(place + 1, last):
            run = set()
            for index in range(first, last):
                run |= self.made[index]
                if self.graphs.left_over(run) > limits[first - 1 - place] + limits[index - place]:
                    return False
        return True


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("print_chains")
    parser.add_argument("--count", type=int, default=int(os.environ.get("TARVENDO_SECOND_SEARCH", "1000")))
    parser.add_argument("--seed", type=int, default=1)
    options = parser.parse_args()
    command = [options.print_chains, str(options.seed), str(options.count)]
    output = subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout
    compared = paired = 0
    for line in output.splitlines():
        case = json.loads(line)
        graphs = Graphs(case["states"], case["met"], case["colours_count"])
        answer = Search(graphs, case["brackets"]).run()
        if answer != case["answer"]:
            sys.exit(f"chain of seed {case['seed']}: {line}\nthe second search finds {json.dumps(answer)}")
        compared += 1
        paired += answer is not None
    print(f"{compared} chains, {paired} of them paired, all as by the program")
    if compared < options.count * 9 // 10:
        sys.exit(f"only {compared} of {options.count} chains were compared")


if __name__ == "__main__":
    main()
