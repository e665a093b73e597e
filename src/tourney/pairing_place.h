#pragma once

#include <cstddef>

namespace tarvendo {

class Game;
class Tourney;

/// The place of a game's pairing in the game list, counted from 0. The games of one pairing are
/// those that stand one behind the other in the list, of the same round and between the same two
/// participants, whatever their colours: both CreateRRGames and the pairing of a Swiss round add
/// all sub-rounds of a pairing together. A game that is not in the list gets the number of pairings
/// in it.
std::size_t PairingPlace(const Tourney& tourney, const Game& game);

}  // namespace tarvendo
