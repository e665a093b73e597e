#pragma once

#include <cstddef>
#include <vector>

namespace tarvendo {

/// What two players have scored against each other, in all their games.
struct PairScore {
  std::size_t first = 0;  ///< 0-based indices of the players, first < second
  std::size_t second = 0;
  double score = 0;  ///< points of `first`: a win is 1, a draw 0.5
  double games = 0;
};

/// The players in groups within which ratings can be told: whoever can be reached from a player by
/// steps "has scored against", and reaches it in the same way, is in its group. So a player who
/// has won or lost everything is alone, and so are, each for itself, parts of the field that have
/// not met. These are the strongly connected components of that graph, for which alone the
/// likelihood has a maximum (L. R. Ford, "Solution of a ranking problem from binary comparisons",
/// American Mathematical Monthly 64, 1957); found by R. Tarjan's algorithm, "Depth-first search and
/// linear graph algorithms", SIAM Journal on Computing 1, 1972. Gives the players of each group, by
/// their indices, the largest group first.
std::vector<std::vector<std::size_t>> EloGroups(std::size_t players,
                                                const std::vector<PairScore>& pairs);

}  // namespace tarvendo
