#pragma once

#include <condition_variable>
#include <mutex>
#include <optional>

#include "platform/clock.h"

namespace tarvendo {

/// What the runner's thread is woken for.
enum class Event : unsigned {
  kTourneyChanged = 1,  ///< the switch was moved, games were added: there may be something to do
  kHostNews = 2,        ///< a game host has something to tell
  kEnd = 4,             ///< the program ends
};

/// The events that have been posted since the last look; each kind counts once.
class EventSet {
 public:
  bool Has(Event event) const { return (bits_ & static_cast<unsigned>(event)) != 0; }
  void Add(Event event) { bits_ |= static_cast<unsigned>(event); }
  bool IsEmpty() const { return bits_ == 0; }

 private:
  unsigned bits_ = 0;
};

/// Wakes one thread, the reader, when something happens or its next deadline has come. Waiting
/// costs no processor time. The clock is handed in, so that the tests' time drives it.
class EventQueue {
 public:
  explicit EventQueue(Clock& clock) : clock_(clock) {}

  /// Any thread.
  void Post(Event event);

  /// Waits until something has been posted since the last call, but at the longest until
  /// `deadline`; without one for as long as it takes. Returns what was posted, which is nothing
  /// when the deadline has come (or the clock has returned early). The reader only.
  EventSet WaitUntil(std::optional<TimePoint> deadline);

 private:
  Clock& clock_;
  std::mutex mutex_;
  std::condition_variable posted_;
  EventSet waiting_;  ///< guarded by mutex_
};

}  // namespace tarvendo
