#include "platform/events.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "fakes/manual_clock.h"

namespace tarvendo {
namespace {

using std::chrono::milliseconds;

class Events : public testing::Test {
 protected:
  ManualClock clock_;
  EventQueue queue_{clock_};
};

TEST_F(Events, WithoutNewsTheReaderComesBackAtItsDeadline) {
  const TimePoint deadline = clock_.Steady() + milliseconds(10000);
  EXPECT_TRUE(queue_.WaitUntil(deadline).IsEmpty());
  EXPECT_EQ(clock_.Steady(), deadline);
  EXPECT_EQ(clock_.Waits(), std::vector<std::int64_t>{10000});
}

TEST_F(Events, ADeadlineThatIsOverIsNoWait) {
  EXPECT_TRUE(queue_.WaitUntil(clock_.Steady() - milliseconds(1)).IsEmpty());
  EXPECT_TRUE(queue_.WaitUntil(clock_.Steady()).IsEmpty());
  EXPECT_TRUE(queue_.WaitUntil(TimePoint::min()).IsEmpty());
  EXPECT_EQ(clock_.Waits(), (std::vector<std::int64_t>{0, 0, 0}));
}

TEST_F(Events, AClockThatJumpsMovesNoDeadline) {
  const TimePoint deadline = clock_.Steady() + milliseconds(5000);
  clock_.SetNow(clock_.Now() + 86400);
  queue_.WaitUntil(deadline);
  clock_.SetNow(0);
  EXPECT_EQ(clock_.Steady(), deadline);
  EXPECT_EQ(clock_.Waits(), std::vector<std::int64_t>{5000});
}

TEST_F(Events, EachKindIsToldOnceHoweverOftenItWasPosted) {
  queue_.Post(Event::kHostNews);
  queue_.Post(Event::kEnd);
  queue_.Post(Event::kHostNews);
  const EventSet events = queue_.WaitUntil(std::nullopt);
  EXPECT_TRUE(events.Has(Event::kHostNews));
  EXPECT_TRUE(events.Has(Event::kEnd));
  EXPECT_FALSE(events.Has(Event::kTourneyChanged));
  EXPECT_TRUE(queue_.WaitUntil(clock_.Steady()).IsEmpty()) << "they have been told";
}

TEST_F(Events, WhatIsPostedDuringAWaitIsTold) {
  clock_.on_wait = [this](milliseconds) { queue_.Post(Event::kTourneyChanged); };
  EXPECT_TRUE(queue_.WaitUntil(clock_.Steady() + milliseconds(5)).Has(Event::kTourneyChanged));
}

TEST_F(Events, WithoutADeadlineTheReaderWaitsForAnotherThread) {
  std::thread other([this] { queue_.Post(Event::kEnd); });
  EXPECT_TRUE(queue_.WaitUntil(std::nullopt).Has(Event::kEnd));
  other.join();
}

TEST(EventsOfTheRealClock, TheReaderIsWokenLongBeforeItsDeadlineAndWithoutOne) {
  const std::unique_ptr<Clock> clock = MakeClock();
  EventQueue queue(*clock);
  EventQueue answers(*clock);
  std::thread other([&] {
    while (!queue.WaitUntil(std::nullopt).Has(Event::kEnd)) {
      answers.Post(Event::kHostNews);
    }
  });
  for (int i = 0; i < 1000; ++i) {
    queue.Post(Event::kTourneyChanged);
    EXPECT_TRUE(answers.WaitUntil(clock->Steady() + std::chrono::hours(1)).Has(Event::kHostNews));
  }
  queue.Post(Event::kEnd);
  other.join();
}

TEST(EventsOfTheRealClock, AtTheDeadlineTheClockSaysSo) {
  const std::unique_ptr<Clock> clock = MakeClock();
  EventQueue queue(*clock);
  const TimePoint deadline = clock->Steady() + milliseconds(20);
  EXPECT_TRUE(queue.WaitUntil(deadline).IsEmpty());
  EXPECT_GE(clock->Steady(), deadline);
}

}  // namespace
}  // namespace tarvendo
