#pragma once

#include <unordered_map>
#include <vector>

#include "players/player.h"

namespace tarvendo {

/// Finds a participant's place in the list by its number, in constant time, for operations that go
/// over all games. Good for as long as the list does not change.
class ParticipantPlaces {
 public:
  explicit ParticipantPlaces(const std::vector<Player>& participants);

  /// The 0-based place of the participant with that number, or -1: a damaged tourney file may hold
  /// games of players that it does not hold.
  int Of(int number) const {
    const auto place = static_cast<std::size_t>(number) - 1;
    if (number >= 1 && place < in_its_place_.size() && in_its_place_[place]) return number - 1;
    if (elsewhere_.empty()) return -1;
    const auto found = elsewhere_.find(number);
    return found == elsewhere_.end() ? -1 : found->second;
  }

 private:
  std::vector<bool> in_its_place_;  ///< whether place i holds the participant i + 1, as it should
  std::unordered_map<int, int>
      elsewhere_;  ///< the places of the other numbers; empty but for damaged files
};

}  // namespace tarvendo
