#include "tourney/participant_indices.h"

namespace tarvendo {

ParticipantIndices::ParticipantIndices(const std::vector<Player>& participants)
    : is_usual_(participants.size()) {
  for (std::size_t i = 0; i < participants.size(); ++i) {
    const int number = participants[i].number;
    is_usual_[i] = number >= 1 && static_cast<std::size_t>(number) == i + 1;
    if (!is_usual_[i]) others_.emplace(number, static_cast<int>(i));
  }
}

}  // namespace tarvendo
