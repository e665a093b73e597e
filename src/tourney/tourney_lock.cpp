#include "tourney/tourney_lock.h"

#include "platform/faults.h"

namespace tarvendo {

void TourneyLock::lock() {
  std::unique_lock guard(mutex_);
  changed_.wait(guard, [this] { return holder_ == std::thread::id{} || broken_; });
  if (broken_) throw Terminated("a thread has died while it worked on the tourney");
  holder_ = std::this_thread::get_id();
}

void TourneyLock::unlock() {
  const std::lock_guard guard(mutex_);
  holder_ = {};
  changed_.notify_all();
}

void TourneyLock::Break() {
  const std::lock_guard guard(mutex_);
  broken_ = true;
  changed_.notify_all();
}

void TourneyLock::AwaitRelease(std::chrono::milliseconds span) {
  std::unique_lock guard(mutex_);
  const auto own = std::this_thread::get_id();
  changed_.wait_for(guard, span, [&] { return holder_ == std::thread::id{} || holder_ == own; });
}

}  // namespace tarvendo
