#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace tarvendo {

/// The one lock of the tourney, between the console thread and the runner thread. Unlike a plain
/// mutex it can be broken: when a thread has died in a fault while holding it, the thread that
/// waits for it is not lost but learns of it and saves what there is. Used with std::lock_guard.
class TourneyLock {
 public:
  /// Waits until the lock is free and takes it. Throws Terminated (platform/faults.h) when it is
  /// broken.
  void lock();
  void unlock();

  /// Makes every present and later lock() throw.
  void Break();

  /// Waits until no other thread holds the lock, but at the most for `span`: a thread that died
  /// with it never gives it back. Returns at once when the calling thread holds it itself, as one
  /// does that has just survived a fault.
  void AwaitRelease(std::chrono::milliseconds span);

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::thread::id holder_;  ///< none while the lock is free
  bool broken_ = false;
};

}  // namespace tarvendo
