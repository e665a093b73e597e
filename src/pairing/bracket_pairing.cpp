// The first pairing of a bracket in the order of candidates, without trying them all.
//
// A search that goes through a player's candidates one by one and, for each, pairs the rest,
// settles for the first candidate that leaves the rest pairable. That can be seen without pairing
// the rest by trial. Keep a pairing of everybody. Suppose that a is paired with c in it and b with
// d, and a shall take b: then c and d are left over, and the rest is pairable exactly when an
// augmenting path leads from c to d without a and b. So each candidate costs one path, and n
// players cost at the most n * n / 2 of them.
//
//   a = c   b = d   e = f     a takes b:   a = b   c - e = f - d   gives   a = b   c = e   f = d
//
// With a floater that moved on (BracketTask) the rest must be pairable with at most one pair in
// which there is no floater. That is seen from one matching in which the others do not pair among
// themselves, and, if two players stay single, one more try for each pair of others that would be
// the one.

#include "pairing/bracket_pairing.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace tarvendo {
namespace {

using SeatPair = std::pair<Seat, Seat>;

/// What is to be paired inside one bracket.
///
/// The floaters choose their partners first, in the order in which they came. One that has itself
/// moved on still stands in that order, and nobody can be its partner: when its turn comes with
/// more than two players left, the bracket cannot be paired. So the floaters before it must bring
/// the bracket down to the last two.
struct BracketTask {
  std::vector<Seat> free;      ///< in the order of the entries
  std::vector<Seat> floaters;  ///< the free ones that came, in that order, up to one that moved on
  bool stops_after_floaters = false;  ///< whether one moved on

  /// Whether the floaters are too few even if each takes somebody who is none.
  bool HasTooFewFloaters() const {
    return stops_after_floaters && free.size() > 2 * floaters.size() + 2;
  }

  /// Whether it counts that one moved on: the last two players pair anyway.
  bool NeedsFloaters() const { return stops_after_floaters && free.size() > 2; }

  PlayerSet FreeSet(std::size_t seats) const;
};

PlayerSet BracketTask::FreeSet(std::size_t seats) const {
  PlayerSet set(seats);
  for (const Seat seat : free)
    set.Insert(seat);
  return set;
}

/// The task that the bracket sets as it stands.
BracketTask MakeTask(const Bracket& bracket) {
  BracketTask task;
  for (const BracketEntry& entry : bracket.Entries()) {
    if (entry.IsFree()) task.free.push_back(PairingField::SeatOf(entry.number));
  }
  for (const int number : bracket.FloatersIn()) {
    const std::size_t entry = bracket.EntryOf(number);
    if (entry == bracket.Size() || bracket.Entries()[entry].IsPaired()) continue;
    if (bracket.Entries()[entry].absent) {
      task.stops_after_floaters = true;
      break;
    }
    task.floaters.push_back(PairingField::SeatOf(number));
  }
  return task;
}

PlayerSet FloaterSet(const BracketTask& task, std::size_t seats) {
  PlayerSet set(seats);
  for (const Seat seat : task.floaters)
    set.Insert(seat);
  return set;
}

/// The task with the rule that every pair has a floater in it.
MatchProblem PairsWithFloaters(const PairGraph& graph, const BracketTask& task) {
  const PlayerSet floaters = FloaterSet(task, graph.SeatCount());
  PlayerSet others = task.FreeSet(graph.SeatCount());
  others -= floaters;
  MatchProblem problem(graph);
  const std::size_t floater_group = problem.AddGroup(floaters);
  const std::size_t other_group = problem.AddGroup(others);
  problem.Connect(floater_group, floater_group);
  problem.Connect(floater_group, other_group);
  return problem;
}

/// Whether the others are pairable by that rule when these two, neither of them a floater, are the
/// last pair.
bool WorksWithLastPair(MatchProblem problem, Matching matching, Seat seat, Seat other) {
  problem.Erase(seat);
  problem.Erase(other);
  return matching.MakePerfect(problem);
}

/// Whether the task is pairable with at most one pair without a floater.
bool FloatersSuffice(const PairGraph& graph, const BracketTask& task) {
  if (task.HasTooFewFloaters()) return false;
  const MatchProblem problem = PairsWithFloaters(graph, task);
  Matching matching(graph.SeatCount());
  const std::size_t left_single = matching.MakeLargest(problem);
  if (left_single == 0) return true;
  if (left_single > 2) return false;
  const PlayerSet floaters = FloaterSet(task, graph.SeatCount());
  for (auto seat = task.free.begin(); seat != task.free.end(); ++seat) {
    if (floaters.Contains(*seat)) continue;
    for (auto other = seat + 1; other != task.free.end(); ++other) {
      if (!floaters.Contains(*other) && graph.IsAllowed(*seat, *other) &&
          WorksWithLastPair(problem, matching, *seat, *other)) {
        return true;
      }
    }
  }
  return false;
}

/// Whether everybody free in the bracket can be paired. `scratch` is any matching of the field; the
/// better it fits, the faster the answer. It then holds such a pairing, unless floaters are needed.
bool HasPairing(const PairGraph& graph, const BracketTask& task, Matching& scratch) {
  if (task.free.size() % 2 != 0) return false;
  if (task.NeedsFloaters()) return FloatersSuffice(graph, task);
  return scratch.MakePerfect(MatchProblem(graph, task.FreeSet(graph.SeatCount())));
}

/// The pairing so far and the players left, kept pairable all the time.
class OrderedPairing {
 public:
  OrderedPairing(const PairGraph& graph, const BracketTask& task)
      : problem_(graph, task.FreeSet(graph.SeatCount())),
        matching_(graph.SeatCount()),
        free_(task.free) {
    PairTopWithBottomHalf();
  }

