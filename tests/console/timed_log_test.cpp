#include "console/timed_log.h"

#include <gtest/gtest.h>

#include "console/outputs.h"
#include "fakes/captured_log.h"

namespace tarvendo {
namespace {

class TimedLogs : public ::testing::Test {
 protected:
  TimedLogs() { machine_.files.MakeDirectory("/t"); }

  /// The file, "<T>" for a time of the right form.
  std::string Lines() {
    std::string lines = machine_.files.Bytes("/t/log");
    const std::string time = TimeNow();
    for (std::size_t at = lines.find(time); at != std::string::npos; at = lines.find(time))
      lines.replace(at, time.size(), "<T>");
    return lines;
  }

  std::string TimeNow() {
    const CalendarTime now = LocalCalendar(machine_.clock.Now());
    std::string text(100, ' ');
    const int size = std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d:%02d",
                                   now.year, now.month, now.day, now.hour, now.minute, now.second);
    return text.substr(0, static_cast<std::size_t>(size));
  }

  CapturedLog machine_;
};

TEST_F(TimedLogs, EachLineBeginsWithTheTimeWhenItsFirstLetterCame) {
  TimedLog log(machine_.files, machine_.clock, "/t/log");
  ASSERT_TRUE(log.IsOpen());
  EXPECT_TRUE(log.Write("\n***\nRunner started.\n> "));
  const std::string before = TimeNow();
  machine_.clock.Advance(std::chrono::minutes(5));
  EXPECT_TRUE(log.Write("Game 1"));
  EXPECT_TRUE(log.Write(" spooled.\nGame 2 spooled.\n"));
  const std::string now = TimeNow();
  ASSERT_NE(before, now);
  EXPECT_EQ(machine_.files.Bytes("/t/log"),
            before + "\n" + before + " ***\n" + before + " Runner started.\n" + before +
                " > Game 1 spooled.\n" + now + " Game 2 spooled.\n");
}

TEST_F(TimedLogs, WhatIsInTheFileStays) {
  machine_.files.Put("/t/log", "of yesterday\n");
  TimedLog(machine_.files, machine_.clock, "/t/log").Write("today\n");
  EXPECT_EQ(Lines(), "of yesterday\n<T> today\n");
}

TEST_F(TimedLogs, WhatEndsInTheMiddleOfALineIsGoneOnWithInTheNext) {
  machine_.files.Put("/t/log", "> ");
  TimedLog(machine_.files, machine_.clock, "/t/log").Write("today\n");
  EXPECT_EQ(Lines(), "> \n<T> today\n");
}

TEST_F(TimedLogs, AFileThatCannotBeOpenedIsTold) {
  EXPECT_FALSE(TimedLog(machine_.files, machine_.clock, "/none/log").IsOpen());
  Outputs outputs([](const std::string&) {}, [](const std::string&) {}, false);
  EXPECT_FALSE(outputs.AddTimedLog(machine_.host, "/none/log"));
}

TEST_F(TimedLogs, GetsWhatGoesToStandardOutputAndErrorButNotTheLineThatIsDrawnAnew) {
  std::string console;
  std::string error;
  Outputs outputs([&](const std::string& text) { console += text; },
                  [&](const std::string& text) { error += text; }, true);
  ASSERT_TRUE(outputs.AddTimedLog(machine_.host, "/t/log"));
  outputs.ToConsole("one\n");
  outputs.Status().Draw("1/3 played", 80);
  outputs.ToError("two\n");
  outputs.NoteInEmergency("three\n");
  EXPECT_EQ(Lines(), "<T> one\n<T> two\n<T> three\n");
  EXPECT_EQ(console, "one\n");
}

TEST_F(TimedLogs, ADiskThatIsFullIsToldOnceAndStopsNothing) {
  std::string console;
  std::string error;
  Outputs outputs([&](const std::string& text) { console += text; },
                  [&](const std::string& text) { error += text; }, false);
  ASSERT_TRUE(outputs.AddTimedLog(machine_.host, "/t/log"));
  machine_.files.FailFrom(FileOperation::kWrite, 1);
  outputs.ToConsole("one\n");
  outputs.ToConsole("two\n");
  EXPECT_EQ(console, "one\ntwo\n");
  EXPECT_EQ(error, "The file of --log cannot be written to.\n");
}

}  // namespace
}  // namespace tarvendo
