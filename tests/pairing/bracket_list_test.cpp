#include "pairing/bracket_list.h"

#include <gtest/gtest.h>

#include "tourney/small_tourney.h"
#include "tourney/standings.h"

namespace tarvendo {
namespace {

class BracketListTest : public TourneyTest {
 protected:
  /// Brackets of the current standings, without the message.
  void Create(int quarter_points = 0, BracketMode mode = BracketMode::kPairDown) {
    UpdateStandingsAndRound(tourney);
    EXPECT_TRUE(CreateBrackets(tourney, brackets, BracketWidth{quarter_points}, mode));
    Output();
  }

  /// "3-4 2-1 ": the games, White first.
  std::string Games() {
    std::string text;
    for (const Game& game : tourney.Games()) {
      text += std::to_string(game.white) + "-" + std::to_string(game.black) + " ";
    }
    return text;
  }

  BracketList brackets{machine.clock};
};

using BracketListPrinting = BracketListTest;
using BracketListGames = BracketListTest;

TEST_F(BracketListPrinting, SaysHowManyBracketsWereMade) {
  EnterMany(4);
  AddReady(1, 2, kWhiteWins);
  AddReady(3, 4, kDraw);
  tourney.ChangeState()->round = 2;
  UpdateStandingsAndRound(tourney);
  EXPECT_TRUE(CreateBrackets(tourney, brackets, BracketWidth{4}, BracketMode::kPairDown));
  EXPECT_EQ(Output(), "1 brackets created.\n");
}

TEST_F(BracketListPrinting, OneBigBracketIsMadeSilently) {
  EnterMany(2);
  EXPECT_TRUE(CreateBrackets(tourney, brackets, BracketWidth{0}, BracketMode::kOneBig));
  EXPECT_EQ(Output(), "");
}

TEST_F(BracketListPrinting, WithoutAnybodyToPairThereAreNoBracketsAndNothingIsSaid) {
  EnterMany(2);
  Add(1, 2);
  EXPECT_FALSE(CreateBrackets(tourney, brackets, BracketWidth{0}, BracketMode::kPairDown));
  EXPECT_EQ(Output(), "");
  EXPECT_TRUE(brackets.chain.empty());
}

TEST_F(BracketListPrinting, ShowsTheEntriesUnderThePointsOfTheFirst) {
  Enter({"Ada", "Ben", "Cyd", "A name longer than its column"});
  AddReady(1, 2, kWhiteWins);
  AddReady(3, 4, kDraw);
  tourney.ChangeState()->round = 2;
  Create(2);
  ShowBrackets(tourney, brackets);
  EXPECT_EQ(Output(),
            "\nBracket  1 (1.0)\n"
            "     1. Ada            \n"
            "     3. Cyd            \n"
            "     4. A name longer than its column\n"
            "     2. Ben            \n");
}

TEST_F(BracketListPrinting, ShowsPartnersAndWhoIsAbsent) {
  EnterMany(4);
  AddReady(1, 2, kWhiteWins);
  AddReady(3, 4, kWhiteWins);
  AddReady(1, 3, kDraw, 2);
  AddReady(2, 4, kDraw, 2);
  tourney.ChangeState()->round = 3;
  UpdateStandingsAndRound(tourney);
  const PairingField field = MakePairingField(tourney);
  Bracket upper(4);
  Bracket lower(4);
  upper.Add(1, kNoColourWish);
  upper.Add(3, kNoColourWish);
  lower.Add(4, kNoColourWish);
  lower.Add(2, kNoColourWish);
  brackets.chain = {upper, lower};
  Output();
  ASSERT_TRUE(PairAll(field, brackets));
  ShowBrackets(tourney, brackets);
  EXPECT_EQ(Output(),
            "\nBracket  0 (1.5)\n"
            "     1. P1                   ABSENT\n"
            "     3. P3                   ABSENT\n"
            "\nBracket  0 (0.5)\n"
            "     4. P4              -  1. P1\n"
            "     2. P2              -  3. P3\n"
            "     1. P1              -  4. P4\n"
            "     3. P3              -  2. P2\n");
}

TEST_F(BracketListGames, AnUnknownBracketIsNotPaired) {
  EnterMany(4);
  Create();
  EXPECT_FALSE(PairBracket(tourney, brackets, 2));
  EXPECT_EQ(Output(), "No bracket number 2 found!\n");
}

TEST_F(BracketListGames, ABracketIsPairedAloneAndShown) {
  EnterMany(4);
  Create();
  EXPECT_TRUE(PairBracket(tourney, brackets, 1));
  EXPECT_EQ(Output(),
            "\nBracket  1 (0.0)\n"
            "     1. P1              -  3. P3\n"
            "     2. P2              -  4. P4\n"
            "     3. P3              -  1. P1\n"
            "     4. P4              -  2. P2\n"
            "Adding game  3 P3           -  1 P1          \n"
            "Adding game  2 P2           -  4 P4          \n");
}

TEST_F(BracketListGames, ABracketThatIsPairedAgainIsShownButGetsNoMoreGames) {
  EnterMany(2);
  Create();
  PairBracket(tourney, brackets, 1);
  Output();
  EXPECT_TRUE(PairBracket(tourney, brackets, 1));
  const std::string shown =
      "\nBracket  1 (0.0)\n     1. P1             \n     2. P2             \n";
  EXPECT_EQ(Output(), shown + shown);
  EXPECT_EQ(tourney.Games().size(), 1U);
}

TEST_F(BracketListGames, ABracketThatCannotBePairedGetsNoGames) {
  EnterMany(2);
  AddReady(1, 2, kDraw);
  tourney.ChangeState()->round = 2;
  Create();
  EXPECT_FALSE(PairBracket(tourney, brackets, 1));
  EXPECT_EQ(Output(), "Pairing failed!\n");
  EXPECT_EQ(tourney.Games().size(), 1U);
}

TEST_F(BracketListGames, AGameReadySinceTheBracketsWereMadeCounts) {
  EnterMany(2);
  Create();
  AddReady(1, 2, kDraw, 7);
  EXPECT_FALSE(PairBracket(tourney, brackets, 1));
}

TEST_F(BracketListGames, BetweenEqualWishesTheColoursAlternateAlsoAcrossRounds) {
  EnterMany(6);
  tourney.ChangeSettings()->rounds = 9;
  Create();
  PairBracket(tourney, brackets, 1);
  EXPECT_EQ(Games(), "4-1 2-5 6-3 ");
  tourney.EraseAllGames();
  for (Player& player : tourney.ChangeParticipants())
    player.colour_state = kNoColourWish;
  Create();
  PairBracket(tourney, brackets, 1);
  EXPECT_EQ(Games(), "1-4 5-2 3-6 ");
}

TEST_F(BracketListGames, TheGreaterWishDecides) {
  EnterMany(4);
  const int states[] = {kMustHaveWhite, kMediumBlack, kMediumWhite, kMustHaveBlack};
  for (Player& player : tourney.ChangeParticipants())
    player.colour_state = states[player.number - 1];
  Create();
  PairBracket(tourney, brackets, 1);
  EXPECT_EQ(Games(), "1-4 3-2 ");
}

TEST_F(BracketListGames, WithTwoSubRoundsAPairPlaysTwoGamesWithColoursSwapped) {
  EnterMany(2);
  tourney.ChangeSettings()->sub_rounds = 2;
  Create();
  PairBracket(tourney, brackets, 1);
  EXPECT_EQ(Games(), "2-1 1-2 ");
  EXPECT_EQ(tourney.Games()[0].sub_round, 1);
  EXPECT_EQ(tourney.Games()[1].sub_round, 2);
  EXPECT_EQ(tourney.Games()[1].round, 1);
}

TEST_F(BracketListGames, WithoutSubRoundsThereAreNoGames) {
  EnterMany(2);
  tourney.ChangeSettings()->sub_rounds = 0;
  Create();
  EXPECT_TRUE(PairBracket(tourney, brackets, 1));
  EXPECT_TRUE(tourney.Games().empty());
}

TEST_F(BracketListGames, ABracketWithAnUnpairedEntryIsShownFirst) {
  EnterMany(3);
  Create();
  brackets.chain.front().RecordPair(0, 1);
  CreateGames(tourney, brackets);
  EXPECT_EQ(Output(),
            "\nBracket  1 (0.0)\n"
            "     1. P1              -  2. P2\n"
            "     2. P2              -  1. P1\n"
            "     3. P3             \n"
            "Adding game  2 P2           -  1 P1          \n");
}

TEST_F(BracketListGames, ClearDropsTheBrackets) {
  EnterMany(2);
  Create();
  brackets.Clear();
  ShowBrackets(tourney, brackets);
  EXPECT_FALSE(PairBracket(tourney, brackets, 1));
  EXPECT_EQ(Output(), "No bracket number 1 found!\n");
}

TEST_F(BracketListGames, ATimeOutPrintsTheBannerAndPairsNobody) {
  EnterMany(4);
  const PairingField field = MakePairingField(tourney);
  Bracket upper(4);
  Bracket lower(4);
  for (const int number : {1, 2})
    upper.Add(number, kNoColourWish);
  for (const int number : {3, 4})
    lower.Add(number, kNoColourWish);
  brackets.chain = {upper, lower};
  std::int64_t now = 0;
  brackets.clock = PairingClock([&] { return ++now; });
  brackets.clock.SetLimit(1);
  EXPECT_FALSE(PairAll(field, brackets));
  EXPECT_EQ(Output(), "\n*********************\nTimeout!!!\n*********************\n\n");
}

}  // namespace
}  // namespace tarvendo
