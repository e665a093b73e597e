#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tarvendo {

/// How many games a PGN text has, as WinBoard counts them.
struct PgnCount {
  std::size_t games = 0;
  int bad_line = 0;  ///< 1-based; 0 when the text can be understood
  std::string why;   ///< what is wrong with it: "a comment that does not end"
};

/// Counts the games of a PGN text. Each begins with tags: WinBoard does not count one that has none
/// behind one that has, so that such a text is not understood. Tags that follow each other without
/// a move or a result between them belong to one game, whatever blank lines and comments there are.
PgnCount CountPgnGames(std::string_view text);

}  // namespace tarvendo
