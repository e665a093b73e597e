#include "platform/clock.h"

#include <gtest/gtest.h>

#include <ctime>
#include <limits>
#include <thread>

namespace tarvendo {
namespace {

constexpr CalendarTime kSeptember{1973, 9, 16, 1, 3, 52};

TEST(Clock, ATimeIsWrittenInTheFormOfAsctime) {
  EXPECT_EQ(LocalTimeText(FromLocalCalendar(kSeptember)), "Sun Sep 16 01:03:52 1973\n");
  EXPECT_EQ(LocalTimeText(FromLocalCalendar({2001, 10, 5, 23, 0, 9})),
            "Fri Oct  5 23:00:09 2001\n");
}

TEST(Clock, NumbersThatAreNoTimesAreWrittenAsTheyAre) {
  EXPECT_EQ(LocalTimeText(-7), "-7\n");
  EXPECT_EQ(LocalTimeText(32535216000), "32535216000\n");
  EXPECT_EQ(LocalTimeText(std::numeric_limits<std::int64_t>::max()), "9223372036854775807\n");
  EXPECT_EQ(LocalTimeText(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808\n");
}

TEST(Clock, ACalendarTimeComesBackFromItsSeconds) {
  const CalendarTime time = LocalCalendar(FromLocalCalendar(kSeptember));
  EXPECT_EQ(time.year, 1973);
  EXPECT_EQ(time.month, 9);
  EXPECT_EQ(time.day, 16);
  EXPECT_EQ(time.hour, 1);
  EXPECT_EQ(time.minute, 3);
  EXPECT_EQ(time.second, 52);
}

TEST(Clock, NumbersThatAreNoTimesHaveNoCalendarTime) {
  const CalendarTime time = LocalCalendar(std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(time.year, 0);
  EXPECT_EQ(time.month, 0);
}

TEST(Clock, PartsOutOfRangeAreCarriedOver) {
  EXPECT_EQ(FromLocalCalendar({2001, 1, 32, 12, 0, 0}), FromLocalCalendar({2001, 2, 1, 12, 0, 0}));
  EXPECT_EQ(FromLocalCalendar({2000, 13, 1, 12, 0, 0}), FromLocalCalendar({2001, 1, 1, 12, 0, 0}));
  EXPECT_EQ(FromLocalCalendar({2001, 2, 1, 12, 60, 0}), FromLocalCalendar({2001, 2, 1, 13, 0, 0}));
}

TEST(Clock, YearsOutsideTheCalendarHaveNoMoment) {
  constexpr int kMost = std::numeric_limits<int>::max();
  constexpr int kLeast = std::numeric_limits<int>::min();
  for (const int year : {1900, 3002, kMost, kLeast, kLeast + 1899}) {
    EXPECT_EQ(FromLocalCalendar({year, 1, 1, 0, 0, 0}), -1) << year;
  }
  EXPECT_EQ(FromLocalCalendar({2001, kLeast, 1, 0, 0, 0}), -1);
  EXPECT_EQ(FromLocalCalendar({kMost, kMost, kMost, kMost, kMost, kMost}), -1);
}

TEST(Clock, NowIsTheTimeOfDay) {
  const std::int64_t before = std::time(nullptr);
  const std::int64_t now = MakeClock()->Now();
  EXPECT_GE(now, before);
  EXPECT_LE(now, before + 3600);
}

TEST(Clock, TheSteadyClockNeverGoesBack) {
  const std::unique_ptr<Clock> clock = MakeClock();
  TimePoint last = clock->Steady();
  for (int i = 0; i < 1000; ++i) {
    const TimePoint now = clock->Steady();
    ASSERT_GE(now, last);
    last = now;
  }
}

TEST(Clock, AWaitEndsWhenWhatItWaitsForHolds) {
  const std::unique_ptr<Clock> clock = MakeClock();
  std::mutex mutex;
  std::condition_variable wake;
  bool told = false;
  std::thread other([&] {
    const std::lock_guard<std::mutex> lock(mutex);
    told = true;
    wake.notify_one();
  });
  std::unique_lock<std::mutex> held(mutex);
  EXPECT_TRUE(clock->Wait(wake, held, std::chrono::milliseconds::max(), [&] { return told; }));
  EXPECT_TRUE(held.owns_lock());
  held.unlock();
  other.join();
}

TEST(Clock, AWaitEndsByItselfAfterItsSpan) {
  const std::unique_ptr<Clock> clock = MakeClock();
  std::mutex mutex;
  std::condition_variable wake;
  std::unique_lock<std::mutex> held(mutex);
  for (const int span : {1, 0, -5}) {
    EXPECT_FALSE(clock->Wait(wake, held, std::chrono::milliseconds(span), [] { return false; }));
    EXPECT_TRUE(held.owns_lock());
  }
}

}  // namespace
}  // namespace tarvendo
