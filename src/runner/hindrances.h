#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "platform/clock.h"

namespace tarvendo {

/// What is in the way of the next start, and until when nothing is tried. Somebody who waits is
/// told of it at the first attempt and at every eleventh one. Used by the runner's thread.
class Hindrances {
 public:
  /// `retry` is the time from one attempt to the next.
  explicit Hindrances(std::chrono::milliseconds retry) : retry_(retry) {}

  /// Forgets what was in the way. No game is tried before `moment`.
  void Forget(TimePoint moment);

  /// Something is in the way of every game.
  void Hinder(const std::string& message, TimePoint now);

  /// Something is in the way of the game with that number.
  void Block(int number, const std::string& message, TimePoint now);

  /// Whether games may be tried; those that were blocked for long enough are blocked no more.
  bool MayTry(TimePoint now);

  /// The numbers of the games that are not tried now.
  const std::vector<int>& Blocked() const { return blocked_; }

  /// When games may be tried again, if that is still to come.
  std::optional<TimePoint> NextTry(TimePoint now) const;

  /// When the blocked games may be tried again; nothing when there are none.
  std::optional<TimePoint> EndOfBlocks() const;

 private:
  void PrintRarely(const std::string& message);

  std::chrono::milliseconds retry_;
  int tries_until_message_ = 0;
  TimePoint next_try_;
  std::vector<int> blocked_;
  TimePoint blocked_until_;
};

}  // namespace tarvendo
