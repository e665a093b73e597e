#pragma once

#include <vector>

namespace tarvendo {

class Game;
class Player;

/// The wish for a colour (players/player.h) that the participant has from its history in a Swiss
/// tourney; `games` are all of the tourney. With w games as White and b as Black: weak for the
/// other colour than that of the last game when w = b; medium for the colour that it had one time
/// less; absolute for one that it had two or more times less.
int ColourWish(const std::vector<Game>& games, const Player& player);

}  // namespace tarvendo
