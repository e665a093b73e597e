// Proofs that a search must fail, from maximum matchings.
//
// A search that succeeds has paired everybody from its bracket on; a pair is made inside one
// bracket, after both players have floated there. So it must fail when
//   - the players cannot all be paired, brackets or not;
//   - the brackets up to some place leave more players over than may float out of there, or those
//   behind it
//     leave more over than may float in, or a run of brackets between leaves more over than may
//     float in and out together (floater_limits.h);
//   - the players cannot all be paired when nobody goes farther than a floater can;
//   - while floaters are chosen: the players cannot all be paired when those who are known to stay
//   meet only
//     in the bracket and those who are known to go only behind it.
// Example: the last bracket has two players who have met, and only one floater may come in. One of
// the two stays over, whatever is chosen above; the first of the many choices need not be looked
// at.

#include "pairing/chain_outlook.h"

#include <algorithm>

namespace tarvendo {
namespace {

/// Longer runs of brackets are not looked at.
constexpr std::size_t kLongestRun = 12;

/// Players who stand in the same bracket and have the same choices.
struct Party {
  PlayerSet members;
  std::size_t place;     ///< of the bracket
  std::size_t farthest;  ///< the last bracket that they can come to
  bool may_stay;         ///< whether they may be paired in their bracket
};

bool MayLeave(const Party& party) {
  return party.farthest > party.place;
}

/// Whether members of the two could be paired somewhere; `first` stands not behind `second`.
bool CanMeet(const Party& first, const Party& second) {
  if (first.place < second.place) return second.place <= first.farthest;
  return (first.may_stay && second.may_stay) || (MayLeave(first) && MayLeave(second));
}

MatchProblem MakeProblem(const PairGraph& graph, const std::vector<Party>& parties) {
  MatchProblem problem(graph);
  for (const Party& party : parties)
    problem.AddGroup(party.members);
  for (std::size_t i = 0; i < parties.size(); ++i) {
    for (std::size_t k = i; k < parties.size(); ++k) {
      if (parties[k].place > parties[i].farthest) break;
      if (CanMeet(parties[i], parties[k])) problem.Connect(i, k);
    }
  }
  return problem;
}

/// Which parties the entries of the bracket in question make.
struct EntryKinds {
  explicit EntryKinds(std::size_t seats)
      : staying(seats), going(seats), going_on(seats), open(seats), open_arrived(seats) {}

