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

}  // namespace tarvendo
