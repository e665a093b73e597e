#pragma once

#include <unordered_set>
#include <vector>

#include "play/game_order.h"

namespace tarvendo {

/// The games that this program has under way: started or adopted, and not yet judged. There may be
/// thousands, and each of them is asked for whenever a game is to be started: so their numbers are
/// found without a search. Used by the tourney's holder only.
class RunningGames {
 public:
  void Add(const GameOrder& order) {
    orders_.push_back(order);
    numbers_.insert(order.number);
  }

  void Remove(const GameOrder& order) {
    const auto is_it = [&](const GameOrder& other) { return IsSameGame(order, other); };
    for (auto left = std::erase_if(orders_, is_it); left > 0; --left)
      numbers_.erase(numbers_.find(order.number));
  }

  bool IsEmpty() const { return orders_.empty(); }

  /// Whether a game with that number (1-based) is under way, whoever plays it.
  bool HasNumber(int number) const { return numbers_.contains(number); }

  const std::vector<GameOrder>& Orders() const { return orders_; }

 private:
  std::vector<GameOrder> orders_;
  std::unordered_multiset<int> numbers_;  ///< of those
};

}  // namespace tarvendo
