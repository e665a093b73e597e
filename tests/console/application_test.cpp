#include "console/application.h"

#include <gtest/gtest.h>

namespace tarvendo {
namespace {

TEST(CommandLine, WithoutWordsTheKeyboardIsRead) {
  const StartUp start = ReadCommandLine({});
  EXPECT_EQ(start.script, "");
  EXPECT_FALSE(start.continues);
  EXPECT_FALSE(start.waits);
}

TEST(CommandLine, ASingleWordIsAScriptWhateverItLooksLike) {
  EXPECT_EQ(ReadCommandLine({"setup.txt"}).script, "setup.txt");
  EXPECT_EQ(ReadCommandLine({"-c"}).script, "-c");
  EXPECT_FALSE(ReadCommandLine({"-c"}).continues);
}

TEST(CommandLine, AnOptionWhoseSecondCharacterIsCContinues) {
  for (const char* option : {"-c", "-continue", "-cx"}) {
    EXPECT_TRUE(ReadCommandLine({"script", option}).continues) << option;
    EXPECT_TRUE(ReadCommandLine({option, "script"}).continues) << option;
    EXPECT_EQ(ReadCommandLine({option, "script"}).script, "script") << option;
  }
}

TEST(CommandLine, EveryOtherOptionIsIgnored) {
  for (const char* option : {"-C", "-x", "-", "--continue"})
    EXPECT_FALSE(ReadCommandLine({"script", option}).continues) << option;
}

TEST(CommandLine, OfSeveralScriptsTheFirstIsRead) {
  EXPECT_EQ(ReadCommandLine({"one", "two"}).script, "one");
  EXPECT_EQ(ReadCommandLine({"-c", "one", "two", "three"}).script, "one");
}

TEST(CommandLine, OnlyOptionsLeaveTheKeyboard) {
  EXPECT_EQ(ReadCommandLine({"-c", "-d"}).script, "");
}

TEST(CommandLine, WaitCountsAsNoWord) {
  EXPECT_TRUE(ReadCommandLine({"--wait"}).waits);
  EXPECT_EQ(ReadCommandLine({"--wait"}).script, "");
  EXPECT_EQ(ReadCommandLine({"-c", "--wait"}).script, "-c");
  EXPECT_TRUE(ReadCommandLine({"script", "--wait", "-c"}).continues);
  EXPECT_FALSE(ReadCommandLine({"script", "--waiting"}).waits);
}

}  // namespace
}  // namespace tarvendo
