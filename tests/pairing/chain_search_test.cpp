#include "pairing/chain_search.h"

#include <gtest/gtest.h>

#include "pairing/bracket_pairing.h"
#include "pairing/hand_made_field.h"

namespace tarvendo {
namespace {

class ChainSearchTest : public testing::Test {
 protected:
  PairingCode Pair(const PairingField& field, std::vector<Bracket>& chain) {
    return PairBracketChain(field, chain, clock);
  }

  /// The chain after a search that succeeds.
  std::string PairedText(const PairingField& field, const std::vector<Numbers>& brackets) {
    std::vector<Bracket> chain = ChainOf(field, brackets);
    EXPECT_EQ(Pair(field, chain), PairingCode::kPaired);
    return ChainText(chain);
  }

  /// The colour level at which a bracket of players with this wish is paired.
  ColourLevel LevelFor(std::size_t players, int colour_state) {
    const PairingField field = FieldOfStates(Numbers(players, colour_state));
    Numbers numbers;
    for (std::size_t i = 1; i <= players; ++i)
      numbers.push_back(static_cast<int>(i));
    Bracket bracket = BracketOf(field, numbers);
    EXPECT_TRUE(PairSingleBracket(field, bracket, clock));
    return bracket.level;
  }

  std::int64_t now = 0;
  std::int64_t step = 0;
  PairingClock clock{[this] { return now += step; }};
};

using ChainSearch = ChainSearchTest;

TEST_F(ChainSearch, TheTopHalfMeetsTheBottomHalf) {
  EXPECT_EQ(PairedText(FreshField(8), {{1, 2, 3, 4, 5, 6, 7, 8}}),
            "[1-5 2-6 3-7 4-8 5-1 6-2 7-3 8-4]");
}

TEST_F(ChainSearch, AfterARematchIsRefusedTheNextCandidatesAreThoseFurtherDownThenThoseBetween) {
  EXPECT_EQ(PairedText(FreshField(6, {{1, 4}}), {{1, 2, 3, 4, 5, 6}}), "[1-5 2-4 3-6 4-2 5-1 6-3]");
  EXPECT_EQ(PairedText(FreshField(6, {{1, 4}, {1, 5}, {1, 6}}), {{1, 2, 3, 4, 5, 6}}),
            "[1-2 2-1 3-5 4-6 5-3 6-4]");
}

TEST_F(ChainSearch, TwoWhoHaveMetCannotBePairedByThemselves) {
  const PairingField field = FreshField(2, {{1, 2}});
  Bracket bracket = BracketOf(field, {1, 2});
  EXPECT_FALSE(PairSingleBracket(field, bracket, clock));
  EXPECT_EQ(ChainText({bracket}), "[1 2]");
}

TEST_F(ChainSearch, TwoWhoHaveMetBothFloatDown) {
  EXPECT_EQ(PairedText(FreshField(4, {{1, 2}}), {{1, 2}, {3, 4}}), "[1a 2a][3-1 4-2 1-3 2-4]");
}

TEST_F(ChainSearch, TheFirstWithWhomTheRestWorksFloatsOutOfAnOddBracket) {
  EXPECT_EQ(PairedText(FreshField(4), {{1, 2, 3}, {4}}), "[1a 2-3 3-2][4-1 1-4]");
  EXPECT_EQ(PairedText(FreshField(4, {{1, 4}}), {{1, 2, 3}, {4}}), "[1-3 2a 3-1][4-2 2-4]");
}

TEST_F(ChainSearch, FloatersChooseFirstAndTakeTheFirstFreeEntry) {
  EXPECT_EQ(PairedText(FreshField(8), {{1, 2, 3}, {4, 5, 6, 7, 8}}),
            "[1a 2-3 3-2][4-1 5-7 6-8 7-5 8-6 1-4]");
}

TEST_F(ChainSearch, WhoHasMetAllOfTheNextBracketCannotFloatSoTheBracketsAreMerged) {
  EXPECT_EQ(PairedText(FreshField(4, {{1, 4}}), {{1}, {4}, {3, 2}}), "[1-3 4-2 3-1 2-4]");
}

TEST_F(ChainSearch, AFloaterThatMovedOnLeavesThoseBeforeItToPairTheBracket) {
  EXPECT_EQ(
      PairedText(FreshField(6, {{1, 5}, {2, 5}, {3, 5}, {5, 6}}), {{4}, {3, 1}, {2}, {5}, {6}}),
      "[4a][3-1 1-3 4a][2-6 4-5 5-4 6-2]");
}

TEST_F(ChainSearch, TenTryEveryLevelTwelveLeaveOutTheFirstAndTwentyHaveTheLastOnly) {
  EXPECT_EQ(LevelFor(10, kNoColourWish), kNoConflict);
  EXPECT_EQ(LevelFor(10, kWeakWhite), kWeakGivesWay);
  EXPECT_EQ(LevelFor(10, kMediumWhite), kMediumGivesWay);
  EXPECT_EQ(LevelFor(12, kNoColourWish), kWeakGivesWay);
  EXPECT_EQ(LevelFor(12, kMediumBlack), kMediumGivesWay);
  EXPECT_EQ(LevelFor(16, kNoColourWish), kWeakGivesWay);
  EXPECT_EQ(LevelFor(18, kNoColourWish), kMediumGivesWay);
  EXPECT_EQ(LevelFor(20, kNoColourWish), kMediumGivesWay);
}

TEST_F(ChainSearch, ASmallBracketPrefersPartnersWithoutAConflict) {
  const PairingField field = FieldOfStates({kWeakWhite, kWeakBlack, kWeakWhite, kWeakBlack});
  EXPECT_EQ(PairedText(field, {{1, 2, 3, 4}}), "[1-4 2-3 3-2 4-1]");
}

TEST_F(ChainSearch, TwoWhoMustHaveWhiteAreNeverPaired) {
  const PairingField field = FieldOfStates({kMustHaveWhite, kMustHaveWhite});
  std::vector<Bracket> chain = ChainOf(field, {{1, 2}});
  EXPECT_EQ(Pair(field, chain), PairingCode::kNotPaired);
}

TEST_F(ChainSearch, WithTwoSubRoundsColoursDoNotCountButRematchesDo) {
  const Numbers states(4, kMustHaveWhite);
  const PairingField field = FieldOfStates(states, {{1, 3}}, 2);
  EXPECT_EQ(PairedText(field, {{1, 2, 3, 4}}), "[1-4 2-3 3-2 4-1]");
}

TEST_F(ChainSearch, AnOddLastBracketIsNotPairedAndTheMergeThatFollowsDoesNotHelp) {
  const PairingField field = FreshField(3);
  std::vector<Bracket> chain = ChainOf(field, {{1, 2, 3}});
  EXPECT_EQ(Pair(field, chain), PairingCode::kOddCount);
  chain = ChainOf(field, {{1, 2}, {3}});
  EXPECT_EQ(Pair(field, chain), PairingCode::kMergeFailed);
  EXPECT_EQ(ChainText(chain), "[1 2][3]");
}

TEST_F(ChainSearch, NobodyLeftToPairIsASuccess) {
  const PairingField field = FreshField(2);
  std::vector<Bracket> chain = ChainOf(field, {{}});
  EXPECT_EQ(Pair(field, chain), PairingCode::kPaired);
}

TEST_F(ChainSearch, TheTimeRunsOutInAChainWithoutATrace) {
  const PairingField field = FreshField(8);
  std::vector<Bracket> chain = ChainOf(field, {{1, 2, 3}, {4, 5, 6, 7, 8}});
  clock.SetLimit(1);
  step = 1;
  EXPECT_EQ(Pair(field, chain), PairingCode::kTimeOut);
  EXPECT_EQ(ChainText(chain), "[1 2 3][4 5 6 7 8]");
}

TEST_F(ChainSearch, TheTimeRunsOutInASingleBracketAsAPlainFailure) {
  const PairingField field = FreshField(4);
  std::vector<Bracket> chain = ChainOf(field, {{1, 2, 3, 4}});
  clock.SetLimit(1);
  step = 1;
  EXPECT_EQ(Pair(field, chain), PairingCode::kNotPaired);
}

TEST_F(ChainSearch, ABracketWhoseGamesHaveBeenPlannedHasNobodyLeftToPair) {
  const PairingField field = FreshField(2);
  Bracket bracket = BracketOf(field, {1, 2});
  ASSERT_TRUE(PairSingleBracket(field, bracket, clock));
  bracket.ForgetPair(0);
  bracket.ForgetPair(1);
  EXPECT_TRUE(PairSingleBracket(field, bracket, clock));
  EXPECT_EQ(ChainText({bracket}), "[1 2]");
}

TEST(PairingClock, RunsOutWhenMoreThanTheLimitHasPassedAndStaysOut) {
  std::int64_t now = 100;
  PairingClock clock([&] { return now; });
  clock.SetLimit(3);
  clock.Restart();
  now = 103;
  EXPECT_FALSE(clock.IsTimedOut());
  now = 104;
  EXPECT_TRUE(clock.IsTimedOut());
  now = 100;
  EXPECT_TRUE(clock.IsTimedOut());
  clock.Restart();
  EXPECT_FALSE(clock.IsTimedOut());
}

TEST(PairingClock, ALimitOfNothingIsTenSeconds) {
  PairingClock clock([] { return std::int64_t{0}; });
  clock.SetLimit(5);
  clock.SetLimit(0);
  EXPECT_EQ(clock.Limit(), 10);
  clock.SetLimit(-1);
  EXPECT_EQ(clock.Limit(), 10);
}

}  // namespace
}  // namespace tarvendo
