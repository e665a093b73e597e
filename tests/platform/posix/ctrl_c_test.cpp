#include "platform/posix/ctrl_c.h"

#include <gtest/gtest.h>
#include <poll.h>

namespace tarvendo {
namespace {

bool IsTold() {
  pollfd told{TerminalEventDescriptor(), POLLIN, 0};
  return poll(&told, 1, 0) == 1;
}

class CtrlCRules : public testing::Test {
 protected:
  CtrlCRules() { FollowKeyRules(true); }
  ~CtrlCRules() override { FollowKeyRules(false); }

  /// `ms` milliseconds behind the time of this test, which is that of no other.
  bool PressAt(int ms) { return TakeCtrlC(time_ + ms); }

 private:
  static inline std::int64_t next_time = 0;
  const std::int64_t time_ = next_time += 1000000;
};

TEST_F(CtrlCRules, WithoutRulesTheKeyEndsTheProgram) {
  FollowKeyRules(false);
  const CtrlCMeans at_the_prompt(CtrlC::kClearsLine);
  EXPECT_FALSE(PressAt(0));
  EXPECT_FALSE(IsTold());
}

TEST_F(CtrlCRules, BetweenTwoLinesTheKeyEndsTheProgram) {
  EXPECT_FALSE(PressAt(0));
}

TEST_F(CtrlCRules, WhileACommandRunsTheKeyIsTheCommands) {
  const CtrlCMeans for_the_command(CtrlC::kEndsCommand);
  for (int times = 0; times < 3; ++times)
    EXPECT_TRUE(PressAt(0));
  EXPECT_FALSE(IsTold());
}

TEST_F(CtrlCRules, AtThePromptTheReaderIsToldOnce) {
  const CtrlCMeans at_the_prompt(CtrlC::kClearsLine);
  EXPECT_TRUE(PressAt(0));
  EXPECT_TRUE(IsTold());
  EXPECT_TRUE(TakeTerminalEvents().ctrl_c);
  EXPECT_FALSE(IsTold());
  EXPECT_FALSE(TakeTerminalEvents().ctrl_c);
}

TEST_F(CtrlCRules, TheSecondPressWithinASecondEndsTheProgram) {
  const CtrlCMeans at_the_prompt(CtrlC::kClearsLine);
  EXPECT_TRUE(PressAt(0));
  EXPECT_TRUE(PressAt(1000));
  EXPECT_FALSE(PressAt(1999));
  TakeTerminalEvents();
}

TEST_F(CtrlCRules, WhatEndedACommandDoesNotCountAtThePrompt) {
  const CtrlCMeans at_the_prompt(CtrlC::kClearsLine);
  {
    const CtrlCMeans for_the_command(CtrlC::kEndsCommand);
    EXPECT_TRUE(PressAt(0));
  }
  EXPECT_TRUE(PressAt(1));
  TakeTerminalEvents();
}

}  // namespace
}  // namespace tarvendo
