#include "tourney/tourney_lock.h"

#include "platform/faults.h"

namespace tarvendo {

void TourneyLock::lock() {
  std::unique_lock guard(mutex_);
  changed_.wait(guard, [this] { return !held_ || broken_; });
  if (broken_) throw Terminated("a thread has died while it worked on the tourney");
  held_ = true;
}

void TourneyLock::unlock() {
  const std::lock_guard guard(mutex_);
  held_ = false;
  changed_.notify_all();
}

void TourneyLock::Break() {
  const std::lock_guard guard(mutex_);
  broken_ = true;
  changed_.notify_all();
}

void TourneyLock::AwaitRelease(std::chrono::milliseconds span) {
  std::unique_lock guard(mutex_);
  changed_.wait_for(guard, span, [this] { return !held_; });
}

}  // namespace tarvendo