  /// False when the players cannot all be paired.
  bool Begin() { return matching_.MakePerfect(problem_); }

  bool IsDone() const { return free_.empty(); }
  bool IsFree(Seat seat) const { return problem_.Players().Contains(seat); }

  /// Pairs a floater with the first free player that leaves the rest pairable.
  void PairFloater(Seat floater) { TakeFirstOf(floater, free_.begin(), free_.end()); }

  /// Pairs the first free player.
  void PairFirstFree() {
    const auto half = free_.begin() + static_cast<std::ptrdiff_t>(free_.size() / 2);
    const Seat first = free_.front();
    if (!TakeFirstOf(first, half, free_.end())) TakeFirstOf(first, free_.begin() + 1, half);
  }

  std::vector<SeatPair> Pairs() && { return std::move(pairs_); }

 private:
  using Candidate = std::vector<Seat>::const_iterator;

  /// The likely answer to begin with.
  void PairTopWithBottomHalf() {
    const std::size_t half = free_.size() / 2;
    for (std::size_t i = 0; i < half; ++i) {
      if (problem_.MayPair(free_[i], free_[i + half])) matching_.Join(free_[i], free_[i + half]);
    }
  }

  bool TakeFirstOf(Seat seat, Candidate begin, Candidate end) {
    const auto taken =
        std::find_if(begin, end, [&](Seat candidate) { return Takes(seat, candidate); });
    if (taken == end) return false;
    const Seat partner = *taken;
    pairs_.emplace_back(seat, partner);
    std::erase_if(free_, [&](Seat other) { return other == seat || other == partner; });
    return true;
  }

  /// Makes the pair if the rest stays pairable.
  bool Takes(Seat seat, Seat candidate) {
    if (!problem_.MayPair(seat, candidate)) return false;
    problem_.Erase(seat);
    problem_.Erase(candidate);
    const Seat left = matching_.PartnerOf(seat);
    const Seat other_left = matching_.PartnerOf(candidate);
    matching_.Part(seat);
    if (left == candidate) return true;
    matching_.Part(candidate);
    if (matching_.Augment(problem_, left)) return true;
    matching_.Join(seat, left);
    matching_.Join(candidate, other_left);
    problem_.Insert(seat, 0);
    problem_.Insert(candidate, 0);
    return false;
  }

