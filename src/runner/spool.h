#pragma once

namespace tarvendo {

class FileSystem;
class Game;
class RunningGames;
class Tourney;
class TourneyFile;

/// Writes the game's batch file (a game with a bye has none), deletes an old PGN file of the game,
/// sets it SPOOLED at the end of the running order and prints "Game %d spooled.\n". False, with
/// "Error opening file for writing: %s\n" and the game unchanged, when the batch file cannot be
/// written. A PGN file that belongs to a game that is being played, or not yet judged, stays.
bool SpoolGame(Tourney& tourney, FileSystem& files, const Game& game);

/// The same, but prints nothing.
bool SpoolSilently(Tourney& tourney, FileSystem& files, const Game& game);

/// Spools the first game with that number that is not READY; nothing and false when there is none.
/// Number 0 stands for the next game: NOTHING DONE in the lowest round, the first of the list among
/// equals; when there is none, prints "All games are either ready or spooled!\n" and gives false.
bool Spool(Tourney& tourney, FileSystem& files, int number);

/// Spools every game of the round that is not READY. Round 0 stands for the lowest round with a
/// game that is NOTHING DONE; "All games are either spooled or ready!\n" when there is none.
void SpoolRound(Tourney& tourney, FileSystem& files, int round);

/// Spools every NOTHING DONE game of the participant, or says that there is none, or that
/// nobody has the number.
void SpoolPlayer(Tourney& tourney, FileSystem& files, int player_number);

/// Spools every NOTHING DONE game in the order of rounds, or says that there is none.
void SpoolAll(Tourney& tourney, FileSystem& files);

/// Spools every READY game without a result again. Returns whether at least one was spooled.
bool ReplayUnfinished(Tourney& tourney, FileSystem& files);

/// Sets every SPOOLED game back to NOTHING DONE after a last collection of results, deletes its
/// files and says so.
void Unspool(Tourney& tourney, FileSystem& files, TourneyFile& file, const RunningGames& running);

/// Collects what results there are, then spools every SPOOLED game again.
void RespoolAll(Tourney& tourney, FileSystem& files, TourneyFile& file,
                const RunningGames& running);

}  // namespace tarvendo
