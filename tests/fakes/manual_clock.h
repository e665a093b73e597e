#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/clock.h"

namespace tarvendo {

/// Time for the tests: it stands still but for what the test sets, and a wait takes none of the
/// real time: it moves the clock by its span and returns. Only a wait for as long as it takes is a
/// real one. May be used from any thread.
class ManualClock : public Clock {
 public:
  /// 2001-09-09 01:46:40 UTC at first.
  explicit ManualClock(std::int64_t now = 1000000000) : now_(now * kMilli) {}

  std::int64_t Now() override {
    const std::lock_guard guard(mutex_);
    return now_ / kMilli;
  }

  /// Moved by the waits only: SetNow is a time of day that jumps.
  TimePoint Steady() override {
    const std::lock_guard guard(mutex_);
    return TimePoint(std::chrono::milliseconds(steady_));
  }

  /// Moves the clock by `span`, writes it down, calls the test's on_wait and returns. The caller's
  /// lock is free meanwhile, as in a real wait.
  bool Wait(std::condition_variable& wake, std::unique_lock<std::mutex>& held,
            std::chrono::milliseconds span, const std::function<bool()>& done) override {
    const bool is_for_ever = span == std::chrono::milliseconds::max();
    held.unlock();
    {
      const std::lock_guard guard(mutex_);
      now_ += is_for_ever ? 0 : span.count();
      steady_ += is_for_ever ? 0 : span.count();
      waits_.push_back(span.count());
    }
    if (on_wait) on_wait(span);
    std::this_thread::yield();
    held.lock();
    if (is_for_ever) wake.wait(held, done);
    return done();
  }

  /// Called in every wait, on the thread that waits, with its lock free: the place for a test to
  /// let something happen meanwhile, or to say that it is time to stop. Set before any thread uses
  /// the clock.
  std::function<void(std::chrono::milliseconds)> on_wait;

  /// Sets the time, in seconds since the epoch.
  void SetNow(std::int64_t now) {
    const std::lock_guard guard(mutex_);
    now_ = now * kMilli;
  }

  /// Lets time pass without anybody waiting for it.
  void Advance(std::chrono::milliseconds span) {
    const std::lock_guard guard(mutex_);
    now_ += span.count();
    steady_ += span.count();
  }

  /// The spans of all waits so far, in milliseconds.
  std::vector<std::int64_t> Waits() {
    const std::lock_guard guard(mutex_);
    return waits_;
  }

 private:
  static constexpr std::int64_t kMilli = 1000;

  std::mutex mutex_;
  std::int64_t now_;  ///< in milliseconds
  std::int64_t steady_ = 5000000;
  std::vector<std::int64_t> waits_;
};

}  // namespace tarvendo
