#include "publish/elo_groups.h"

#include <algorithm>
#include <utility>

namespace tarvendo {
namespace {

/// For each player those against whom it has scored, one player behind the other.
struct ScoredAgainst {
  std::vector<std::size_t> list;
  std::vector<std::size_t> begin;  ///< of each player, and the end of the last
};

ScoredAgainst Arrange(std::size_t players, const std::vector<PairScore>& pairs) {
  ScoredAgainst arranged;
  arranged.begin.assign(players + 1, 0);
  for (const PairScore& pair : pairs) {
    if (pair.score > 0) ++arranged.begin[pair.first + 1];
    if (pair.score < pair.games) ++arranged.begin[pair.second + 1];
  }
  for (std::size_t i = 1; i <= players; ++i)
    arranged.begin[i] += arranged.begin[i - 1];
  arranged.list.resize(arranged.begin[players]);
  std::vector<std::size_t> next = arranged.begin;
  for (const PairScore& pair : pairs) {
    if (pair.score > 0) arranged.list[next[pair.first]++] = pair.second;
    if (pair.score < pair.games) arranged.list[next[pair.second]++] = pair.first;
  }
  return arranged;
}

/// Tarjan's walk, with a stack of its own: a field may be one long chain.
class Walk {
 public:
  explicit Walk(const ScoredAgainst& edges)
      : edges_(edges),
        next_(edges.begin),
        order_(edges.begin.size() - 1, 0),
        lowest_(order_.size(), 0),
        is_open_(order_.size(), false) {}

  std::vector<std::vector<std::size_t>> Groups() {
    for (std::size_t player = 0; player < order_.size(); ++player) {
      if (order_[player] == 0) WalkFrom(player);
    }
    return std::move(groups_);
  }

 private:
  void WalkFrom(std::size_t start) {
    Enter(start);
    while (!path_.empty()) {
      const std::size_t player = path_.back();
      if (next_[player] < edges_.begin[player + 1]) {
        Follow(player, edges_.list[next_[player]++]);
      } else {
        Leave(player);
      }
    }
  }

  void Enter(std::size_t player) {
    order_[player] = lowest_[player] = ++entered_;
    is_open_[player] = true;
    open_.push_back(player);
    path_.push_back(player);
  }

  void Follow(std::size_t player, std::size_t to) {
    if (order_[to] == 0) {
      Enter(to);
    } else if (is_open_[to]) {
      lowest_[player] = std::min(lowest_[player], order_[to]);
    }
  }

  void Leave(std::size_t player) {
    path_.pop_back();
    if (!path_.empty()) {
      lowest_[path_.back()] = std::min(lowest_[path_.back()], lowest_[player]);
    }
    if (lowest_[player] == order_[player]) CloseGroup(player);
  }

  void CloseGroup(std::size_t last) {
    groups_.emplace_back();
    std::size_t player = 0;
    do {
      player = open_.back();
      open_.pop_back();
      is_open_[player] = false;
      groups_.back().push_back(player);
    } while (player != last);
    std::sort(groups_.back().begin(), groups_.back().end());
  }

  const ScoredAgainst& edges_;
  std::vector<std::size_t> next_;    ///< the edge of each player that is followed next
  std::vector<std::size_t> order_;   ///< in which the players were entered, from 1
  std::vector<std::size_t> lowest_;  ///< the first open player that each one leads to
  std::vector<bool> is_open_;
  std::vector<std::size_t> open_;
  std::vector<std::size_t> path_;
  std::size_t entered_ = 0;
  std::vector<std::vector<std::size_t>> groups_;
};

}  // namespace

std::vector<std::vector<std::size_t>> EloGroups(std::size_t players,
                                                const std::vector<PairScore>& pairs) {
  const ScoredAgainst edges = Arrange(players, pairs);
  std::vector<std::vector<std::size_t>> groups = Walk(edges).Groups();
  std::sort(groups.begin(), groups.end(), [](const auto& a, const auto& b) {
    return a.size() != b.size() ? a.size() > b.size() : a.front() < b.front();
  });
  return groups;
}

}  // namespace tarvendo
