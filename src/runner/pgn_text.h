#pragma once

#include <string>

namespace tarvendo {

class Game;
class Tourney;

/// The result that a PGN text tells: that of its first Result tag, which begins its line, read at
/// the fixed place where the value stands in a tag written in the standard way. UNFINISHED for any
/// other value, UNKNOWN without such a tag.
int ResultInPgn(const std::string& pgn);

/// The text of a game as the tourney's PGN file gets it: Event, Round, White and Black tell the
/// tourney's own data, a Number tag stands before White, all else is as it was. A last line without
/// line feed is lost.
std::string MergedPgn(const Tourney& tourney, const Game& game, const std::string& pgn);

}  // namespace tarvendo
