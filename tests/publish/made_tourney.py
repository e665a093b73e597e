"""Tourneys that were played by dice, as the files that the program reads: for the tests of the report.

    MadeTourney(kind="swiss", names=[...], rounds=7).write(directory)

writes tourney.ini and all.pgn into the directory and gives the name of the first. The dice fall the
same way every time.
"""

import random

ENGINES = ("Aurelia 4.2", "Borealis", "Cinnabar 11", "Dunlin", "Ember Fox 0.9", "Fjord 3", "Gneiss", "Halcyon 2.1",
           "Iolite", "Juniper", "Kestrel 7", "Lumen", "Marlin X", "Nimbus 1.4", "Obsidian", "Petrel", "Quill 5",
           "Rook Lift", "Sable", "Tern 8", "Umbra", "Vireo", "Wren 6.0", "Xenon Pawn", "Yarrow", "Zephyr 10")

HOSTILE = ("<script>document.title='x'</script>", "</table></td><img src=x onerror=alert(1)>", "\"Quoted\" <b>bold",
           "O'Neill &amp; Sons", "Ελληνικά Σκάκι", "Шахматный Движок", "国際象棋引擎", "محرك الشطرنج",
           "a\u202egnp.evil", "Ungetrennterlangernameohneeinenzwischenraum" * 3, "A name of many words " * 6,
           "=1+1", "tab\there", "♞ Knight ♞", "-->", "]]>", "${x} %s %n", "e\u0301clair\u0301\u0302\u0303")
LATIN1 = "Geschütz Größe".encode("latin-1")

RESULTS = {1.0: (2, "1-0"), 0.5: (8, "1/2-1/2"), 0.0: (4, "0-1")}
ENDINGS = {1.0: ("White mates", "Black resigns", "Black forfeits on time", "Xboard adjudication: Checkmate"),
           0.5: ("Draw by repetition", "Xboard adjudication: Insufficient mating material", "Draw agreed"),
           0.0: ("Black mates", "White resigns", "Xboard: Forfeit due to illegal move: e1g1")}


def names_of(count):
    names = []
    for number in range(count):
        turn, place = divmod(number, len(ENGINES))
        names.append(ENGINES[place] + (f" #{turn + 1}" if turn else ""))
    return names


