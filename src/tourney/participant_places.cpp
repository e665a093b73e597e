#include "tourney/participant_places.h"

namespace tarvendo {

ParticipantPlaces::ParticipantPlaces(const std::vector<Player>& participants)
    : in_its_place_(participants.size()) {
  for (std::size_t i = 0; i < participants.size(); ++i) {
    const int number = participants[i].number;
    in_its_place_[i] = number >= 1 && static_cast<std::size_t>(number) == i + 1;
    if (!in_its_place_[i]) elsewhere_.emplace(number, static_cast<int>(i));
  }
}

}  // namespace tarvendo
