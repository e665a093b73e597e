#pragma once

#include <algorithm>
#include <vector>

#include "play/game_order.h"

namespace tarvendo {

/// The games that this program has under way: started or adopted, and not yet judged. Used by the
/// tourney's holder only.
class RunningGames {
 public:
  void Add(const GameOrder& order) { orders_.push_back(order); }

  void Remove(const GameOrder& order) {
    std::erase_if(orders_, [&](const GameOrder& other) { return IsSameGame(order, other); });
  }

  bool IsEmpty() const { return orders_.empty(); }

  /// Whether a game with that number (1-based) is under way, whoever plays it.
  bool HasNumber(int number) const {
    return std::any_of(orders_.begin(), orders_.end(),
                       [&](const GameOrder& order) { return order.number == number; });
  }

  const std::vector<GameOrder>& Orders() const { return orders_; }

 private:
  std::vector<GameOrder> orders_;
};

}  // namespace tarvendo
