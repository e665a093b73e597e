#pragma once

#include <algorithm>
#include <unordered_set>
#include <vector>

#include "play/game_order.h"

namespace tarvendo {

/// The games that this program has under way: started or adopted, and not yet judged. There may be
/// thousands, and each game of the tourney is asked for: so their numbers are found without a
/// search. Used by the tourney's holder only.
class RunningGames {
 public:
  void Add(const GameOrder& order) {
    orders_.push_back(order);
    numbers_.insert(order.number);
  }

  void Remove(const GameOrder& order) {
    const auto is_it = [&](const GameOrder& other) { return IsSameGame(order, other); };
    const auto removed = std::erase_if(orders_, is_it);
    for (std::size_t i = 0; i < removed; ++i)
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
