#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "pairing/pairing_field.h"

namespace tarvendo {

/// Random numbers that are the same on every machine.
class Dice {
 public:
  explicit Dice(std::uint64_t seed) : engine_(seed) {}

  /// 0 to below - 1.
  int Below(int below) { return static_cast<int>(engine_() % static_cast<std::uint64_t>(below)); }
  int Between(int low, int high) { return low + Below(high - low + 1); }
  bool Percent(int chance) { return Below(100) < chance; }

 private:
  std::mt19937_64 engine_;
};

/// A field without a history that could have led to it: anybody may have met anybody, with any
/// wishes.
PairingField RandomField(Dice& dice, int players);

/// Splits the players into brackets of random sizes, in a random order.
std::vector<std::vector<int>> RandomSplit(Dice& dice, int players);

/// A field and how it comes into brackets: by hand, or by the rules with this width and mode (1 to
/// 3).
struct RandomChain {
  PairingField field;
  std::vector<std::vector<int>>
      by_hand;    ///< the brackets' players; empty when they are not by hand
  int width = 0;  ///< quarter points
  int mode = 0;
};

/// 3 to 16 players.
RandomChain MakeRandomChain(Dice& dice);

/// A tourney of random results, paired from outside round by round: games may be forfeited before
/// they are played, and some stay unplayed.
class RandomTourney {
 public:
  RandomTourney(Dice& dice, int players, int rounds, int sub_rounds);

  int Round() const { return round_; }
  bool IsOver() const { return round_ > rounds_; }
  int Players() const { return static_cast<int>(points_.size()); }

  /// What the pairing of the current round knows.
  PairingField Field() const;

  /// Plays the pairs (White, Black) of the current round with random results and goes on to the
  /// next one.
  void Play(const std::vector<std::pair<int, int>>& pairs);

 private:
  struct History {
    int white = 0;
    int black = 0;
    bool last_was_white = false;
  };
  int ColourState(const History& history) const;
  void PlayGame(int white, int black);
  void Count(int number, bool as_white);

  Dice& dice_;
  int rounds_;
  int sub_rounds_;
  int round_ = 1;
  std::vector<int> points_;
  std::vector<int> colour_states_;
  std::vector<History> histories_;
  std::vector<std::pair<int, int>> met_;
};

}  // namespace tarvendo
