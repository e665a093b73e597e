#pragma once

#include <cstddef>
#include <cstdint>
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
    if (!IsUsual(order.number)) {
      unusual_.insert(order.number);
      return;
    }
    const auto place = static_cast<std::size_t>(order.number);
    if (place >= counts_.size()) counts_.resize(place + 1);
    ++counts_[place];
  }

  void Remove(const GameOrder& order) {
    const auto is_it = [&](const GameOrder& other) { return IsSameGame(order, other); };
    const auto removed = std::erase_if(orders_, is_it);
    for (std::size_t i = 0; i < removed; ++i) {
      if (IsUsual(order.number)) {
        --counts_[static_cast<std::size_t>(order.number)];
      } else {
        unusual_.erase(unusual_.find(order.number));
      }
    }
  }

  bool IsEmpty() const { return orders_.empty(); }

  /// Whether a game with that number (1-based) is under way, whoever plays it.
  bool HasNumber(int number) const {
    if (!IsUsual(number)) return unusual_.contains(number);
    const auto place = static_cast<std::size_t>(number);
    return place < counts_.size() && counts_[place] > 0;
  }

  const std::vector<GameOrder>& Orders() const { return orders_; }

 private:
  /// As many games as a tourney may have; a file may number them otherwise.
  static bool IsUsual(int number) { return number >= 0 && number <= 4000000; }

  std::vector<GameOrder> orders_;
  std::vector<std::uint16_t> counts_;     ///< how many of those have that number
  std::unordered_multiset<int> unusual_;  ///< the other numbers of those
};

}  // namespace tarvendo
