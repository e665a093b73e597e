#pragma once

namespace tarvendo {

class Player;
class Tourney;

// Questions to a participant's history, the games that it takes part in.

/// Whether the participant has a game in that round; only the first one of the round in its history
/// is looked at. With `must_be_finished` that game must also be READY.
bool HasGameInRound(const Tourney& tourney, const Player& player, int round, bool must_be_finished);

/// Whether the participant has as many games in that round as there are sub-rounds (READY ones
/// only, when `only_finished`).
bool RoundComplete(const Tourney& tourney, const Player& player, int round, bool only_finished);

}  // namespace tarvendo
