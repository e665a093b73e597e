#pragma once

#include <cstddef>

namespace tarvendo {

class Game;
class Tourney;

/// Adds the games of a pairing in that round to the end of the list: one in each of so many
/// sub-rounds, in which the two change colours from game to game. `white` and `black` are the
/// numbers of those who have these colours in the first.
void AddGamesOfPairing(Tourney& tourney, int white, int black, int round, int sub_rounds);

/// The index (0-based) of a game's pairing among all pairings of the list. The games of one pairing
/// are those that stand one behind the other in the list, in the same round and between the same
/// two participants, whatever their colours. A game that is not in the list gets the number of
/// pairings in it.
std::size_t PairingIndex(const Tourney& tourney, const Game& game);

}  // namespace tarvendo
