#pragma once

#include <cstdint>
#include <functional>
#include <utility>

#include "platform/faults.h"

namespace tarvendo {

/// The time that one search may take. Read by one thread.
class PairingClock {
 public:
  using SecondsSource = std::function<std::int64_t()>;
  static constexpr int kDefaultLimit = 10;

  /// `now` gives whole seconds.
  explicit PairingClock(SecondsSource now) : now_(std::move(now)) {}

  /// Sets the limit in seconds; 0 and less stand for the default of 10.
  void SetLimit(int seconds) { limit_ = seconds > 0 ? seconds : kDefaultLimit; }
  int Limit() const { return limit_; }

  /// Starts the time anew and forgets that it had run out.
  void Restart() {
    start_ = now_();
    is_timed_out_ = false;
  }

  /// Whether more than the limit has passed since the start. Once out, it stays out until Restart.
  /// Throws Terminated when the process is asked to end meanwhile (platform/faults.h).
  bool IsTimedOut() {
    EndWhenAsked();
    if (!is_timed_out_ && now_() - start_ > limit_) is_timed_out_ = true;
    return is_timed_out_;
  }

 private:
  SecondsSource now_;
  int limit_ = kDefaultLimit;
  std::int64_t start_ = 0;
  bool is_timed_out_ = false;
};

}  // namespace tarvendo
