#include "tourney/shared_tourney.h"

#include <stdexcept>

#include "platform/faults.h"

namespace tarvendo {

Hold::~Hold() {
  if (shared_ != nullptr) shared_->End(mark_);
}

Tourney& Hold::operator*() const {
  return shared_->tourney_;
}

Hold SharedTourney::Begin() {
  held_ = true;
  holder_ = std::this_thread::get_id();
  return {*this, {++turn_, tourney_.Version(), tourney_.Switch().Changes()}};
}

Hold SharedTourney::Take() {
  MutexLock lock(mutex_);
  if (held_ && holder_ == std::this_thread::get_id()) {
    throw std::logic_error("the thread holds the tourney already");
  }
  while (held_ && !broken_)
    given_back_.wait(lock.ForWait());
  if (broken_) throw Terminated("a thread has died while it worked on the tourney");
  return Begin();
}

void SharedTourney::Break() {
  const MutexLock lock(mutex_);
  broken_ = true;
  if (holder_ == std::this_thread::get_id()) held_ = false;
  given_back_.notify_all();
}

Hold SharedTourney::TakeForEmergency(std::chrono::milliseconds span) {
  Break();
  const auto deadline = std::chrono::steady_clock::now() + span;
  MutexLock lock(mutex_);
  while (held_ && given_back_.wait_until(lock.ForWait(), deadline) != std::cv_status::timeout) {
  }
  return Begin();
}

void SharedTourney::SetChangeListener(ChangeListener listener, std::thread::id own_thread) {
  const MutexLock lock(listener_mutex_);
  listener_ = std::move(listener);
  own_thread_ = own_thread;
}

void SharedTourney::End(const Hold::Mark& mark) {
  bool changed = false;
  {
    const MutexLock lock(mutex_);
    // A hold that was broken has given the tourney back already.
    if (!held_ || turn_ != mark.turn) return;
    changed =
        tourney_.Version() != mark.version || tourney_.Switch().Changes() != mark.switch_changes;
    held_ = false;
    given_back_.notify_all();
  }
  if (changed) TellListener();
}

void SharedTourney::TellListener() {
  const MutexLock lock(listener_mutex_);
  if (listener_ && own_thread_ != std::this_thread::get_id()) listener_();
}

}  // namespace tarvendo
