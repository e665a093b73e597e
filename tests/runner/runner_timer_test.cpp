#include "runner/runner_timer.h"

#include <gtest/gtest.h>

#include "runner/small_tourney.h"

namespace tarvendo {
namespace {

constexpr long long kNow = 1000000000;
constexpr const char* kStarted = "\n***************\nRunner started.\n***************\n> ";
constexpr const char* kStopped = "\n***************\nRunner stopped.\n***************\n> ";

class StartStopTimer : public ::testing::Test, protected SmallTourney {
 protected:
  void SetTimes(long long start, long long stop) {
    tourney.ChangeSwitch()->SetStartTime(start);
    tourney.ChangeSwitch()->SetStopTime(stop);
  }

  /// What one pass prints.
  std::string Pass() {
    EXPECT_EQ(timer_.Pass(), std::chrono::milliseconds(2000));
    return machine.TakeOutput();
  }

  RunnerTimer timer_{shared, machine.clock};
};

TEST_F(StartStopTimer, WithoutTimesNothingHappens) {
  EXPECT_EQ(Pass(), "");
  EXPECT_FALSE(tourney.Switch().IsRunning());
}

TEST_F(StartStopTimer, ATimeInTheFutureWaits) {
  SetTimes(kNow + 1, 0);
  EXPECT_EQ(Pass(), "");
  machine.clock.SetNow(kNow + 1);
  EXPECT_EQ(Pass(), kStarted);
}

TEST_F(StartStopTimer, ATimeInThePastFiresInOnePassAndIsCleared) {
  SetTimes(kNow - 100000, 0);
  EXPECT_EQ(Pass(), kStarted);
  EXPECT_TRUE(tourney.Switch().IsRunning());
  EXPECT_EQ(tourney.Switch().Get().start_time, 0);
  EXPECT_EQ(Pass(), "");
}

TEST_F(StartStopTimer, TheStopTimeSwitchesOff) {
  tourney.ChangeSwitch()->SetRunning(true);
  SetTimes(0, kNow);
  EXPECT_EQ(Pass(), kStopped);
  EXPECT_FALSE(tourney.Switch().IsRunning());
  EXPECT_EQ(tourney.Switch().Get().stop_time, 0);
}

TEST_F(StartStopTimer, OneOfTheTwoFiresInAPassTheStartFirst) {
  SetTimes(kNow, kNow - 50);
  EXPECT_EQ(Pass(), kStarted);
  EXPECT_EQ(tourney.Switch().Get().stop_time, kNow - 50);
  EXPECT_EQ(Pass(), kStopped);
  EXPECT_EQ(Pass(), "");
}

}  // namespace
}  // namespace tarvendo
