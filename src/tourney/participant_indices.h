#pragma once

#include <unordered_map>
#include <vector>

#include "players/player.h"

namespace tarvendo {

/// Finds a participant's index in the list by its number, in constant time, for operations that go
/// over all games. Good for as long as the list does not change.
class ParticipantIndices {
 public:
  explicit ParticipantIndices(const std::vector<Player>& participants);

  /// The 0-based index of the participant with that number, or -1: a damaged tourney file may hold
  /// games of players that it does not hold.
  int Of(int number) const {
    const auto index = static_cast<std::size_t>(number) - 1;
    if (number >= 1 && index < is_usual_.size() && is_usual_[index]) return number - 1;
    if (others_.empty()) return -1;
    const auto found = others_.find(number);
    return found == others_.end() ? -1 : found->second;
  }

 private:
  std::vector<bool> is_usual_;           ///< whether participant i + 1 has the index i
  std::unordered_map<int, int> others_;  ///< the indices of the other numbers, in damaged files
};

}  // namespace tarvendo
