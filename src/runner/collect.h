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

/// What a table behind a result that is not the last one would do: the page itself is soon written
/// over, but the rounds that it moves on are part of the tourney.
void MoveOnAsATableDoes(Tourney& tourney);

/// Collects every SPOOLED game whose PGN file is there, then recomputes GamesState. The table is
/// written once, behind the last one, but a Swiss tourney's rounds move on after each. Games that
/// are under way or whose claim somebody holds are passed by; a claim that nobody holds is settled
/// first (runner/adoption.h).
void CollectAll(Tourney& tourney, FileSystem& files, TourneyFile& file,
                const RunningGames& running);

}  // namespace tarvendo
