#include "console/game_options.h"

#include <gtest/gtest.h>

#include "console/command_args.h"
#include "console/unknown_word_text.h"
#include "fakes/captured_log.h"
#include "tourney/game.h"

namespace tarvendo {
namespace {

class GameOptions : public ::testing::Test {
 protected:
  std::optional<GameSelection> Read(const std::string& words) {
    CommandArgs args;
    args.Fill("showg " + words);
    return ReadGameSelection(args);
  }

  GameFilter Filter(const std::string& words) { return Read(words)->filter; }

  CapturedLog machine_;
};

TEST_F(GameOptions, WithoutWordsNothingIsSelectedAndNothingLeftOut) {
  const auto selection = Read("");
  EXPECT_FALSE(selection->selects_something);
  EXPECT_FALSE(selection->has_unusable_option);
  EXPECT_FALSE(selection->filter.all);
}

TEST_F(GameOptions, AFirstWordOfDigitsIsAGameNumber) {
  EXPECT_EQ(Filter("7").number, 7);
  EXPECT_TRUE(Read("7")->selects_something);
  EXPECT_FALSE(Read("0")->selects_something);
  EXPECT_EQ(Filter("7x").number, 0);
  EXPECT_FALSE(Read("7x")->selects_something);
  EXPECT_EQ(Filter("both 7").number, 0);
}

TEST_F(GameOptions, EveryOptionSetsItsOwnCriterion) {
  EXPECT_TRUE(Filter("-all").all);
  EXPECT_EQ(Filter("-pla 2").player, 2);
  EXPECT_EQ(Filter("-whi 3").white, 3);
  EXPECT_EQ(Filter("-bla 4").black, 4);
  EXPECT_EQ(Filter("-ro 5").round, 5);
  EXPECT_EQ(Filter("-sub 6").sub_round, 6);
}

TEST_F(GameOptions, StatusWordsAreKnownByTheirBeginning) {
  EXPECT_EQ(Filter("-sta nothing").status, kNothingDone);
  EXPECT_EQ(Filter("-sta SPO").status, kSpooled);
  EXPECT_EQ(Filter("-sta ready").status, kReady);
}

TEST_F(GameOptions, ResultWordsAreKnownByTheirBeginning) {
  for (const char* word : {"1-0", "white", "W"})
    EXPECT_EQ(Filter(std::string("-res ") + word).result, kWhiteWins) << word;
  for (const char* word : {"1/2", "draw", "D"})
    EXPECT_EQ(Filter(std::string("-res ") + word).result, kDraw) << word;
  for (const char* word : {"0-1", "0", "black"})
    EXPECT_EQ(Filter(std::string("-res ") + word).result, kBlackWins) << word;
  EXPECT_EQ(Filter("-res unknown").result, kUnknown);
}

TEST_F(GameOptions, AValueThatSaysNothingIsNotUsable) {
  for (const char* words : {"-pla 0", "-pla x", "-whi", "-ro 0", "-sub", "-sta x", "-sta", "-res x",
                            "-res b", "-bla -all"}) {
    EXPECT_TRUE(Read(words)->has_unusable_option) << words;
  }
  EXPECT_FALSE(Read("-pla x")->selects_something);
}

TEST_F(GameOptions, SeveralNarrowTheSelectionTogether) {
  const auto selection = Read("-pla 2 -ro 3 -sta rea");
  EXPECT_EQ(selection->filter.player, 2);
  EXPECT_EQ(selection->filter.round, 3);
  EXPECT_EQ(selection->filter.status, kReady);
  EXPECT_TRUE(selection->selects_something);
}

TEST_F(GameOptions, BothMakesASelectionByPlayerOfOneByColour) {
  EXPECT_EQ(Filter("-whi 2 both").player, 2);
  EXPECT_EQ(Filter("both -whi 2").white, 0);
  EXPECT_EQ(Filter("-bla 3 BOTH").player, 3);
  EXPECT_EQ(Filter("-pla 3 both").player, 3);
}

TEST_F(GameOptions, BothTakesTheLaterOfTwoColours) {
  EXPECT_EQ(Filter("-whi 2 -bla 3 both").player, 3);
  EXPECT_EQ(Filter("-bla 3 -whi 2 both").player, 2);
  EXPECT_EQ(Filter("-bla 3 -whi 2 both").black, 0);
}

TEST_F(GameOptions, AnUnknownOptionIsRefused) {
  EXPECT_FALSE(Read("-pla 2 -xyz"));
  EXPECT_EQ(machine_.TakeOutput(), Unknown("-xyz"));
}

}  // namespace
}  // namespace tarvendo
