#pragma once

#include <cstdint>

namespace tarvendo {

/// What the user says to the runner: whether it is on, and when it goes on and off by itself. Part
/// of the tourney, saved with it, used like it by the holder of the tourney only.
class RunnerSwitch {
 public:
  struct State {
    long long start_time = 0;  ///< seconds since the epoch, 0 = none
    long long stop_time = 0;   ///< seconds since the epoch, 0 = none
    int running = 0;           ///< on for any number but 0

    bool operator==(const State&) const = default;
  };

  const State& Get() const { return state_; }

  void Set(const State& state) {
    state_ = state;
    has_stopped_itself_ = false;
    ++changes_;
  }

  /// How often the switch has been moved so far, also to where it was: who has seen the runner idle
  /// knows by it whether that still holds.
  std::uint64_t Changes() const { return changes_; }

  bool IsRunning() const { return state_.running != 0; }

  void SetRunning(bool running) {
    state_.running = running ? 1 : 0;
    has_stopped_itself_ = false;
    ++changes_;
  }

  /// Switches off because something is wrong: nobody has asked for it.
  void StopItself() {
    SetRunning(false);
    has_stopped_itself_ = true;
  }

  /// Whether the last one to move it was StopItself. No file holds that.
  bool HasStoppedItself() const { return has_stopped_itself_; }

  void SetStartTime(long long time) {
    state_.start_time = time;
    ++changes_;
  }

  void SetStopTime(long long time) {
    state_.stop_time = time;
    ++changes_;
  }

  /// Whether a start time is set and has come by `now`. It is then cleared and the runner switched
  /// on in one step, so that nobody finds the runner off with no time set. Likewise the stop time.
  bool TakeStartTime(long long now) { return Take(&State::start_time, now, 1); }
  bool TakeStopTime(long long now) { return Take(&State::stop_time, now, 0); }

  /// Whether both stand alike, however often they have been moved.
  bool operator==(const RunnerSwitch& other) const { return state_ == other.state_; }

 private:
  bool Take(long long State::*time, long long now, int running) {
    if (state_.*time == 0 || now < state_.*time) return false;
    state_.*time = 0;
    state_.running = running;
    has_stopped_itself_ = false;
    ++changes_;
    return true;
  }

  State state_;
  bool has_stopped_itself_ = false;
  std::uint64_t changes_ = 0;
};

}  // namespace tarvendo
