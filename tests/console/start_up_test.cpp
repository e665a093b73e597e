#include "console/start_up.h"

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

TEST(CommandLine, GamesAndPatienceTakeANumberBehindThemInEitherForm) {
  const StartUp start = ReadCommandLine({"--games", "8", "script", "--patience=30"});
  EXPECT_EQ(start.games, 8);
  EXPECT_EQ(start.patience, 30);
  EXPECT_EQ(start.script, "script") << "a value behind an option is no script";
  EXPECT_EQ(start.error, "");
  EXPECT_EQ(ReadCommandLine({"script"}).games, 0);
}

TEST(CommandLine, NonsenseBehindANumberOptionIsTold) {
  for (const char* value : {"0", "-1", "513", "x", "", "2x", "99999999999"}) {
    EXPECT_EQ(ReadCommandLine({"--games", value}).error,
              std::string("--games takes a number from 1 to 512, not '") + value + "'.");
  }
  EXPECT_EQ(ReadCommandLine({"--games"}).error, "--games takes a number from 1 to 512.");
  EXPECT_EQ(ReadCommandLine({"--patience=0"}).error,
            "--patience takes a number from 1 to 100000, not '0'.");
}

}  // namespace
}  // namespace tarvendo
