#include "platform/clock.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <limits>

#include "platform/host_time.h"

namespace tarvendo {
namespace {

/// The end of the year 3000: the last moment that the calendar of every host knows. What one host
/// does not know no host uses, so that a tourney shows the same times everywhere.
constexpr std::int64_t kLastMoment = 32535215999;

bool IsInCalendar(std::int64_t seconds) {
  return seconds >= 0 && seconds <= kLastMoment;
}

bool LocalParts(std::int64_t seconds, std::tm& parts) {
  return IsInCalendar(seconds) && HostLocalTime(seconds, parts);
}

class SystemClock : public Clock {
 public:
  std::int64_t Now() override { return HostSeconds(); }

  TimePoint Steady() override {
    return std::chrono::time_point_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now());
  }

  bool Wait(std::condition_variable& wake, std::unique_lock<std::mutex>& held,
            std::chrono::milliseconds span, const std::function<bool()>& done) override {
    // The end of a wait for "ever" would lie outside what a time point holds.
    const auto bounded = std::min<std::chrono::milliseconds>(span, std::chrono::hours(24));
    return wake.wait_for(held, bounded, done);
  }
};

}  // namespace

std::unique_ptr<Clock> MakeClock() {
  return std::make_unique<SystemClock>();
}

std::string LocalTimeText(std::int64_t seconds) {
  static constexpr std::array kDays = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  static constexpr std::array kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  std::tm parts{};
  if (!LocalParts(seconds, parts)) return std::to_string(seconds) + "\n";
  std::array<char, 96> text{};
  std::snprintf(text.data(), text.size(), "%s %s%3d %.2d:%.2d:%.2d %d\n",
                kDays.at(static_cast<std::size_t>(parts.tm_wday)),
                kMonths.at(static_cast<std::size_t>(parts.tm_mon)), parts.tm_mday, parts.tm_hour,
                parts.tm_min, parts.tm_sec, parts.tm_year + 1900);
  return text.data();
}

CalendarTime LocalCalendar(std::int64_t seconds) {
  std::tm parts{};
  if (!LocalParts(seconds, parts)) return CalendarTime{};
  return CalendarTime{parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday,
                      parts.tm_hour,        parts.tm_min,     parts.tm_sec};
}

std::int64_t FromLocalCalendar(const CalendarTime& time) {
  constexpr int kLowest = std::numeric_limits<int>::min();
  if (time.year < kLowest + 1900 || time.month == kLowest) return -1;
  std::tm parts{};
  parts.tm_year = time.year - 1900;
  parts.tm_mon = time.month - 1;
  parts.tm_mday = time.day;
  parts.tm_hour = time.hour;
  parts.tm_min = time.minute;
  parts.tm_sec = time.second;
  parts.tm_isdst = -1;
  const std::int64_t moment = HostMoment(parts);
  return IsInCalendar(moment) ? moment : -1;
}

}  // namespace tarvendo
