#pragma once

#include <cstddef>
#include <vector>

#include "pairing/bracket.h"

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

  /// The most floaters that leave the bracket at that place of the chain (0-based, from `first`
  /// on).
  std::size_t Of(std::size_t place) const { return limits_[place - first_]; }

 private:
  std::size_t first_;
  std::vector<std::size_t> limits_;
};

/// How many floaters TryFloatDown tries in a bracket of so many entries: `first`, which is 0 or 1,
/// and then every second number up to `most`. The first number that reaches the entries or exceeds
/// half of them is the last.
std::vector<std::size_t> FloaterCounts(std::size_t entries, std::size_t first, std::size_t most);

}  // namespace tarvendo
