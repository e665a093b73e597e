#pragma once

#include <cstddef>
#include <vector>

#include "pairing/match_problem.h"
#include "pairing/player_set.h"

namespace tarvendo {

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

}  // namespace tarvendo
