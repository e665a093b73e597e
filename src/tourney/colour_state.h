#pragma once

namespace tarvendo {

class Player;
class Tourney;

/// Sets the participant's wish for a colour (players/player.h) from its history, after a game was
/// added to it. With w games as White and b as Black: none in the last round of a Swiss tourney;
/// weak for the other colour than that of the last game when w = b; medium for the colour it had
/// once less often; absolute when it had it at least twice less often. Does nothing in a round
/// robin.
void UpdateColourState(const Tourney& tourney, Player& player);

/// Whether the current round is the last one of a Swiss tourney, in which colours never block a
/// pair.
bool IsLastSwissRound(const Tourney& tourney);

}  // namespace tarvendo
