// Proofs that a search must fail, from maximum matchings.
//
// A search that succeeds has paired everybody from its bracket on; a pair is made inside one
// bracket, after both players have floated there. So it must fail when
//   - the players cannot all be paired, brackets or not;
//   - the brackets up to some one leave more players over than may float out of there, or those
//     behind it leave more over than may float in, or a run of brackets between leaves more over
//     than may float in and out together (FloaterLimits);
//   - while floaters are chosen: the players cannot all be paired when those who are known to stay
//     meet only in the bracket and those who are known to go only behind it.
// Example: the last bracket has two players who have met, and only one floater may come in. One of
// the two stays over, whatever is chosen above; the first of the many choices need not be looked
// at.

#include "pairing/chain_outlook.h"

#include <algorithm>

namespace tarvendo {
namespace {

/// Longer runs of brackets are not looked at.
constexpr std::size_t kLongestRun = 12;

/// What is known of the entries of a bracket while floaters are chosen in it.
struct EntryKinds {
  explicit EntryKinds(std::size_t seats) : staying(seats), going(seats), open(seats) {}

  PlayerSet staying;
  PlayerSet going;
  PlayerSet open;  ///< not decided
};

EntryKinds SortEntries(const Bracket& bracket, std::size_t decided, std::size_t seats) {
  EntryKinds kinds(seats);
  for (std::size_t i = 0; i < bracket.Size(); ++i) {
    const BracketEntry& entry = bracket.Entries()[i];
    PlayerSet& kind = entry.absent ? kinds.going : i < decided ? kinds.staying : kinds.open;
    kind.Insert(PairingField::SeatOf(entry.number));
  }
  return kinds;
}

/// Whether no larger count of floaters is tried behind this one.
bool IsLastCount(std::size_t count, std::size_t entries) {
  return count >= entries || 2 * count > entries;
}

/// The most floaters that leave a bracket of so many entries, whatever is asked for.
std::size_t MostFrom(std::size_t entries) {
  std::size_t count = entries % 2;
  while (!IsLastCount(count, entries))
    count += 2;
  return count;
}

}  // namespace

FloaterLimits::FloaterLimits(const std::vector<Bracket>& brackets, std::size_t first,
                             std::size_t most)
    : first_(first) {
  std::size_t players = 0;
  std::size_t handed_on = most;
  std::size_t coming = 0;
  for (std::size_t index = first_; index < brackets.size(); ++index) {
    players += brackets[index].Size();
    const std::size_t parity = players % 2;
    if (handed_on % 2 != parity && handed_on > 0) --handed_on;
    const std::size_t asked_for = std::max(handed_on, parity);
    coming = std::min(asked_for, MostFrom(brackets[index].Size() + coming));
    limits_.push_back(coming);
  }
}

std::vector<std::size_t> FloaterCounts(std::size_t entries, std::size_t first, std::size_t most) {
  std::vector<std::size_t> counts;
  for (std::size_t count = first; count <= most; count += 2) {
    counts.push_back(count);
    if (IsLastCount(count, entries)) break;
  }
  return counts;
}

ChainOutlook::ChainOutlook(const PairGraph& graph, const std::vector<Bracket>& brackets)
    : graph_(graph), brackets_(brackets), wide_(graph.SeatCount()) {
  for (const Bracket& bracket : brackets)
    own_.push_back(bracket.Members());
  from_ = own_;
  for (std::size_t index = from_.size() - 1; index-- > 0;)
    from_[index] |= from_[index + 1];
}

bool ChainOutlook::AllCanBePaired(std::size_t index) {
  PlayerSet players = from_[index];
  players |= brackets_[index].Members();
  return wide_.MakePerfect(MatchProblem(graph_, players));
}

std::vector<std::size_t> ChainOutlook::MustFloat(std::size_t index) {
  std::vector<std::size_t> must_float;
  MatchProblem problem(graph_, brackets_[index].Members());
  Matching matching(graph_.SeatCount());
  for (std::size_t last = index; last + 1 < brackets_.size(); ++last) {
    if (last > index) own_[last].ForEach([&](Seat seat) { problem.Insert(seat, 0); });
    must_float.push_back(matching.MakeLargest(problem));
  }
  return must_float;
}

void ChainOutlook::CountNeededFromAbove() {
  needed_from_above_.assign(brackets_.size(), 0);
  MatchProblem problem(graph_, own_.back());
  Matching matching(graph_.SeatCount());
  for (std::size_t index = brackets_.size() - 1; index > 0; --index) {
    needed_from_above_[index] = matching.MakeLargest(problem);
    own_[index - 1].ForEach([&](Seat seat) { problem.Insert(seat, 0); });
  }
}

void ChainOutlook::CountLeftOver() {
  left_over_.assign(brackets_.size(), {});
  for (std::size_t first = 0; first < brackets_.size(); ++first) {
    MatchProblem problem(graph_, own_[first]);
    Matching matching(graph_.SeatCount());
    const std::size_t end = std::min(first + kLongestRun, brackets_.size() - 1);
    for (std::size_t last = first; last < end; ++last) {
      if (last > first) own_[last].ForEach([&](Seat seat) { problem.Insert(seat, 0); });
      left_over_[first].push_back(matching.MakeLargest(problem));
    }
  }
}

bool ChainOutlook::RunsSuffice(std::size_t index, const FloaterLimits& limits) const {
  for (std::size_t first = index + 1; first < brackets_.size(); ++first) {
    for (std::size_t more = 0; more < left_over_[first].size(); ++more) {
      const std::size_t floaters = limits.Of(first - 1) + limits.Of(first + more);
      if (left_over_[first][more] > floaters) return false;
    }
  }
  return true;
}

bool ChainOutlook::LimitsSuffice(std::size_t index, const std::vector<std::size_t>& must_float,
                                 const FloaterLimits& limits) {
  for (std::size_t last = index; last + 1 < brackets_.size(); ++last) {
    const std::size_t limit = limits.Of(last);
    if (must_float[last - index] > limit || NeededFromAbove(last + 1) > limit) return false;
  }
  if (left_over_.empty()) CountLeftOver();
  return RunsSuffice(index, limits);
}

std::size_t ChainOutlook::NeededFromAbove(std::size_t index) {
  if (needed_from_above_.empty()) CountNeededFromAbove();
  return needed_from_above_[index];
}

bool ChainOutlook::ChoiceCanWork(std::size_t index, std::size_t decided) {
  const EntryKinds kinds = SortEntries(brackets_[index], decided, graph_.SeatCount());
  PlayerSet behind = from_[index + 1];
  behind |= kinds.going;
  MatchProblem problem(graph_);
  const std::size_t staying = problem.AddGroup(kinds.staying);
  const std::size_t open = problem.AddGroup(kinds.open);
  const std::size_t below = problem.AddGroup(behind);
  problem.Connect(staying, staying);
  problem.Connect(staying, open);
  problem.Connect(open, open);
  problem.Connect(open, below);
  problem.Connect(below, below);
  return wide_.MakePerfect(problem);
}

}  // namespace tarvendo
