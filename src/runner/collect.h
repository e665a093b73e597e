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

/// The result that a PGN text tells: that of its first Result tag, which begins its line, read at
/// the fixed place where the value stands in a tag written in the standard way. UNFINISHED for any
/// other value, UNKNOWN without such a tag.
int ResultInPgn(const std::string& pgn);

/// The text of a game as the tourney's PGN file gets it: Event, Round, White and Black tell the
/// tourney's own data, a Number tag stands before White, all else is as it was. A last line without
/// line feed is lost.
std::string MergedPgn(const Tourney& tourney, const Game& game, const std::string& pgn);

/// Takes the result of a game over from its record `pgn`, which lies in the file `pgn_file`:
/// hands it to the group for the tourney's PGN file, sets the result and READY, forgets the names
/// of the game's files and announces the result.
void TakeResult(Tourney& tourney, PgnGroup& group, const Game& game, const std::string& pgn,
                const std::string& pgn_file);

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
