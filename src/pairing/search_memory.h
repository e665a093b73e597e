#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "pairing/bracket.h"

namespace tarvendo {

/// What the search has found out about a bracket with the floaters that came in, the brackets
/// behind it being as they were made. A failed search leaves no trace in the brackets, so it would
/// fail again.
struct SearchRecord {
  std::optional<bool> all_can_be_paired;
  std::vector<std::size_t> must_float;  ///< see ChainOutlook; empty until it is asked for
  bool first_pass_failed = false;
  std::size_t failed_with_floaters = 0;  ///< the largest number that the floater pass failed with
};

/// The records of one search. References stay good.
class SearchMemory {
 public:
  /// The record of the bracket at that place of the chain.
  SearchRecord& Of(std::size_t place, const Bracket& bracket) {
    return records_[{place, bracket.FloatersIn()}];
  }

 private:
  std::map<std::pair<std::size_t, std::vector<int>>, SearchRecord> records_;
};

}  // namespace tarvendo
