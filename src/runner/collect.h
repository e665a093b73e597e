#pragma once

#include <string>

namespace tarvendo {

class FileSystem;
class Game;
class Tourney;
class TourneyFile;

/// The result that a PGN text tells: that of its first Result tag, read at the fixed place where
/// the value stands in a tag written in the standard way. UNFINISHED for any other value, UNKNOWN
/// without such a tag.
int ResultInPgn(const std::string& pgn);

/// The text of a game as the tourney's PGN file gets it: Event, Round, White and Black tell the
/// tourney's own data, a Number tag stands before White, all else is as it was. A last line without
/// line feed is lost.
std::string MergedPgn(const Tourney& tourney, const Game& game, const std::string& pgn);

/// Collects the game with that number when its PGN file can be read: appends it to the tourney's
/// PGN file
/// ("Error copying pgn-file!\n" when that fails), sets its result and READY, deletes its files,
/// announces the result and writes the HTML table. False, and nothing done or printed, without such
/// a game or file.
bool CollectResult(Tourney& tourney, FileSystem& files, TourneyFile& file, int game_number);

/// Collects every SPOOLED game whose PGN file is there, then recomputes GamesState. The table is
/// written once, behind the last one, but a Swiss tourney's rounds move on after each. The game
/// that is being played is left alone while its PGN file is empty.
void CollectAll(Tourney& tourney, FileSystem& files, TourneyFile& file);

/// Whether the game's PGN file is not there or holds nothing (WinBoard may not have got round to it
/// yet).
bool LacksPgn(FileSystem& files, const Game& game);

}  // namespace tarvendo