  MatchProblem problem_;
  Matching matching_;
  std::vector<Seat> free_;
  std::vector<SeatPair> pairs_;
};

/// The first pairing when no floater has moved on.
std::optional<std::vector<SeatPair>> PairInOrder(const PairGraph& graph, const BracketTask& task) {
  OrderedPairing pairing(graph, task);
  if (!pairing.Begin()) return std::nullopt;
  for (const Seat floater : task.floaters) {
    if (pairing.IsFree(floater)) pairing.PairFloater(floater);
  }
  while (!pairing.IsDone())
    pairing.PairFirstFree();
  return std::move(pairing).Pairs();
}

BracketTask Without(BracketTask task, Seat seat, Seat other) {
  const auto is_gone = [&](Seat candidate) { return candidate == seat || candidate == other; };
  std::erase_if(task.free, is_gone);
  std::erase_if(task.floaters, is_gone);
  return task;
}

/// The first pairing when one has: each floater takes the first free player that leaves the rest
/// pairable.
std::optional<std::vector<SeatPair>> PairByFloaters(const PairGraph& graph, BracketTask task) {
  Matching scratch(graph.SeatCount());
  std::vector<SeatPair> pairs;
  while (task.NeedsFloaters()) {
    if (task.floaters.empty()) return std::nullopt;
    const Seat floater = task.floaters.front();
    const auto partner = std::find_if(task.free.begin(), task.free.end(), [&](Seat candidate) {
      return graph.IsAllowed(floater, candidate) &&
             HasPairing(graph, Without(task, floater, candidate), scratch);
    });
    if (partner == task.free.end()) return std::nullopt;
    pairs.emplace_back(floater, *partner);
    task = Without(task, floater, *partner);
  }
  if (task.free.size() == 2) {
    if (!graph.IsAllowed(task.free[0], task.free[1])) return std::nullopt;
    pairs.emplace_back(task.free[0], task.free[1]);
  }
  return pairs;
}

/// The pairing that a search trying everything in order would find first. Each floater in turn
/// takes the first free player, in the order of entries, that leaves the rest pairable. Then the
/// first free player of n does: its candidates are those from the n / 2-th behind it to the end, so
/// that the top half meets the bottom half, and then those between; and so on until nobody is free.
/// Nothing when there is no pairing.
std::optional<std::vector<SeatPair>> FirstPairing(const PairGraph& graph, const BracketTask& task) {
  return task.NeedsFloaters() ? PairByFloaters(graph, task) : PairInOrder(graph, task);
}

constexpr std::size_t kTooManyForNoConflict = 11;
constexpr std::size_t kTooManyForWeakGivesWay = 17;

std::vector<ColourLevel> LevelsFor(std::size_t free_count) {
  std::vector<ColourLevel> levels;
  if (free_count < kTooManyForNoConflict) levels.push_back(kNoConflict);
  if (free_count < kTooManyForWeakGivesWay) levels.push_back(kWeakGivesWay);
  levels.push_back(kMediumGivesWay);
  return levels;
}

void RecordPairs(Bracket& bracket, const std::vector<SeatPair>& pairs, std::size_t seats) {
  std::vector<std::size_t> entry_of(seats, bracket.Size());
  for (std::size_t i = 0; i < bracket.Size(); ++i) {
    const BracketEntry& entry = bracket.Entries()[i];
    if (entry.IsFree()) entry_of[PairingField::SeatOf(entry.number)] = i;
  }
  for (const auto& [seat, other] : pairs)
    bracket.RecordPair(entry_of[seat], entry_of[other]);
}

bool PairAtLevel(const PairGraph& graph, Bracket& bracket, PairingClock& clock) {
  if (clock.IsTimedOut()) return false;
  if (bracket.FreeCount() == 0) return true;
  const auto pairs = FirstPairing(graph, MakeTask(bracket));
  if (!pairs) return false;
  RecordPairs(bracket, *pairs, graph.SeatCount());
  return true;
}

}  // namespace

bool PairBracketLevels(LevelGraphs& graphs, Bracket& bracket, PairingClock& clock) {
  for (const ColourLevel level : LevelsFor(bracket.FreeCount())) {
    bracket.level = level;
    if (PairAtLevel(graphs.At(level), bracket, clock)) return true;
  }
  return false;
}

bool CanBePaired(LevelGraphs& graphs, const Bracket& bracket, Matching& scratch) {
  return bracket.FreeCount() == 0 ||
         HasPairing(graphs.At(kMediumGivesWay), MakeTask(bracket), scratch);
}

bool PairSingleBracket(const PairingField& field, Bracket& bracket, PairingClock& clock) {
  clock.Restart();
  LevelGraphs graphs(field, {bracket});
  return PairBracketLevels(graphs, bracket, clock);
}

}  // namespace tarvendo
