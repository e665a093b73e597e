#pragma once

#include <cstddef>
#include <vector>

#include "pairing/bracket.h"
#include "pairing/matching.h"
#include "pairing/pair_graph.h"

namespace tarvendo {

/// How many floaters can leave each bracket of the rest of a chain, at the most.
///
/// Pairs take players in twos, so the number of floaters that leave a bracket is odd or even
/// whatever is chosen: as the number of players is up to and with that bracket. A search with up to
/// k floaters hands on to the next bracket the largest number within k of that parity, and the next
/// one the largest within that; a bracket whose first pass works needs one floater or none. And no
/// bracket lets more go than about half of its entries, those who came included (FloaterCounts): so
/// a small bracket before a large one bounds what the large one can get from above.
class FloaterLimits {
 public:
  /// For the brackets from `first` (0-based) on; floaters already in that one are among its
  /// entries. `most` is k; the first pass alone has 0.
  FloaterLimits(const std::vector<Bracket>& brackets, std::size_t first, std::size_t most);

  /// The most floaters that leave that bracket of the chain (0-based, from `first` on).
  std::size_t Of(std::size_t index) const { return limits_[index - first_]; }

 private:
  std::size_t first_;
  std::vector<std::size_t> limits_;
};

/// How many floaters TryFloatDown tries in a bracket of so many entries: `first`, which is 0 or 1,
/// and then every second number up to `most`. The first number that reaches the entries or exceeds
/// half of them is the last.
std::vector<std::size_t> FloaterCounts(std::size_t entries, std::size_t first, std::size_t most);

/// What can be foreseen of the search without doing it. Every answer of "no" is a proof that the
/// search would fail; "yes" promises nothing, unless it is said. See chain_outlook.cpp.
///
/// An index is a bracket's in the chain, from 0. The brackets behind it must be as they were made;
/// it may itself hold floaters that came in.
class ChainOutlook {
 public:
  /// `graph` is that of the last colour level. Both must outlive the outlook.
  ChainOutlook(const PairGraph& graph, const std::vector<Bracket>& brackets);

  /// Whether everybody in the chain from that bracket on could be paired if there were no brackets.
  /// "Yes" promises success to the search in full mode, which can merge the brackets.
  bool AllCanBePaired(std::size_t index);

  /// For each bracket from that one to the last but one: how many players of the brackets from
  /// `index` to it cannot be paired among themselves, so that they must float out of it.
  std::vector<std::size_t> MustFloat(std::size_t index);

  /// Whether nobody has to float where the limits forbid it. `must_float` is MustFloat(index).
  bool LimitsSuffice(std::size_t index, const std::vector<std::size_t>& must_float,
                     const FloaterLimits& limits);

  /// How many players of that bracket and of all behind it, as they were made, cannot be paired
  /// among themselves, so that as many must come from above.
  std::size_t NeededFromAbove(std::size_t index);

  /// While floaters are chosen in that bracket: whether everybody from there on could still be
  /// paired. Those floated already may only be paired behind the bracket, the other entries before
  /// `decided` only in it. A floater may go as far as it likes.
  bool ChoiceCanWork(std::size_t index, std::size_t decided);

 private:
  void CountNeededFromAbove();
  void CountLeftOver();

  /// Whether each run of brackets behind `index` leaves so few players over that they can float out
  /// of it, or be paired with others who float in.
  bool RunsSuffice(std::size_t index, const FloaterLimits& limits) const;

  const PairGraph& graph_;
  const std::vector<Bracket>& brackets_;
  std::vector<PlayerSet> own_;   ///< the players of each bracket as it was made
  std::vector<PlayerSet> from_;  ///< and of all behind it
  // These two are empty until they are asked for.
  std::vector<std::size_t> needed_from_above_;
  /// [i][n]: how many players of the n + 1 brackets from i on cannot be paired among themselves.
  std::vector<std::vector<std::size_t>> left_over_;
  Matching wide_;  ///< of the last question, a start for the next one
};

}  // namespace tarvendo
