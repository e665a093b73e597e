#pragma once

#include <cstddef>
#include <vector>

#include "pairing/pair_graph.h"
#include "pairing/player_set.h"

namespace tarvendo {

/// Players to be paired with each other, and rules on top of those of the graph: the players stand
/// in groups, and only players of groups that reach each other may be paired.
class MatchProblem {
 public:
  /// Nobody yet. `graph` must outlive the problem.
  explicit MatchProblem(const PairGraph& graph)
      : graph_(&graph), players_(graph.SeatCount()), group_of_(graph.SeatCount(), 0) {}

  /// These players, all in one group that reaches itself.
  MatchProblem(const PairGraph& graph, const PlayerSet& players) : MatchProblem(graph) {
    const std::size_t group = AddGroup(players);
    Connect(group, group);
  }

  /// Adds a group, which reaches nobody yet; returns its number.
  std::size_t AddGroup(const PlayerSet& members);

  /// Lets the two groups (or the members of one) reach each other.
  void Connect(std::size_t group, std::size_t other);

  /// Adds a player to a group that is there.
  void Insert(Seat seat, std::size_t group);

  /// Takes a player out.
  void Erase(Seat seat);

  const PlayerSet& Players() const { return players_; }
  std::size_t SeatCount() const { return graph_->SeatCount(); }

  /// The two sets that hold a possible partner of the player at that seat, both of them.
  const PlayerSet& AllowedBy(Seat seat) const { return graph_->PartnersOf(seat); }
  const PlayerSet& ReachOf(Seat seat) const { return reach_[group_of_[seat]]; }

  bool MayPair(Seat seat, Seat other) const {
    return graph_->IsAllowed(seat, other) && ReachOf(seat).Contains(other);
  }

 private:
  const PairGraph* graph_;
  PlayerSet players_;
  std::vector<std::size_t> group_of_;                ///< by seat
  std::vector<PlayerSet> members_;                   ///< by group
  std::vector<PlayerSet> reach_;                     ///< by group
  std::vector<std::vector<std::size_t>> connected_;  ///< by group
};

/// The search for one augmenting path from a single player. Keeps its storage between searches.
class AlternatingSearch {
 public:
  explicit AlternatingSearch(std::size_t seats);

  /// Looks for a path from the single player `root` to another one whose pairs are by turns new and
  /// old, and swaps them along it. `partners` gives each seat's partner, `paired` those who have
  /// one; both are changed only on success. `left_out` are players that the search passes by.
  bool Augment(const MatchProblem& problem, std::vector<Seat>& partners, PlayerSet& paired,
               Seat root, const PlayerSet& left_out);

  /// After a search that failed: the players it reached. No later path, from whomever, needs them.
  void AddReached(PlayerSet& players) const;

 private:
  void Begin(Seat root, const PlayerSet& left_out);
  Seat ScanOuter(Seat seat);
  void TakeIn(Seat inner, Seat from);
  void MakeOuter(Seat seat);
  void Contract(Seat seat, Seat other);
  void ShrinkSide(Seat seat, Seat other, Seat base);
  void MergeInto(Seat base, Seat other_base);
  PlayerSet& BlossomOf(Seat base);
  Seat CommonBase(Seat seat, Seat other);
  Seat StepToRoot(Seat base) const;
  Seat BaseOf(Seat seat);
  Seat FindOuterNeighbour(Seat seat);
  void SwapAlongPath(Seat end, PlayerSet& paired);

  const MatchProblem* problem_ = nullptr;
  std::vector<Seat>* partners_ = nullptr;
  PlayerSet single_;   ///< players without a partner
  PlayerSet unseen_;   ///< players not reached yet
  PlayerSet outer_;    ///< players at an even distance from the root, who look for a new partner
  PlayerSet reached_;  ///< all that are in the tree
  std::vector<Seat> came_from_;  ///< of an inner player, and of those in a blossom: the new partner
  std::vector<Seat> base_;       ///< towards the base of the blossom (disjoint sets)
  std::vector<std::size_t> mark_;
  std::size_t last_mark_ = 0;
  std::vector<Seat> queue_;
  std::size_t queue_head_ = 0;
  std::vector<std::size_t> blossom_index_;  ///< of a base, into blossoms_
  std::vector<PlayerSet> blossoms_;
  std::size_t blossom_count_ = 0;
};

/// A set of pairs in which nobody stands twice, and the ways to make it larger. It can be carried
/// from one problem to a similar one: only what no longer fits is made anew. See
/// matching.cpp.
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
