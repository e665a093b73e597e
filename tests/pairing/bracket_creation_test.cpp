#include "pairing/bracket_creation.h"

#include <gtest/gtest.h>

#include "pairing/hand_made_field.h"

namespace tarvendo {
namespace {

constexpr auto kDown = BracketMode::kPairDown;
constexpr auto kUp = BracketMode::kPairUp;

std::vector<Bracket> BracketsOf(const PairingField& field, int quarter_points, BracketMode mode) {
  return MakeBrackets(field, BracketWidth{quarter_points}, mode);
}

TEST(BracketCreation, WidthZeroMakesOneBracketForEachScore) {
  const PairingField field = FieldOfPoints({4, 0, 4, 2, 0, 2});
  EXPECT_EQ(ChainText(BracketsOf(field, 0, kDown)), "[1 3][4 6][2 5]");
  EXPECT_EQ(ChainText(BracketsOf(field, 0, kUp)), "[2 5][4 6][1 3]");
}

TEST(BracketCreation, AWidthOfHalfAPointJoinsScoresThatFarApart) {
  // The next bracket begins a quarter point further on, so 3 is alone and moves on.
  const PairingField field = FieldOfPoints({8, 6, 4, 2, 0, 0});
  EXPECT_EQ(ChainText(BracketsOf(field, 2, kDown)), "[1 2][4 5 6 3]");
  EXPECT_EQ(ChainText(BracketsOf(field, 2, kUp)), "[4 5 6][1 2 3]");
}

TEST(BracketCreation, ANegativeWidthCountsAsNone) {
  const PairingField field = FieldOfPoints({4, 4, 2, 2});
  EXPECT_EQ(ChainText(BracketsOf(field, -8, kDown)), "[1 2][3 4]");
}

TEST(BracketCreation, ASizeInHalfPointsIsTwiceAsManyQuarters) {
  EXPECT_EQ(WidthOf(BracketSize{3}).quarter_points, 6);
  EXPECT_EQ(WidthOf(BracketSize{-3}).quarter_points, 0);
  EXPECT_GT(WidthOf(BracketSize{2'000'000'000}).quarter_points, 500'000'000);
}

TEST(BracketCreation, AnEnormousWidthTakesEverybody) {
  const PairingField field = FieldOfPoints({400, 4, 2, 0});
  EXPECT_EQ(ChainText(BracketsOf(field, 2'000'000'000, kDown)), "[1 2 3 4]");
  EXPECT_EQ(ChainText(BracketsOf(field, 2'000'000'000, kUp)), "[1 2 3 4]");
}

TEST(BracketCreation, WhoHasMetAllOfHisScoreGroupMovesIntoTheNext) {
  const PairingField field = FieldOfPoints({4, 4, 4, 2, 2}, {{2, 1}, {2, 3}});
  EXPECT_EQ(ChainText(BracketsOf(field, 0, kDown)), "[1 3][4 5 2]");
}

TEST(BracketCreation, LonePlayersMoveInTheOrderOfEntries) {
  const PairingField field = FieldOfPoints({2, 2, 4, 4}, {{3, 4}});
  EXPECT_EQ(ChainText(BracketsOf(field, 0, kDown)), "[1 2 3 4]");
}

TEST(BracketCreation, APlayerAloneInHisBracketIsPassedOnTillHeFindsCompany) {
  const PairingField field = FieldOfPoints({8, 6, 4, 4, 2, 2}, {{1, 2}, {1, 3}, {1, 4}, {2, 3}});
  EXPECT_EQ(ChainText(BracketsOf(field, 0, kDown)), "[3 4 2][5 6 1]");
}

TEST(BracketCreation, ALonePlayerOfTheLastGroupMergesItWithTheOneAbove) {
  const PairingField field = FieldOfPoints({6, 6, 4, 4, 2, 2}, {{5, 6}});
  EXPECT_EQ(ChainText(BracketsOf(field, 0, kDown)), "[1 2][3 4 5 6]");
}

TEST(BracketCreation, MergingGoesOnUntilEverybodyHasSomebody) {
  const PairingField field = FieldOfPoints({6, 6, 4, 4, 2}, {{5, 3}, {5, 4}});
  EXPECT_EQ(ChainText(BracketsOf(field, 0, kDown)), "[1 2 3 4 5]");
}

TEST(BracketCreation, ASingleBracketStaysHoweverLoneItsPlayersAre) {
  EXPECT_EQ(ChainText(BracketsOf(FieldWhereAllHaveMet(3), 0, kDown)), "[1 2 3]");
  EXPECT_EQ(ChainText(BracketsOf(FreshField(1), 0, kUp)), "[1]");
}

TEST(BracketCreation, BracketsAreNumberedAlongTheChain) {
  const auto chain = BracketsOf(FieldOfPoints({4, 4, 2, 2, 0, 0}), 0, kDown);
  for (std::size_t i = 0; i < chain.size(); ++i)
    EXPECT_EQ(chain[i].number, static_cast<int>(i) + 1);
}

/// Four players on two scores; these have a game in the round already.
PairingField FieldWithGames(const Numbers& busy) {
  std::vector<Contender> contenders(4);
  for (const int number : {1, 2})
    contenders[static_cast<std::size_t>(number - 1)].points = 4;
  for (const int number : busy)
    contenders[static_cast<std::size_t>(number - 1)].has_game_in_round = true;
  return PairingField(contenders, 1);
}

TEST(BracketCreation, OnlyPairingUpTakesThoseWhoHaveAGameInTheRound) {
  const PairingField field = FieldWithGames({1, 2});
  EXPECT_EQ(ChainText(BracketsOf(field, 0, kDown)), "[3 4]");
  EXPECT_EQ(ChainText(BracketsOf(field, 0, BracketMode::kOneBig)), "[3 4]");
  EXPECT_EQ(ChainText(BracketsOf(FieldWithGames({3, 4}), 0, kUp)), "[3 4][1 2]");
  EXPECT_EQ(ChainText(BracketsOf(field, 0, kUp)), "[3 4]");
}

TEST(BracketCreation, NobodyWithoutAGameMakesNoBracketsButTheOneBigIsMadeEmpty) {
  const PairingField field = FieldWithGames({1, 2, 3, 4});
  EXPECT_TRUE(BracketsOf(field, 0, kDown).empty());
  EXPECT_TRUE(BracketsOf(field, 0, kUp).empty());
  EXPECT_EQ(ChainText(BracketsOf(field, 0, BracketMode::kOneBig)), "[]");
}

TEST(BracketCreation, OneBigBracketMovesNobody) {
  const PairingField field = FieldOfPoints({4, 0, 2}, {{1, 2}, {1, 3}});
  EXPECT_EQ(ChainText(BracketsOf(field, 0, BracketMode::kOneBig)), "[1 2 3]");
}

}  // namespace
}  // namespace tarvendo