  PlayerSet staying;       ///< decided: paired here
  PlayerSet going;         ///< decided: floated
  PlayerSet going_on;      ///< ... who came as floaters
  PlayerSet open;          ///< not decided
  PlayerSet open_arrived;  ///< ... who came as floaters
};

EntryKinds SortEntries(const Bracket& bracket, std::size_t decided, std::size_t seats) {
  EntryKinds kinds(seats);
  const std::size_t own_entries = bracket.Size() - bracket.FloatersIn().size();
  for (std::size_t i = 0; i < bracket.Size(); ++i) {
    const BracketEntry& entry = bracket.Entries()[i];
    const bool arrived = i >= own_entries;
    PlayerSet& going = arrived ? kinds.going_on : kinds.going;
    PlayerSet& open = arrived ? kinds.open_arrived : kinds.open;
    PlayerSet& kind = entry.absent ? going : i < decided ? kinds.staying : open;
    kind.Insert(PairingField::SeatOf(entry.number));
  }
  return kinds;
}

void AddParty(std::vector<Party>& parties, Party party) {
  if (!party.members.IsEmpty()) parties.push_back(std::move(party));
}

}  // namespace

ChainOutlook::ChainOutlook(const PairGraph& graph, const std::vector<Bracket>& brackets)
    : graph_(graph), brackets_(brackets), wide_(graph.SeatCount()) {
  for (const Bracket& bracket : brackets)
    own_.push_back(bracket.Members());
  from_ = own_;
  for (std::size_t place = from_.size() - 1; place-- > 0;)
    from_[place] |= from_[place + 1];
}

bool ChainOutlook::AllCanBePaired(std::size_t place) {
  PlayerSet players = from_[place];
  players |= brackets_[place].Members();
  return wide_.MakePerfect(MatchProblem(graph_, players));
}

std::vector<std::size_t> ChainOutlook::MustFloat(std::size_t place) {
  std::vector<std::size_t> must_float;
  MatchProblem problem(graph_, brackets_[place].Members());
  Matching matching(graph_.SeatCount());
  for (std::size_t last = place; last + 1 < brackets_.size(); ++last) {
    if (last > place) own_[last].ForEach([&](Seat seat) { problem.Insert(seat, 0); });
    must_float.push_back(matching.MakeLargest(problem));
  }
  return must_float;
}

void ChainOutlook::CountNeededFromAbove() {
  needed_from_above_.assign(brackets_.size(), 0);
  MatchProblem problem(graph_, own_.back());
  Matching matching(graph_.SeatCount());
  for (std::size_t place = brackets_.size() - 1; place > 0; --place) {
    needed_from_above_[place] = matching.MakeLargest(problem);
    own_[place - 1].ForEach([&](Seat seat) { problem.Insert(seat, 0); });
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

bool ChainOutlook::RunsSuffice(std::size_t place, const FloaterLimits& limits) const {
  for (std::size_t first = place + 1; first < brackets_.size(); ++first) {
    for (std::size_t more = 0; more < left_over_[first].size(); ++more) {
      const std::size_t floaters = limits.Of(first - 1) + limits.Of(first + more);
      if (left_over_[first][more] > floaters) return false;
    }
  }
  return true;
}

bool ChainOutlook::LimitsSuffice(std::size_t place, const std::vector<std::size_t>& must_float,
                                 const FloaterLimits& limits) {
  if (needed_from_above_.empty()) CountNeededFromAbove();
  for (std::size_t last = place; last + 1 < brackets_.size(); ++last) {
    const std::size_t limit = limits.Of(last);
    if (must_float[last - place] > limit || needed_from_above_[last + 1] > limit) return false;
  }
  if (left_over_.empty()) CountLeftOver();
  return RunsSuffice(place, limits);
}

bool ChainOutlook::ReachSuffices(std::size_t place, const FloaterLimits& limits) {
  return limits.ReachEverything() || ChoiceCanWork(place, 0, &limits);
}

bool ChainOutlook::ChoiceCanWork(std::size_t place, std::size_t decided,
                                 const FloaterLimits* limits) {
  const std::size_t last = brackets_.size() - 1;
  const auto farthest_from = [&](std::size_t arrival) {
    return limits == nullptr ? last : limits->FarthestFrom(arrival);
  };
  const auto farthest_of_own = [&](std::size_t home) {
    const bool leaves = home < last && (limits == nullptr || limits->Of(home) > 0);
    return leaves ? farthest_from(home + 1) : home;
  };
  EntryKinds kinds = SortEntries(brackets_[place], decided, graph_.SeatCount());
  std::vector<Party> parties;
  AddParty(parties, {std::move(kinds.staying), place, place, true});
  AddParty(parties, {std::move(kinds.going), place, farthest_of_own(place), false});
  AddParty(parties, {std::move(kinds.going_on), place, farthest_from(place), false});
  AddParty(parties, {std::move(kinds.open), place, farthest_of_own(place), true});
  AddParty(parties, {std::move(kinds.open_arrived), place, farthest_from(place), true});
  if (limits == nullptr) {
    AddParty(parties, {from_[place + 1], place + 1, last, true});
  } else {
    for (std::size_t below = place + 1; below <= last; ++below) {
      AddParty(parties, {own_[below], below, farthest_of_own(below), true});
    }
  }
  return wide_.MakePerfect(MakeProblem(graph_, parties));
}

}  // namespace tarvendo
