// Maximum matching in a graph that need not have two sides.
//
// A set of pairs can be made larger exactly when there is an augmenting path: from a single player
// to another one, over pairs that are by turns not made and made. Swap them along the path, and one
// more pair is made. The search grows a tree from the single player. Those at an even distance
// (outer) look for a new partner; whoever they reach is inner, and its old partner becomes outer in
// turn. When two outer players may be paired, the way between them closes a circle of odd length, a
// blossom, in which everybody can be left over by going round one way or the other: so all of it
// becomes outer and counts as one player, its base.
//
//   a - b = c - d     a and d single, "=" a pair that is made, "-" one that could be made
//   a = b   c = d     after the swap
//
// J. Edmonds, "Paths, trees, and flowers", Canadian Journal of Mathematics 17 (1965), 449-467. The
// bases are kept in disjoint sets after H. N. Gabow, "An efficient implementation of Edmonds'
// algorithm for maximum matching on graphs", Journal of the ACM 23 (1976), 221-234. Neighbours are
// found a word of 64 players at a time, so one search costs at the most a few n * n / 64 steps.

#include "pairing/matching.h"

#include <algorithm>
#include <utility>

namespace tarvendo {
namespace {

constexpr std::size_t kNoBlossom = static_cast<std::size_t>(-1);

}  // namespace

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

AlternatingSearch::AlternatingSearch(std::size_t seats)
    : single_(seats),
      unseen_(seats),
      outer_(seats),
      reached_(seats),
      came_from_(seats, kNoSeat),
      base_(seats, kNoSeat),
      mark_(seats, 0),
      blossom_index_(seats, kNoBlossom) {}

bool AlternatingSearch::Augment(const MatchProblem& problem, std::vector<Seat>& partners,
                                PlayerSet& paired, Seat root, const PlayerSet& left_out) {
  problem_ = &problem;
  partners_ = &partners;
  single_ = problem.Players();
  single_ -= paired;
  Begin(root, left_out);
  while (queue_head_ < queue_.size()) {
    const Seat end = ScanOuter(queue_[queue_head_++]);
    if (end == kNoSeat) continue;
    SwapAlongPath(end, paired);
    paired.Insert(root);
    return true;
  }
  return false;
}

void AlternatingSearch::AddReached(PlayerSet& players) const {
  players |= reached_;
}

void AlternatingSearch::Begin(Seat root, const PlayerSet& left_out) {
  unseen_ = problem_->Players();
  unseen_ -= left_out;
  unseen_.Erase(root);
  outer_.Clear();
  reached_.Clear();
  queue_.clear();
  queue_head_ = 0;
  blossom_count_ = 0;
  for (Seat seat = 0; seat < base_.size(); ++seat)
    base_[seat] = seat;
  std::fill(blossom_index_.begin(), blossom_index_.end(), kNoBlossom);
  MakeOuter(root);
  reached_.Insert(root);
}

/// Takes in all that this outer player may be paired with. Returns a single player among them, the
/// end of an augmenting path, or kNoSeat.
Seat AlternatingSearch::ScanOuter(Seat seat) {
  const PlayerSet& allowed = problem_->AllowedBy(seat);
  const PlayerSet& reach = problem_->ReachOf(seat);
  const Seat end = FirstCommonSeat(allowed, reach, single_, unseen_);
  if (end != kNoSeat) {
    came_from_[end] = seat;
    return end;
  }
  for (std::size_t i = 0; i < allowed.WordCount(); ++i) {
    PlayerSet::Word word = allowed.WordAt(i) & reach.WordAt(i) & unseen_.WordAt(i);
    for (; word != 0; word &= word - 1) {
      // A player taken in brings its partner along, who may stand in the same word.
      const Seat found = PlayerSet::LowestSeat(i, word);
      if (unseen_.Contains(found)) TakeIn(found, seat);
    }
  }
  for (Seat other = FindOuterNeighbour(seat); other != kNoSeat; other = FindOuterNeighbour(seat)) {
    Contract(seat, other);
  }
  return kNoSeat;
}

/// The first outer player outside of this one's blossom with whom it may be paired.
Seat AlternatingSearch::FindOuterNeighbour(Seat seat) {
  const PlayerSet& allowed = problem_->AllowedBy(seat);
  const PlayerSet& reach = problem_->ReachOf(seat);
  const std::size_t blossom = blossom_index_[BaseOf(seat)];
  if (blossom == kNoBlossom) return FirstCommonSeat(allowed, reach, outer_);
  return FirstCommonSeatOutside(blossoms_[blossom], allowed, reach, outer_);
}

void AlternatingSearch::TakeIn(Seat inner, Seat from) {
  const Seat outer = (*partners_)[inner];
  came_from_[inner] = from;
  unseen_.Erase(inner);
  unseen_.Erase(outer);
  reached_.Insert(inner);
  reached_.Insert(outer);
  MakeOuter(outer);
}

void AlternatingSearch::MakeOuter(Seat seat) {
  outer_.Insert(seat);
  queue_.push_back(seat);
}

/// Two outer players may be paired: their ways to the root close a blossom.
void AlternatingSearch::Contract(Seat seat, Seat other) {
  const Seat base = CommonBase(seat, other);
  ShrinkSide(seat, other, base);
  ShrinkSide(other, seat, base);
}

/// Puts the way from an outer player down to the base into the base's blossom. `other` is the
/// player across, with whom it could be paired.
void AlternatingSearch::ShrinkSide(Seat seat, Seat other, Seat base) {
  while (BaseOf(seat) != base) {
    came_from_[seat] = other;
    const Seat inner = (*partners_)[seat];
    if (!outer_.Contains(inner)) MakeOuter(inner);
    if (base_[seat] == seat) MergeInto(base, seat);
    if (base_[inner] == inner) MergeInto(base, inner);
    other = inner;
    seat = came_from_[inner];
  }
}

void AlternatingSearch::MergeInto(Seat base, Seat other_base) {
  const std::size_t other_blossom = blossom_index_[other_base];
  PlayerSet& blossom = BlossomOf(base);
  if (other_blossom == kNoBlossom) {
    blossom.Insert(other_base);
  } else {
    blossom |= blossoms_[other_blossom];
  }
  base_[other_base] = base;
}

/// The players of the blossom with that base, which is made when there is none yet.
PlayerSet& AlternatingSearch::BlossomOf(Seat base) {
  std::size_t& index = blossom_index_[base];
  if (index == kNoBlossom) {
    index = blossom_count_++;
    if (index == blossoms_.size()) blossoms_.emplace_back(base_.size());
    blossoms_[index].Clear();
    blossoms_[index].Insert(base);
  }
  return blossoms_[index];
}

/// Where the ways from two outer players to the root meet: walks both, by turns.
Seat AlternatingSearch::CommonBase(Seat seat, Seat other) {
  ++last_mark_;
  for (;; std::swap(seat, other)) {
    if (seat == kNoSeat) continue;
    seat = BaseOf(seat);
    if (mark_[seat] == last_mark_) return seat;
    mark_[seat] = last_mark_;
    seat = StepToRoot(seat);
  }
}

/// The outer player two steps nearer to the root; kNoSeat at the root.
Seat AlternatingSearch::StepToRoot(Seat base) const {
  const Seat inner = (*partners_)[base];
  return inner == kNoSeat ? kNoSeat : came_from_[inner];
}

Seat AlternatingSearch::BaseOf(Seat seat) {
  while (base_[seat] != seat) {
    base_[seat] = base_[base_[seat]];
    seat = base_[seat];
  }
  return seat;
}

void AlternatingSearch::SwapAlongPath(Seat end, PlayerSet& paired) {
  paired.Insert(end);
  while (end != kNoSeat) {
    const Seat from = came_from_[end];
    const Seat next = (*partners_)[from];
    (*partners_)[end] = from;
    (*partners_)[from] = end;
    end = next;
  }
}

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
