#pragma once

namespace tarvendo {

class Game;
class Tourney;

/// Writes the game's batch file, deletes an old PGN file of it, sets it SPOOLED at the end of the
/// running order and prints "Game %d spooled.\n". False, with "Error opening file for writing:
/// %s\n" and the game unchanged, when the batch file cannot be written.
bool SpoolGame(Tourney& tourney, Game& game);

/// Spools the first game with that number that is not READY; nothing and false when there is none.
/// Number 0 stands for the next game: NOTHING DONE in the lowest round, the first of the list among
/// equals; when there is none, prints "All games are either ready or spooled!\n" and gives false.
bool Spool(Tourney& tourney, int number);

/// Spools every game of the round that is not READY. Round 0 stands for the lowest round with a
/// game that is NOTHING DONE; "All games are either spooled or ready!\n" when there is none. Always
/// true.
bool SpoolRound(Tourney& tourney, int round);

/// Spools every NOTHING DONE game of the participant, or says that there is none. False, with a
/// message, when nobody has the number.
bool SpoolPlayer(Tourney& tourney, int player_number);

/// Spools every NOTHING DONE game in the order of rounds, or says that there is none.
void SpoolAll(Tourney& tourney);

/// Spools every READY game without a result again. Returns whether at least one was spooled.
bool ReplayUnfinished(Tourney& tourney);

/// Sets every SPOOLED game back to NOTHING DONE after a last collection of results, deletes its
/// files and says so.
void Unspool(Tourney& tourney);

/// Collects what results there are, then spools every SPOOLED game again.
void RespoolAll(Tourney& tourney);

}  // namespace tarvendo
