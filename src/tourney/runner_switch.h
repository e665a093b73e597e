#pragma once

#include <cstdint>
#include <mutex>

namespace tarvendo {

/// What the user says to the runner: whether it is on, and when it goes on and off by itself. Part
/// of the tourney, saved with it. It has a lock of its own, so that any thread may call it at any
/// time.
class RunnerSwitch {
 public:
  struct State {
    long long start_time = 0;  ///< seconds since the epoch, 0 = none
    long long stop_time = 0;   ///< seconds since the epoch, 0 = none
    int running = 0;           ///< on for any number but 0
  };

  State Get() const {
    const std::lock_guard guard(mutex_);
    return state_;
  }

  void Set(const State& state) {
    const std::lock_guard guard(mutex_);
    state_ = state;
    ++changes_;
  }

  /// How often the switch has been moved so far: who has seen the runner idle knows by it whether
  /// that still holds.
  std::uint64_t Changes() const {
    const std::lock_guard guard(mutex_);
    return changes_;
  }

  bool IsRunning() const { return Get().running != 0; }

  void SetRunning(bool running) {
    const std::lock_guard guard(mutex_);
    state_.running = running ? 1 : 0;
    ++changes_;
  }

  void SetStartTime(long long time) {
    const std::lock_guard guard(mutex_);
    state_.start_time = time;
    ++changes_;
  }

  void SetStopTime(long long time) {
    const std::lock_guard guard(mutex_);
    state_.stop_time = time;
    ++changes_;
  }

  /// Whether a start time is set and has come by `now`; it is cleared and the runner is on then, in
  /// the same step, so that nobody ever sees neither.
  bool TakeStartTime(long long now) { return Take(&State::start_time, now, 1); }
  bool TakeStopTime(long long now) { return Take(&State::stop_time, now, 0); }

 private:
  bool Take(long long State::*time, long long now, int running) {
    const std::lock_guard guard(mutex_);
    if (state_.*time == 0 || now < state_.*time) return false;
    state_.*time = 0;
    state_.running = running;
    ++changes_;
    return true;
  }

  mutable std::mutex mutex_;
  State state_;
  std::uint64_t changes_ = 0;
};

}  // namespace tarvendo
