#include "pairing/match_problem.h"

namespace tarvendo {

std::size_t MatchProblem::AddGroup(const PlayerSet& members) {
  const std::size_t group = members_.size();
  members_.push_back(members);
  reach_.emplace_back(SeatCount());
  connected_.emplace_back();
  players_ |= members;
  members.ForEach([&](Seat seat) { group_of_[seat] = group; });
  return group;
}

void MatchProblem::Connect(std::size_t group, std::size_t other) {
  reach_[group] |= members_[other];
  reach_[other] |= members_[group];
  connected_[group].push_back(other);
  if (group != other) connected_[other].push_back(group);
}

void MatchProblem::Insert(Seat seat, std::size_t group) {
  group_of_[seat] = group;
  players_.Insert(seat);
  members_[group].Insert(seat);
  for (const std::size_t other : connected_[group])
    reach_[other].Insert(seat);
}

void MatchProblem::Erase(Seat seat) {
  const std::size_t group = group_of_[seat];
  players_.Erase(seat);
  members_[group].Erase(seat);
  for (const std::size_t other : connected_[group])
    reach_[other].Erase(seat);
}

}  // namespace tarvendo
