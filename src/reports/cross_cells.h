#pragma once

#include <string>
#include <vector>

namespace tarvendo {

class Tourney;

/// The measures of the cross part of a table: one column for each opponent (round robin) or each
/// round (Swiss).
struct CrossLayout {
  int columns = 0;     ///< participants, or Rounds
  int width = 0;       ///< characters of one cell
  int sub_rounds = 1;  ///< how many sub-rounds have a mark; at least 1
  bool long_cells = false;
};

/// The measures for a tourney. Long cells make no difference in a Swiss tourney without sub-rounds.
/// So that an absurd SubRounds cannot exhaust the memory, the marks of all cells together are
/// limited to some ten millions; sub-rounds beyond that are not shown.
CrossLayout LayOutCross(const Tourney& tourney, bool long_cells);

/// The cross cells of every participant in list order: its cells one behind the other, each exactly
/// layout.width characters, short ones filled with blanks on the right. Made in one pass over the
/// games.
///
///   round robin          "+"  "=-"  "X"    one mark for each sub-round, seen from the participant
///   Swiss                "+W12 "           mark, own colour, opponent
///   Swiss, sub-rounds    "+= 12"           one mark for each sub-round, opponent in three columns
///   long cells           "1.5/2  "         points of READY games, number of READY games
///
/// A mark is "+" for a win, "-" for a loss (both may lose), "=" for a draw, "*" for a game that is
/// READY without such a result, and a blank for a game still to be played. Of several games in one
/// place the first of the list is shown. Games of rounds, sub-rounds or players that the table has
/// no place for are left out.
std::vector<std::string> CrossCells(const Tourney& tourney, const CrossLayout& layout);

}  // namespace tarvendo
