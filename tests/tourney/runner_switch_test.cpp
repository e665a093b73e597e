#include "tourney/runner_switch.h"

#include <gtest/gtest.h>

#include <thread>

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

TEST(RunnerSwitch, ThreadsMaySetItsPartsAtTheSameTime) {
  RunnerSwitch runner;
  std::thread other([&] {
    for (int i = 0; i <= 1000; ++i)
      runner.SetStartTime(i);
  });
  for (int i = 0; i <= 1000; ++i)
    runner.SetStopTime(i);
  runner.SetRunning(true);
  other.join();
  EXPECT_EQ(runner.Get().start_time, 1000);
  EXPECT_EQ(runner.Get().stop_time, 1000);
  EXPECT_TRUE(runner.IsRunning());
}

}  // namespace
}  // namespace tarvendo
