#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

namespace tarvendo {

/// A calendar date and a time of day in local time, as the user types it. Month 1 to 12.
struct CalendarTime {
  int year = 0;
  int month = 0;
  int day = 0;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

/// A moment of a clock that never jumps, whatever is done to the time of day.
using TimePoint = std::chrono::time_point<std::chrono::steady_clock, std::chrono::milliseconds>;

/// The time of day, and the waits of the threads. Virtual, so that tests hand in their own time.
class Clock {
 public:
  virtual ~Clock() = default;

  /// Seconds since the epoch.
  virtual std::int64_t Now() = 0;

  /// The present moment of the clock that never jumps: what deadlines are counted by.
  virtual TimePoint Steady() = 0;

  /// Waits on `wake`, whose mutex `held` holds, until it is notified while `done` holds, but at the
  /// most for `span`; with milliseconds::max() for as long as it takes, though a clock may return
  /// early from such a wait. Returns whether `done` holds.
  virtual bool Wait(std::condition_variable& wake, std::unique_lock<std::mutex>& held,
                    std::chrono::milliseconds span, const std::function<bool()>& done) = 0;
};

std::unique_ptr<Clock> MakeClock();

/// The local time in the form of the C library's asctime: "Sun Sep 16 01:03:52 1973\n". A number
/// that is no moment between 1970 and the year 3000 is written as it is: "-7\n". Any thread, like
/// those below.
std::string LocalTimeText(std::int64_t seconds);

/// The local calendar time at a moment; all parts 0 outside the years 1970 to 3000.
CalendarTime LocalCalendar(std::int64_t seconds);

/// The moment of a local calendar time, in seconds since the epoch; out of range parts are carried
/// over as the C library's mktime does. -1 when there is no such moment in the years 1970 to 3000.
std::int64_t FromLocalCalendar(const CalendarTime& time);

}  // namespace tarvendo
