#pragma once

#include <optional>

namespace tarvendo {

class Game;
class Tourney;

/// The result that a game with a bye has without being played: won by the other player, lost by
/// both when both are byes. Nothing when two players meet, or when somebody is missing.
std::optional<int> ResultByBye(const Tourney& tourney, const Game& game);

}  // namespace tarvendo
