#include "tourney/runner_switch_commands.h"

#include <gtest/gtest.h>

#include "platform/clock.h"
#include "tourney/small_tourney.h"

namespace tarvendo {
namespace {

constexpr long long kEarly = 1000000000;
constexpr long long kLate = 1000003600;

class RunnerSwitchCommands : public TourneyTest {
 protected:
  std::string Status() {
    machine.TakeOutput();
    ShowRunnerStatus(tourney);
    return machine.TakeOutput();
  }
};

TEST_F(RunnerSwitchCommands, StartingSaysSoAndShowsThePromptAgain) {
  SwitchRunnerOn(tourney);
  EXPECT_TRUE(tourney.Switch().IsRunning());
  EXPECT_EQ(machine.TakeOutput(), "\n***************\nRunner started.\n***************\n> ");
}

TEST_F(RunnerSwitchCommands, StoppingSaysSoAndShowsThePromptAgain) {
  SwitchRunnerOn(tourney);
  machine.TakeOutput();
  SwitchRunnerOff(tourney);
  EXPECT_FALSE(tourney.Switch().IsRunning());
  EXPECT_EQ(machine.TakeOutput(), "\n***************\nRunner stopped.\n***************\n> ");
}

TEST_F(RunnerSwitchCommands, TimesAreSetAndShownInAsctimeForm) {
  SetStartTime(tourney, kEarly);
  EXPECT_EQ(machine.TakeOutput(), "Start time set to " + LocalTimeText(kEarly));
  SetStopTime(tourney, kLate);
  EXPECT_EQ(machine.TakeOutput(), "Stop time set to " + LocalTimeText(kLate));
  EXPECT_EQ(tourney.Switch().Get().start_time, kEarly);
  EXPECT_EQ(tourney.Switch().Get().stop_time, kLate);
}

TEST_F(RunnerSwitchCommands, TimeZeroClearsWithoutAWord) {
  SetStartTime(tourney, kEarly);
  SetStopTime(tourney, kEarly);
  machine.TakeOutput();
  SetStartTime(tourney, 0);
  SetStopTime(tourney, 0);
  EXPECT_EQ(machine.TakeOutput(), "");
  EXPECT_EQ(tourney.Switch().Get().start_time, 0);
  EXPECT_EQ(tourney.Switch().Get().stop_time, 0);
}

TEST_F(RunnerSwitchCommands, TheStatusWithoutTimesIsOneLine) {
  EXPECT_EQ(Status(), "Runner status: STOPPED\n");
  SwitchRunnerOn(tourney);
  EXPECT_EQ(Status(), "Runner status: RUNNING\n");
}

TEST_F(RunnerSwitchCommands, ATimeThatIsSetFollowsTheStatus) {
  SetStartTime(tourney, kEarly);
  EXPECT_EQ(Status(), "Runner status: STOPPED\nStart time: " + LocalTimeText(kEarly));
  SetStartTime(tourney, 0);
  SetStopTime(tourney, kEarly);
  EXPECT_EQ(Status(), "Runner status: STOPPED\nStop time:  " + LocalTimeText(kEarly));
}

TEST_F(RunnerSwitchCommands, OfTwoTimesTheEarlierComesFirst) {
  SetStartTime(tourney, kEarly);
  SetStopTime(tourney, kLate);
  EXPECT_EQ(Status(), "Runner status: STOPPED\nStart time: " + LocalTimeText(kEarly) +
                          "Stop time:  " + LocalTimeText(kLate));
  SetStartTime(tourney, kLate);
  SetStopTime(tourney, kEarly);
  EXPECT_EQ(Status(), "Runner status: STOPPED\nStop time:  " + LocalTimeText(kEarly) +
                          "Start time: " + LocalTimeText(kLate));
}

TEST_F(RunnerSwitchCommands, OfTwoEqualTimesTheStopComesFirst) {
  SetStartTime(tourney, kEarly);
  SetStopTime(tourney, kEarly);
  EXPECT_EQ(Status(), "Runner status: STOPPED\nStop time:  " + LocalTimeText(kEarly) +
                          "Start time: " + LocalTimeText(kEarly));
}

}  // namespace
}  // namespace tarvendo