class MadeTourney:
    """kind "swiss" or "round robin"; `played` is the share of games that have a result; a name that is "BYE" is
    a bye."""

    def __init__(self, kind="round robin", names=(), rounds=7, sub_rounds=1, played=1.0, title="Autumn League",
                 seed=1, records=True):
        self.is_swiss = kind == "swiss"
        self.names = [name if isinstance(name, bytes) else name.encode("utf-8") for name in names]
        self.rounds, self.sub_rounds, self.title = rounds, sub_rounds, title
        self.records = records
        self.dice = random.Random(seed)
        self.strength = [self.dice.gauss(0, 150) for _ in self.names]
        self.games = []
        self.points = [0.0] * len(self.names)
        pair = self.pair_swiss if self.is_swiss else self.pair_all
        pair()
        if not self.is_swiss:
            self.rounds = len(self.names) - 1
        for game in self.games[int(len(self.games) * played):]:
            game["score"] = None

    def is_bye(self, player):
        return self.names[player] == b"BYE"

    def play(self, white, black, round_, sub_round):
        if self.is_bye(white) or self.is_bye(black):
            score = 0.0 if self.is_bye(white) else 1.0
        else:
            expected = 1 / (1 + 10 ** ((self.strength[black] - self.strength[white] - 30) / 400))
            draw = 0.5 * 4 * expected * (1 - expected)
            thrown = self.dice.random()
            win = expected - draw / 2
            score = 1.0 if thrown < win else 0.5 if thrown < win + draw else 0.0
        self.points[white] += score
        self.points[black] += 1 - score
        self.games.append({"white": white, "black": black, "round": round_, "sub_round": sub_round,
                           "score": score})

    def pair_all(self):
        players = list(range(len(self.names)))
        if len(players) % 2:
            players.append(None)
        for round_ in range(1, len(players)):
            for i in range(len(players) // 2):
                white, black = players[i], players[-1 - i]
                if white is None or black is None:
                    continue
                for sub_round in range(1, self.sub_rounds + 1):
                    if (round_ + i + sub_round) % 2:
                        self.play(white, black, round_, sub_round)
                    else:
                        self.play(black, white, round_, sub_round)
            players.insert(1, players.pop())

    def pair_swiss(self):
        met = set()
        for round_ in range(1, self.rounds + 1):
            free = sorted(range(len(self.names)), key=lambda player: -self.points[player])
            while len(free) > 1:
                first = free.pop(0)
                other = next((p for p in free if frozenset((first, p)) not in met), free[0])
                free.remove(other)
                met.add(frozenset((first, other)))
                pair = (first, other) if (round_ + first) % 2 else (other, first)
                for sub_round in range(1, self.sub_rounds + 1):
                    self.play(*(pair if sub_round % 2 else pair[::-1]), round_, sub_round)

    def tourney_lines(self):
        played = [game for game in self.games if game["score"] is not None]
        yield from ("TOURNEY_FILE", "", "tourney.ini", 0, 0, 3 if len(played) == len(self.games) else 1, 1, 0)
        current = max((game["round"] for game in played), default=1)
        yield from (current, self.rounds, len(self.games), self.sub_rounds, 0 if self.is_swiss else 1)
        yield from (0, 0, 0, "", self.title, "", "all.pgn", "", "", "winboard.exe", "", "", 40, 150, 2)
        yield len(self.names)
        places = [[] for _ in self.names]
        for place, game in enumerate(self.games):
            places[game["white"]].append(place)
            places[game["black"]].append(place)
        for number, name in enumerate(self.names, 1):
            yield from (1, 0, 2, 0, number, 0, 0, 0, "", "", "", "", name)
            yield from ("bye" if name == b"BYE" else "engine", "", len(places[number - 1]), *places[number - 1])
        yield len(self.games)
        for number, game in enumerate(self.games, 1):
            is_played = game["score"] is not None
            yield from (game["black"] + 1, number, RESULTS[game["score"]][0] if is_played else 1, game["round"], number,
                        4 if is_played else 1, game["sub_round"], game["white"] + 1)
            yield from ("", self.names[game["black"]], "", self.names[game["white"]])

    def record(self, number, game):
        dice = random.Random(number)
        result = RESULTS[game["score"]][1]
        moves = []
        plies = dice.randrange(30, 160)
        for ply in range(plies):
            if ply % 2 == 0:
                moves.append(f"{ply // 2 + 1}.")
            moves.append(f"{'Nf3' if ply % 2 == 0 else 'Nc6'} {{+0.{dice.randrange(100):02d}/12 {dice.randrange(1, 60) / 10}}}")
        ending = dice.choice(ENDINGS[game["score"]])
        head = (f'[Event "{self.title}"]\n[Site "here"]\n[Date "2026.11.22"]\n[Round "{game["round"]}"]\n'
                f'[Number "{number}"]\n').encode()
        head += b'[White "' + self.names[game["white"]] + b'"]\n[Black "' + self.names[game["black"]] + b'"]\n'
        return head + f'[Result "{result}"]\n\n{" ".join(moves)}\n{{{ending}}} {result}\n\n'.encode()

    def write(self, directory):
        lines = [line if isinstance(line, bytes) else str(line).encode("utf-8") for line in self.tourney_lines()]
        (directory / "tourney.ini").write_bytes(b"\n".join(lines) + b"\n")
        if self.records:
            played = [(number, game) for number, game in enumerate(self.games, 1)
                      if game["score"] is not None and not self.is_bye(game["white"]) and not self.is_bye(game["black"])]
            (directory / "all.pgn").write_bytes(b"".join(self.record(number, game) for number, game in played))
        return "tourney.ini"
