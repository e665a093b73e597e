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
// With a floater that moved on (bracket_task.h) the rest must be pairable with at most one pair in
// which there is no chooser. That is seen from one matching in which the others do not pair among
// themselves, and, if two players stay single, one more try for each pair of others that would be
// the one.

#include "pairing/first_pairing.h"

#include <algorithm>

namespace tarvendo {
namespace {

PlayerSet ChooserSet(const BracketTask& task, std::size_t seats) {
  PlayerSet set(seats);
  for (const Seat seat : task.choosers)
    set.Insert(seat);
  return set;
}

/// The task with rule "every pair has a chooser in it".
MatchProblem PairsWithChoosers(const PairGraph& graph, const BracketTask& task) {
  const PlayerSet choosers = ChooserSet(task, graph.SeatCount());
  PlayerSet others = task.FreeSet(graph.SeatCount());
  others -= choosers;
  MatchProblem problem(graph);
  const std::size_t chooser_group = problem.AddGroup(choosers);
  const std::size_t other_group = problem.AddGroup(others);
  problem.Connect(chooser_group, chooser_group);
  problem.Connect(chooser_group, other_group);
  return problem;
}

/// Whether the rest is pairable with choosers when these two, neither of them one, are the last
/// pair.
bool WorksWithLastPair(MatchProblem problem, Matching matching, Seat seat, Seat other) {
  problem.Erase(seat);
  problem.Erase(other);
  return matching.MakePerfect(problem);
}

/// Whether the task is pairable with at most one pair without a chooser.
bool ChoosersSuffice(const PairGraph& graph, const BracketTask& task) {
  if (task.HasTooFewChoosers()) return false;
  const MatchProblem problem = PairsWithChoosers(graph, task);
  Matching matching(graph.SeatCount());
  const std::size_t left_single = matching.MakeLargest(problem);
  if (left_single == 0) return true;
  if (left_single > 2) return false;
  const PlayerSet choosers = ChooserSet(task, graph.SeatCount());
  for (auto seat = task.free.begin(); seat != task.free.end(); ++seat) {
    if (choosers.Contains(*seat)) continue;
    for (auto other = seat + 1; other != task.free.end(); ++other) {
      if (!choosers.Contains(*other) && graph.IsAllowed(*seat, *other) &&
          WorksWithLastPair(problem, matching, *seat, *other)) {
        return true;
      }
    }
  }
  return false;
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
  using Place = std::vector<Seat>::const_iterator;

  /// The likely answer to begin with.
  void PairTopWithBottomHalf() {
    const std::size_t half = free_.size() / 2;
    for (std::size_t i = 0; i < half; ++i) {
      if (problem_.MayPair(free_[i], free_[i + half])) matching_.Join(free_[i], free_[i + half]);
    }
  }

  bool TakeFirstOf(Seat seat, Place begin, Place end) {
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
  for (const Seat floater : task.choosers) {
    if (pairing.IsFree(floater)) pairing.PairFloater(floater);
  }
  while (!pairing.IsDone())
    pairing.PairFirstFree();
  return std::move(pairing).Pairs();
}

BracketTask Without(BracketTask task, Seat seat, Seat other) {
  const auto is_gone = [&](Seat candidate) { return candidate == seat || candidate == other; };
  std::erase_if(task.free, is_gone);
  std::erase_if(task.choosers, is_gone);
  return task;
}

/// The first pairing with choosers: each takes the first free player that leaves the rest pairable.
std::optional<std::vector<SeatPair>> PairByChoosers(const PairGraph& graph, BracketTask task) {
  Matching scratch(graph.SeatCount());
  std::vector<SeatPair> pairs;
  while (task.NeedsChoosers()) {
    if (task.choosers.empty()) return std::nullopt;
    const Seat chooser = task.choosers.front();
    const auto partner = std::find_if(task.free.begin(), task.free.end(), [&](Seat candidate) {
      return graph.IsAllowed(chooser, candidate) &&
             HasPairing(graph, Without(task, chooser, candidate), scratch);
    });
    if (partner == task.free.end()) return std::nullopt;
    pairs.emplace_back(chooser, *partner);
    task = Without(task, chooser, *partner);
  }
  if (task.free.size() == 2) {
    if (!graph.IsAllowed(task.free[0], task.free[1])) return std::nullopt;
    pairs.emplace_back(task.free[0], task.free[1]);
  }
  return pairs;
}

}  // namespace

bool HasPairing(const PairGraph& graph, const BracketTask& task, Matching& scratch) {
  if (task.free.size() % 2 != 0) return false;
  if (task.NeedsChoosers()) return ChoosersSuffice(graph, task);
  return scratch.MakePerfect(MatchProblem(graph, task.FreeSet(graph.SeatCount())));
}

std::optional<std::vector<SeatPair>> FirstPairing(const PairGraph& graph, const BracketTask& task) {
  return task.NeedsChoosers() ? PairByChoosers(graph, task) : PairInOrder(graph, task);
}

}  // namespace tarvendo
