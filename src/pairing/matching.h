#pragma once

#include <cstddef>
#include <vector>

#include "pairing/alternating_search.h"
#include "pairing/match_problem.h"
#include "pairing/player_set.h"

namespace tarvendo {

/// A set of pairs in which nobody stands twice, and the ways to make it larger. It can be carried
/// from one problem to a similar one: only what no longer fits is made anew. See
/// alternating_search.cpp.
class Matching {
 public:
  /// No pairs, in a field with so many seats.
  explicit Matching(std::size_t seats);

  /// The partner; kNoSeat for a single player.
  Seat PartnerOf(Seat seat) const { return partner_[seat]; }

  void Join(Seat seat, Seat other);
  void Part(Seat seat);

  /// Parts every pair that the problem does not allow, and that of everybody who is not in it.
  void Adapt(const MatchProblem& problem);

  /// Adapts, then pairs as many of the problem's players as can be. Returns how many stay single.
  std::size_t MakeLargest(const MatchProblem& problem);

  /// Adapts, then tries to pair all players; false as soon as one must stay single.
  bool MakePerfect(const MatchProblem& problem);

  /// Pairs a single player by one augmenting path, which leaves everybody paired who was. The
  /// matching must fit the problem. False, and nothing changed, when there is no such path.
  bool Augment(const MatchProblem& problem, Seat single);

 private:
  /// Pairs single players with each other as they come.
  void JoinSingles(const MatchProblem& problem);

  std::vector<Seat> partner_;
  PlayerSet paired_;
  AlternatingSearch search_;
};

}  // namespace tarvendo
