#include "pairing/swiss_driver.h"

#include <gtest/gtest.h>

#include "pairing/bracket_list.h"
#include "tourney/rounds.h"
#include "tourney/small_tourney.h"

namespace tarvendo {
namespace {

constexpr const char* kNoBrackets =
    "Can't create brackets. Maybe there are still games to be played?\n";
constexpr const char* kEvenBigFailed =
    "\nEven pairing one big bracket failed!\n"
    "In order to continue you should either give more time or do some pairing manually.\n";

class SwissDriverTest : public TourneyTest {
 protected:
  bool Pair(const PairingRequest& request = PairingRequest()) {
    Output();
    return PairSwissRound(tourney, brackets, request);
  }

  static PairingRequest Manual(bool down, bool up, int size = 0) {
    PairingRequest request;
    request.automatic = false;
    request.down = down;
    request.up = up;
    request.size.half_points = size;
    return request;
  }

  /// Everybody meets everybody, in that round.
  void LetAllMeet(int round) {
    const int players = static_cast<int>(tourney.Participants().size());
    for (int number = 1; number <= players; ++number) {
      for (int other = number + 1; other <= players; ++other)
        AddReady(number, other, kDraw, round);
    }
  }

  BracketList brackets{machine.clock};
};

using SwissDriver = SwissDriverTest;

TEST_F(SwissDriver, ARoundRobinIsRefused) {
  tourney.ChangeSettings()->type = kRoundRobin;
  EXPECT_FALSE(Pair());
  EXPECT_EQ(Output(),
            "This is not a swiss tourney, so no swiss round can be paired!\n"
            "Try CreateRRGames instead.\n");
}

TEST_F(SwissDriver, TheFirstRoundIsPairedTopAgainstBottom) {
  EnterMany(4);
  EXPECT_TRUE(Pair());
  EXPECT_EQ(Output(),
            "Pairing swiss round 1... 1 brackets created.\n"
            "Adding game  3 P3           -  1 P1          \n"
            "Adding game  2 P2           -  4 P4          \n");
  EXPECT_EQ(tourney.Games().front().round, 1);
}

TEST_F(SwissDriver, TheStandingsAreComputedBeforeTheRoundIsNamed) {
  EnterMany(4);
  AddReady(1, 2, kWhiteWins);
  AddReady(3, 4, kBlackWins);
  EXPECT_TRUE(Pair());
  EXPECT_EQ(Output(),
            "Pairing swiss round 2... 2 brackets created.\n"
            "Adding game  4 P4           -  1 P1          \n"
            "Adding game  2 P2           -  3 P3          \n");
}

TEST_F(SwissDriver, AFormerGameThatIsNotPlayedBlocksThePairing) {
  EnterMany(2);
  tourney.ChangeState()->round = 2;
  Add(1, 2);
  EXPECT_FALSE(Pair());
  EXPECT_EQ(Output(),
            "Pairing swiss round 2... "
            "There are games that are either not played or whose result is unknown on former "
            "rounds.\n"
            "Therefore pairing for round 2 can't be done.\n");
}

TEST_F(SwissDriver, AFormerUnknownResultBlocksThePairingAnUnfinishedOneDoesNot) {
  EnterMany(4);
  tourney.ChangeSettings()->rounds = 5;
  AddReady(1, 2, kUnknown);
  AddReady(3, 4, kUnfinished);
  EXPECT_FALSE(Pair());
  EXPECT_NE(Output().find("Therefore pairing for round 2 can't be done.\n"), std::string::npos);
  tourney.ChangeGames().front().result = kUnfinished;
  EXPECT_TRUE(Pair());
  EXPECT_EQ(tourney.Games().size(), 4U);
}

TEST_F(SwissDriver, ARoundThatIsPairedAlreadyHasNobodyLeft) {
  EnterMany(2);
  Pair();
  EXPECT_FALSE(Pair());
  EXPECT_EQ(Output(), std::string("Pairing swiss round 1... ") + kNoBrackets);
}

TEST_F(SwissDriver, TheThirdRoundTriesThreeWidthsBothWaysAndThenTheBigBracket) {
  EnterMany(4);
  LetAllMeet(1);
  tourney.ChangeState()->round = 3;
  EXPECT_TRUE(Pair());
  const std::string made = "1 brackets created.\n";
  EXPECT_EQ(Output(), "Pairing swiss round 3... " + made + " DOWN(0)" + made + " UP(0)" + made +
                          " DOWN(2)" + made + " UP(2)" + made + " DOWN(4)" + made + " UP(4)" +
                          kEvenBigFailed);
  EXPECT_EQ(tourney.Games().size(), 6U);
}

TEST_F(SwissDriver, TwoHundredWhoHaveAllMetFailAtOnce) {
  EnterMany(200);
  LetAllMeet(1);
  tourney.ChangeSettings()->rounds = 100;
  tourney.ChangeState()->round = 3;
  EXPECT_TRUE(Pair());
  EXPECT_NE(Output().find(kEvenBigFailed), std::string::npos);
}

TEST_F(SwissDriver, AnOddNumberOfPlayersCannotBePaired) {
  EnterMany(3);
  EXPECT_TRUE(Pair());
  EXPECT_EQ(Output(), std::string("Pairing swiss round 1... 1 brackets created.\n DOWN(0)"
                                  "1 brackets created.\n UP(0)") +
                          kEvenBigFailed);
  EXPECT_TRUE(tourney.Games().empty());
}

TEST_F(SwissDriver, DownIsTriedBeforeUpWhenBothAreAskedFor) {
  EnterMany(2);
  LetAllMeet(1);
  tourney.ChangeState()->round = 2;
  EXPECT_FALSE(Pair(Manual(true, true, 1)));
  EXPECT_EQ(Output(),
            "Pairing swiss round 2... "
            "Pairing Down, Bracket size 2...\n1 brackets created.\nfailed.\n"
            "Pairing Up, Bracket size 2...\n1 brackets created.\nfailed.\n");
}

TEST_F(SwissDriver, DownThatSucceedsIsEnough) {
  EnterMany(2);
  EXPECT_TRUE(Pair(Manual(true, true)));
  EXPECT_EQ(Output(),
            "Pairing swiss round 1... Pairing Down, Bracket size 0...\n1 brackets created.\n"
            "Adding game  2 P2           -  1 P1          \n");
}

TEST_F(SwissDriver, UpAloneIsNotPrecededByDown) {
  EnterMany(2);
  EXPECT_TRUE(Pair(Manual(false, true)));
  EXPECT_EQ(Output(),
            "Pairing swiss round 1... Pairing Up, Bracket size 0...\n1 brackets created.\n"
            "Adding game  2 P2           -  1 P1          \n");
}

TEST_F(SwissDriver, DownAloneIsNotFollowedByUp) {
  EnterMany(2);
  LetAllMeet(1);
  tourney.ChangeState()->round = 2;
  EXPECT_FALSE(Pair(Manual(true, false)));
  EXPECT_EQ(Output(),
            "Pairing swiss round 2... Pairing Down, Bracket size 0...\n1 brackets created.\n"
            "failed.\n");
}

TEST_F(SwissDriver, WithoutBracketsDownDoesNotGoOnToUp) {
  EnterMany(2);
  Add(1, 2);
  EXPECT_FALSE(Pair(Manual(true, true)));
  EXPECT_EQ(Output(), std::string("Pairing swiss round 1... Pairing Down, Bracket size 0...\n") +
                          kNoBrackets);
}

TEST_F(SwissDriver, ANegativeSizeIsShownAsTypedAndCountsAsNone) {
  EnterMany(4);
  AddReady(1, 2, kWhiteWins);
  AddReady(3, 4, kWhiteWins);
  EXPECT_TRUE(Pair(Manual(true, false, -3)));
  EXPECT_EQ(Output().substr(0, 77),
            "Pairing swiss round 2... Pairing Down, Bracket size -6...\n2 brackets created.");
}

TEST_F(SwissDriver, TheTimeLimitOfTheRequestHoldsForEachSearch) {
  EnterMany(2);
  PairingRequest request;
  request.time_limit = 7;
  Pair(request);
  EXPECT_EQ(brackets.clock.Limit(), 7);
  Pair();
  EXPECT_EQ(brackets.clock.Limit(), 10);
}

TEST_F(SwissDriver, ATimeOutGoesOnWithTheNextShape) {
  EnterMany(4);
  AddReady(1, 2, kWhiteWins);
  AddReady(3, 4, kWhiteWins);
  std::int64_t now = 0;
  brackets.clock = PairingClock([&] { return ++now; });
  PairingRequest request;
  request.time_limit = 1;
  EXPECT_TRUE(Pair(request));
  const std::string two = "2 brackets created.\n";
  const std::string one = "1 brackets created.\n";
  const std::string out = "\n*********************\nTimeout!!!\n*********************\n\n";
  EXPECT_EQ(Output(), "Pairing swiss round 2... " + two + out + " DOWN(0)" + two + out + " UP(0)" +
                          two + out + " DOWN(2)" + two + out + " UP(2)" + kEvenBigFailed)
      << one;
  EXPECT_EQ(tourney.Games().size(), 2U);
}

}  // namespace
}  // namespace tarvendo
