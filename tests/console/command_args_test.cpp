#include "console/command_args.h"

#include <gtest/gtest.h>

namespace tarvendo {
namespace {

CommandArgs Filled(const std::string& line) {
  CommandArgs args;
  args.Fill(line);
  return args;
}

TEST(CommandArgs, WordsAreCountedFromZeroAndAMissingOneIsEmpty) {
  const CommandArgs args = Filled("game 3 res\n");
  EXPECT_EQ(args.Count(), 3);
  EXPECT_EQ(args.Word(0), "game");
  EXPECT_EQ(args.Word(2), "res");
  EXPECT_EQ(args.Word(3), "");
  EXPECT_EQ(args.Word(-1), "");
}

TEST(CommandArgs, TheLineIsTrimmedOnTheRight) {
  EXPECT_EQ(Filled("set name My Cup \t \n").RestFrom(0), "set name My Cup");
  EXPECT_EQ(Filled("a \n").Count(), 1);
}

TEST(CommandArgs, ALineThatBeginsWithALineFeedIsEmpty) {
  EXPECT_EQ(Filled("\nabc").RestFrom(0), "");
  EXPECT_EQ(Filled("\n").Count(), 0);
  EXPECT_EQ(Filled("").Count(), 0);
}

TEST(CommandArgs, FillingAnewForgetsTheLineBefore) {
  CommandArgs args = Filled("one two three");
  args.Fill("four");
  EXPECT_EQ(args.Count(), 1);
  EXPECT_EQ(args.Word(0), "four");
}

TEST(CommandArgs, WhatOnlyATabSeparatesIsLost) {
  const CommandArgs args = Filled("addplayer\tCrafty\n");
  EXPECT_EQ(args.Count(), 1);
  EXPECT_EQ(args.Word(0), "addplayer");
}

TEST(CommandArgs, BehindALostWordTheNextBlankLeadsOn) {
  const CommandArgs args = Filled("a\tb c");
  EXPECT_EQ(args.Count(), 2);
  EXPECT_EQ(args.Word(1), "c");
}

TEST(CommandArgs, ABlankAndATabTogetherSeparate) {
  const CommandArgs args = Filled("add \tCrafty");
  EXPECT_EQ(args.Count(), 2);
  EXPECT_EQ(args.Word(1), "Crafty");
}

TEST(CommandArgs, TheRestOfTheLineKeepsItsBlanks) {
  const CommandArgs args = Filled("set name  My   own Cup  \n");
  EXPECT_EQ(args.RestFrom(2), "My   own Cup");
  EXPECT_EQ(args.RestFrom(1), "name  My   own Cup");
  EXPECT_EQ(args.RestFrom(5), "");
  EXPECT_EQ(args.RestFrom(-1), "");
}

TEST(CommandArgs, FindLooksThroughAllWordsFromTheCommandOn) {
  const CommandArgs args = Filled("remg -pla 3 -ALLES");
  EXPECT_EQ(args.Find("-all", -1, 0), 3);
  EXPECT_EQ(args.Find("REM", -1, 0), 0);
  EXPECT_EQ(args.Find("-sub", -1, 0), 0);
}

TEST(CommandArgs, FindTestsOneWordWhenAskedTo) {
  const CommandArgs args = Filled("get ponder round");
  EXPECT_EQ(args.Find("pond", 1, 0), 1);
  EXPECT_EQ(args.Find("pond", 2, 0), 0);
  EXPECT_EQ(args.Find("x", 9, 0), 0);
}

TEST(CommandArgs, FindComparesAsManyCharactersAsItIsTold) {
  const CommandArgs args = Filled("get poxx");
  EXPECT_EQ(args.Find("pond", 1, 2), 1);
  EXPECT_EQ(args.Find("pond", 1, 3), 0);
  EXPECT_EQ(args.Find("pond", 1, 99), 0);
  EXPECT_EQ(args.Find("pond", 1, -1), 0);
}

}  // namespace
}  // namespace tarvendo
