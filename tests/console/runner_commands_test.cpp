#include <gtest/gtest.h>

#include "console/typed_commands.h"
#include "platform/clock.h"

namespace tarvendo {
namespace {

class RunnerCommands : public TypedCommands {
 protected:
  /// A time of day on the machine's present date.
  long long Today(int hour, int minute, int second) {
    CalendarTime time = LocalCalendar(machine.clock.Now());
    time.hour = hour;
    time.minute = minute;
    time.second = second;
    return FromLocalCalendar(time);
  }

  /// The start time that `run WORDS` sets.
  long long StartTime(const std::string& words) {
    const std::string output = Type("run " + words);
    const long long time = tourney.Switch().Get().start_time;
    EXPECT_EQ(output, "Start time set to " + LocalTimeText(time));
    return time;
  }
};

TEST_F(RunnerCommands, WithoutWordsTheRunnerIsSwitched) {
  EXPECT_EQ(Type("run"), "\n***************\nRunner started.\n***************\n> ");
  EXPECT_TRUE(tourney.Switch().IsRunning());
  EXPECT_EQ(Type("stop"), "\n***************\nRunner stopped.\n***************\n> ");
  EXPECT_FALSE(tourney.Switch().IsRunning());
}

TEST_F(RunnerCommands, AWordWithCClearsTheTime) {
  for (const char* word : {"c", "Clear", "cx"}) {
    tourney.ChangeSwitch()->SetStartTime(1);
    tourney.ChangeSwitch()->SetStopTime(2);
    EXPECT_EQ(Type(std::string("run ") + word), "Runner start time cleared.\n");
    EXPECT_EQ(tourney.Switch().Get().start_time, 0);
    EXPECT_EQ(Type(std::string("stop ") + word), "Runner stop time cleared.\n");
    EXPECT_EQ(tourney.Switch().Get().stop_time, 0);
  }
}

TEST_F(RunnerCommands, ATimeOfDayIsOnTodaysDate) {
  EXPECT_EQ(StartTime("10:20:30"), Today(10, 20, 30));
  EXPECT_EQ(StartTime("10:20"), Today(10, 20, 0));
  EXPECT_EQ(StartTime("7"), Today(7, 0, 0));
  EXPECT_EQ(StartTime("23:59:59"), Today(23, 59, 59));
  EXPECT_FALSE(tourney.Switch().IsRunning());
}

TEST_F(RunnerCommands, TheStopTimeIsSetAlike) {
  EXPECT_EQ(Type("stop 10:20"), "Stop time set to " + LocalTimeText(Today(10, 20, 0)));
  EXPECT_EQ(tourney.Switch().Get().stop_time, Today(10, 20, 0));
}

TEST_F(RunnerCommands, PartsOfATimeThatAreOutOfRangeBecomeZero) {
  EXPECT_EQ(StartTime("25:70:70"), Today(0, 0, 0));
  EXPECT_EQ(StartTime("24:60:60"), Today(0, 0, 0));
  EXPECT_EQ(StartTime("99999999999999999999:5"), Today(0, 5, 0));
  EXPECT_EQ(StartTime("-3:5"), Today(0, 5, 0));
  EXPECT_EQ(StartTime("nonsense"), Today(0, 0, 0));
}

TEST_F(RunnerCommands, ADateStandsBeforeTheTime) {
  EXPECT_EQ(StartTime("9.8.2007 10:20:30"), FromLocalCalendar({2007, 8, 9, 10, 20, 30}));
}

TEST_F(RunnerCommands, AYearBefore2001Is2010) {
  EXPECT_EQ(StartTime("1.1.99 10:00"), FromLocalCalendar({2010, 1, 1, 10, 0, 0}));
  EXPECT_EQ(StartTime("1.1.2000 10:00"), FromLocalCalendar({2010, 1, 1, 10, 0, 0}));
  EXPECT_EQ(StartTime("1.1.2001 10:00"), FromLocalCalendar({2001, 1, 1, 10, 0, 0}));
}

TEST_F(RunnerCommands, DaysAndMonthsOutOfRangeBecomeOne) {
  EXPECT_EQ(StartTime("0.0.2005 1:00"), FromLocalCalendar({2005, 1, 1, 1, 0, 0}));
  EXPECT_EQ(StartTime("32.13.2005 1:00"), FromLocalCalendar({2005, 1, 1, 1, 0, 0}));
  EXPECT_EQ(StartTime("31.12.2005 1:00"), FromLocalCalendar({2005, 12, 31, 1, 0, 0}));
}

TEST_F(RunnerCommands, MissingPartsOfADateCountAsZero) {
  EXPECT_EQ(StartTime("5 1:00"), FromLocalCalendar({2010, 1, 5, 1, 0, 0}));
  EXPECT_EQ(StartTime("5.6 1:00"), FromLocalCalendar({2010, 6, 5, 1, 0, 0}));
}

TEST_F(RunnerCommands, ADayThatTheMonthDoesNotHaveIsCarriedOver) {
  EXPECT_EQ(StartTime("31.2.2005 1:00"), FromLocalCalendar({2005, 3, 3, 1, 0, 0}));
}

TEST_F(RunnerCommands, OfTwoWordsNoneClears) {
  EXPECT_EQ(StartTime("c 10:00"), FromLocalCalendar({2010, 1, 1, 10, 0, 0}));
}

}  // namespace
}  // namespace tarvendo
