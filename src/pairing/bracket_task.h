#pragma once

#include <vector>

#include "pairing/bracket.h"
#include "pairing/pair_graph.h"
#include "pairing/player_set.h"

namespace tarvendo {

/// What is to be paired inside one bracket.
///
/// The floaters choose their partners first, in the order in which they came. One that has itself
/// been moved on still stands among them, and nobody can be its partner: when its turn comes with
/// more than two players left, the bracket cannot be paired. So only those listed before it are
/// choosers, and they must bring the bracket down to the last two.
struct BracketTask {
  std::vector<Seat> free;  ///< in the order of the entries
  std::vector<Seat>
      choosers;  ///< the free floaters, in the order of arrival, up to one that moved on
  bool stops_after_choosers = false;  ///< whether there is such a one

  /// Whether the choosers cannot bring the bracket down to two players even if each takes another
  /// one.
  bool HasTooFewChoosers() const {
    return stops_after_choosers && free.size() > 2 * choosers.size() + 2;
  }

  /// Whether the choosers' turn matters: the last two players pair anyway.
  bool NeedsChoosers() const { return stops_after_choosers && free.size() > 2; }

  PlayerSet FreeSet(std::size_t seats) const;
};

/// The task that the bracket sets as it stands.
BracketTask MakeTask(const Bracket& bracket);

}  // namespace tarvendo
