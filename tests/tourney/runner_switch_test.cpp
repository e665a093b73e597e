#include "tourney/runner_switch.h"

#include <gtest/gtest.h>

#include <thread>

#include "tourney/shared_tourney.h"

namespace tarvendo {
namespace {

TEST(RunnerSwitch, IsOffWithoutTimesAtFirst) {
  const RunnerSwitch runner;
  EXPECT_FALSE(runner.IsRunning());
  EXPECT_EQ(runner.Get().start_time, 0);
  EXPECT_EQ(runner.Get().stop_time, 0);
}

TEST(RunnerSwitch, AnyNumberButZeroIsOn) {
  RunnerSwitch runner;
  runner.Set({1, 2, 5});
  EXPECT_TRUE(runner.IsRunning());
  EXPECT_EQ(runner.Get().running, 5);
  runner.SetRunning(false);
  EXPECT_FALSE(runner.IsRunning());
  EXPECT_EQ(runner.Get().start_time, 1);
  EXPECT_EQ(runner.Get().stop_time, 2);
}

TEST(RunnerSwitch, TimesHave64Bits) {
  RunnerSwitch runner;
  runner.SetStartTime(10000000000);
  runner.SetStopTime(20000000000);
  EXPECT_EQ(runner.Get().start_time, 10000000000);
  EXPECT_EQ(runner.Get().stop_time, 20000000000);
}

TEST(RunnerSwitch, LosesNothingBetweenThreadsThatHoldTheTourneyInTurn) {
  SharedTourney shared;
  std::thread other([&] {
    for (int i = 0; i <= 1000; ++i)
      shared.Take()->ChangeSwitch()->SetStartTime(i);
  });
  for (int i = 0; i <= 1000; ++i)
    shared.Take()->ChangeSwitch()->SetStopTime(i);
  shared.Take()->ChangeSwitch()->SetRunning(true);
  other.join();
  const RunnerSwitch& runner = shared.Take()->Switch();
  EXPECT_EQ(runner.Get().start_time, 1000);
  EXPECT_EQ(runner.Get().stop_time, 1000);
  EXPECT_TRUE(runner.IsRunning());
  EXPECT_EQ(runner.Changes(), 2003U);
}

TEST(RunnerSwitch, ThatItHasStoppedItselfHoldsUntilSomebodyMovesIt) {
  const auto stopped = [] {
    RunnerSwitch runner;
    runner.SetRunning(true);
    runner.StopItself();
    return runner;
  };
  EXPECT_FALSE(stopped().IsRunning());
  EXPECT_TRUE(stopped().HasStoppedItself());
  RunnerSwitch again = stopped();
  again.SetRunning(true);
  EXPECT_FALSE(again.HasStoppedItself());
  RunnerSwitch loaded = stopped();
  loaded.Set({});
  EXPECT_FALSE(loaded.HasStoppedItself());
  RunnerSwitch at_its_time = stopped();
  at_its_time.SetStartTime(5);
  EXPECT_TRUE(at_its_time.HasStoppedItself()) << "it does not go on yet";
  EXPECT_TRUE(at_its_time.TakeStartTime(5));
  EXPECT_FALSE(at_its_time.HasStoppedItself());
}

}  // namespace
}  // namespace tarvendo
