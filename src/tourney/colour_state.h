#pragma once

#include <vector>

namespace tarvendo {

class Game;
class Player;

/// The wish for a colour (players/player.h) that the participant has from its history in a Swiss
/// tourney; `games` are all of the tourney. With w games as White and b as Black: weak for the
/// other colour than that of the last game when w = b; medium for the colour it had once less
/// often; absolute when it had it at least twice less often.
int ColourWish(const std::vector<Game>& games, const Player& player);

}  // namespace tarvendo
