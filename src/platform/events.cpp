#include "platform/events.h"

#include <utility>

namespace tarvendo {

void EventQueue::Post(Event event) {
  const std::lock_guard<std::mutex> guard(mutex_);
  waiting_.Add(event);
  posted_.notify_one();
}

EventSet EventQueue::WaitUntil(std::optional<TimePoint> deadline) {
  auto span = std::chrono::milliseconds::max();
  if (deadline) {
    const TimePoint now = clock_.Steady();
    span = *deadline > now ? *deadline - now : std::chrono::milliseconds(0);
  }
  std::unique_lock<std::mutex> held(mutex_);
  clock_.Wait(posted_, held, span, [this] { return !waiting_.IsEmpty(); });
  return std::exchange(waiting_, EventSet());
}

}  // namespace tarvendo
