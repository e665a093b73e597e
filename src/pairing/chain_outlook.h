#pragma once

#include <cstddef>
#include <vector>

#include "pairing/bracket.h"
#include "pairing/floater_limits.h"
#include "pairing/match_problem.h"
#include "pairing/matching.h"
#include "pairing/pair_graph.h"

namespace tarvendo {

/// What can be foreseen of the search without doing it. Every answer of "no" is a proof that the
/// search would fail; "yes" promises nothing, unless it is said. See chain_outlook.cpp.
///
/// A place is that of a bracket in the chain, from 0; the brackets behind it must be as they were
/// made, it may hold floaters that came in.
class ChainOutlook {
 public:
  /// `graph` is that of the last colour level. Both must outlive the outlook.
  ChainOutlook(const PairGraph& graph, const std::vector<Bracket>& brackets);

  /// Whether everybody in the chain from that place on could be paired if there were no brackets.
  /// "Yes" promises success to the search in full mode, which can merge the brackets.
  bool AllCanBePaired(std::size_t place);

  /// For each bracket from that place to the last but one: how many players of the brackets from
  /// `place` to it cannot be paired among themselves, so that they must float out of it.
  std::vector<std::size_t> MustFloat(std::size_t place);

  /// Whether nobody has to float where the limits forbid it. `must_float` is that of the place.
  bool LimitsSuffice(std::size_t place, const std::vector<std::size_t>& must_float,
                     const FloaterLimits& limits);

  /// How many players of the bracket at that place and of all behind it, as they were made, cannot
  /// be paired among themselves, so that as many must come from above.
  std::size_t NeededFromAbove(std::size_t place);

  /// While floaters are chosen in the bracket at that place: whether everybody from there on could
  /// still be paired. Those floated already may only be paired behind the bracket, the other
  /// entries before `decided` only in it. A floater may go as far as it likes.
  bool ChoiceCanWork(std::size_t place, std::size_t decided);

 private:
  void CountNeededFromAbove();
  void CountLeftOver();

  /// Whether so few players are left over by each run of brackets behind `place` that they can
  /// float out of it, or others in.
  bool RunsSuffice(std::size_t place, const FloaterLimits& limits) const;

  const PairGraph& graph_;
  const std::vector<Bracket>& brackets_;
  std::vector<PlayerSet> own_;   ///< the players of each bracket as it was made
  std::vector<PlayerSet> from_;  ///< ... and of all behind it
  // Both empty until they are asked for.
  std::vector<std::size_t> needed_from_above_;
  /// [i][n]: how many players of the n + 1 brackets from i on cannot be paired among themselves.
  std::vector<std::vector<std::size_t>> left_over_;
  Matching wide_;  ///< of the last question, a start for the next one
};

}  // namespace tarvendo
