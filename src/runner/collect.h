#pragma once

#include <string>
#include <vector>

#include "platform/host.h"

namespace tarvendo {

class FileSystem;
class Game;
class PgnGroup;
class RunningGames;
class Tourney;
class TourneyFile;

/// Takes the result of a game over from its record `pgn`, which lies in the file `pgn_file`:
/// hands it to the group for the tourney's PGN file, sets the result and READY, forgets the names
/// of the game's files and announces the result.
void TakeResult(Tourney& tourney, PgnGroup& group, const Game& game, const std::string& pgn,
                const std::string& pgn_file);

/// Announces the result of a game that is READY.
void AnnounceResult(const Game& game);

/// Moves the rounds on as the table behind a result would. For a result that is not the last one
/// the table itself is not written: the next one would soon take its place.
void MoveOnAsATableDoes(Tourney& tourney);

/// Collects every SPOOLED game whose PGN file is there, then recomputes GamesState. The table is
/// written once, behind the last one, but a Swiss tourney's rounds move on after each. Passed over
/// are games that are under way here, and those whose claim somebody holds. A claim that nobody
/// holds is settled first (runner/adoption.h).
void CollectAll(Tourney& tourney, FileSystem& files, TourneyFile& file,
                const RunningGames& running);

}  // namespace tarvendo
