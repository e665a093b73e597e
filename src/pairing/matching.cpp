#include "pairing/matching.h"

namespace tarvendo {

Matching::Matching(std::size_t seats) : partner_(seats, kNoSeat), paired_(seats), search_(seats) {}

void Matching::Join(Seat seat, Seat other) {
  partner_[seat] = other;
  partner_[other] = seat;
  paired_.Insert(seat);
  paired_.Insert(other);
}

void Matching::Part(Seat seat) {
  const Seat other = partner_[seat];
  if (other == kNoSeat) return;
  partner_[seat] = kNoSeat;
  partner_[other] = kNoSeat;
  paired_.Erase(seat);
  paired_.Erase(other);
}

void Matching::Adapt(const MatchProblem& problem) {
  const PlayerSet paired = paired_;
  paired.ForEach([&](Seat seat) {
    const bool fits = problem.Players().Contains(seat) && partner_[seat] != kNoSeat &&
                      problem.MayPair(seat, partner_[seat]);
    if (!fits) Part(seat);
  });
}

void Matching::JoinSingles(const MatchProblem& problem) {
  PlayerSet single = problem.Players();
  single -= paired_;
  const PlayerSet all_single = single;
  all_single.ForEach([&](Seat seat) {
    if (!single.Contains(seat)) return;
    const Seat other = FirstCommonSeat(single, problem.AllowedBy(seat), problem.ReachOf(seat));
    if (other == kNoSeat) return;
    Join(seat, other);
    single.Erase(seat);
    single.Erase(other);
  });
}

std::size_t Matching::MakeLargest(const MatchProblem& problem) {
  Adapt(problem);
  JoinSingles(problem);
  PlayerSet single = problem.Players();
  single -= paired_;
  PlayerSet done_with(partner_.size());
  std::size_t left_single = 0;
  single.ForEach([&](Seat seat) {
    if (partner_[seat] != kNoSeat) return;
    if (search_.Augment(problem, partner_, paired_, seat, done_with)) return;
    search_.AddReached(done_with);
    ++left_single;
  });
  return left_single;
}

bool Matching::MakePerfect(const MatchProblem& problem) {
  if (problem.Players().Count() % 2 != 0) return false;
  Adapt(problem);
  JoinSingles(problem);
  PlayerSet single = problem.Players();
  single -= paired_;
  for (Seat seat = FirstCommonSeat(single); seat != kNoSeat; seat = FirstCommonSeat(single)) {
    if (!Augment(problem, seat)) return false;
    single -= paired_;
  }
  return true;
}

bool Matching::Augment(const MatchProblem& problem, Seat single) {
  const Seat other =
      FirstCommonSeatOutside(paired_, problem.AllowedBy(single), problem.ReachOf(single));
  if (other != kNoSeat) {
    Join(single, other);
    return true;
  }
  return search_.Augment(problem, partner_, paired_, single, PlayerSet(partner_.size()));
}

}  // namespace tarvendo
