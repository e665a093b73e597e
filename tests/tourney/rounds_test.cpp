#include "tourney/rounds.h"

#include "tourney/small_tourney.h"

namespace tarvendo {
namespace {

class RoundsTest : public TourneyTest {
 protected:
  std::string Adjusted(int participants, int rounds) {
    tourney.ChangeParticipants().clear();
    EnterMany(participants);
    tourney.ChangeSettings()->rounds = rounds;
    AdjustRounds(tourney);
    return std::to_string(tourney.Settings().rounds) + " " + Output();
  }
};

TEST_F(RoundsTest, TheCurrentRoundIsTheFirstInWhichSomebodyHasNoGame) {
  EnterMany(4);
  Add(1, 2, 1);
  Add(3, 4, 1);
  Add(1, 3, 2);
  RecomputeCurrentRound(tourney);
  EXPECT_EQ(tourney.State().round, 2);
  tourney.ChangeState()->round = 7;
  Add(2, 4, 2);
  RecomputeCurrentRound(tourney);
  EXPECT_EQ(tourney.State().round, 3);
}

TEST_F(RoundsTest, AMissingSubRoundKeepsTheRound) {
  tourney.ChangeSettings()->sub_rounds = 2;
  EnterMany(2);
  Add(1, 2, 1, 1);
  tourney.ChangeState()->round = 5;
  RecomputeCurrentRound(tourney);
  EXPECT_EQ(tourney.State().round, 1);
  Add(2, 1, 1, 2);
  RecomputeCurrentRound(tourney);
  EXPECT_EQ(tourney.State().round, 2);
}

TEST_F(RoundsTest, GamesCountInAnyStatus) {
  EnterMany(2);
  Add(1, 2, 1).status = kSpooled;
  RecomputeCurrentRound(tourney);
  EXPECT_EQ(tourney.State().round, 2);
}

TEST_F(RoundsTest, WithAllRoundsCompleteTheRoundStays) {
  EnterMany(2);
  tourney.ChangeSettings()->rounds = 1;
  Add(1, 2, 1);
  tourney.ChangeState()->round = 9;
  RecomputeCurrentRound(tourney);
  EXPECT_EQ(tourney.State().round, 9);
}

TEST_F(RoundsTest, WithoutRoundsOrParticipantsOrInARoundRobinTheRoundStays) {
  tourney.ChangeState()->round = 9;
  RecomputeCurrentRound(tourney);
  EXPECT_EQ(tourney.State().round, 9);
  EnterMany(2);
  tourney.ChangeSettings()->rounds = 0;
  RecomputeCurrentRound(tourney);
  EXPECT_EQ(tourney.State().round, 9);
  tourney.ChangeSettings()->rounds = 2;
  tourney.ChangeSettings()->type = kRoundRobin;
  RecomputeCurrentRound(tourney);
  EXPECT_EQ(tourney.State().round, 9);
  tourney.ChangeSettings()->type = kSwiss;
  RecomputeCurrentRound(tourney);
  EXPECT_EQ(tourney.State().round, 1);
}

TEST_F(RoundsTest, WithNoSubRoundsNoRoundIsIncomplete) {
  EnterMany(2);
  tourney.ChangeState()->round = 9;
  for (const int sub_rounds : {0, -1}) {
    tourney.ChangeSettings()->sub_rounds = sub_rounds;
    RecomputeCurrentRound(tourney);
    EXPECT_EQ(tourney.State().round, 9);
  }
}

TEST_F(RoundsTest, HugeNumbersOfRoundsTakeNoTime) {
  EnterMany(2);
  tourney.ChangeSettings()->rounds = 2147483646;
  tourney.ChangeSettings()->sub_rounds = 2147483646;
  Add(1, 2, 1);
  RecomputeCurrentRound(tourney);
  EXPECT_EQ(tourney.State().round, 1);
}

TEST_F(RoundsTest, ARoundRobinNeedsAsManyRoundsAsItsFieldAsksFor) {
  EXPECT_EQ(RoundRobinRounds(0), -1);
  EXPECT_EQ(RoundRobinRounds(1), 1);
  EXPECT_EQ(RoundRobinRounds(2), 1);
  EXPECT_EQ(RoundRobinRounds(5), 5);
  EXPECT_EQ(RoundRobinRounds(6), 5);
}

TEST_F(RoundsTest, TheRoundsOfARoundRobinAreSetSilently) {
  tourney.ChangeSettings()->type = kRoundRobin;
  EXPECT_EQ(Adjusted(7, 2), "7 ");
  EXPECT_EQ(Adjusted(8, 99), "7 ");
}

TEST_F(RoundsTest, ASwissHasAtMostHalfAsManyRoundsAsParticipants) {
  EXPECT_EQ(Adjusted(8, 10), "4 Number of rounds adjusted to 4 (maximum).\n");
  EXPECT_EQ(Adjusted(9, 5), "4 Number of rounds adjusted to 4 (maximum).\n");
  EXPECT_EQ(Adjusted(0, 10), "0 Number of rounds adjusted to 0 (maximum).\n");
}

TEST_F(RoundsTest, ASwissHasRoundsEnoughForOneWinner) {
  EXPECT_EQ(Adjusted(20, 3), "5 Number of rounds adjusted to 5 (minimum).\n");
  EXPECT_EQ(Adjusted(16, 3), "4 Number of rounds adjusted to 4 (minimum).\n");
  EXPECT_EQ(Adjusted(17, 4), "5 Number of rounds adjusted to 5 (minimum).\n");
  EXPECT_EQ(Adjusted(16, -2147483647), "4 Number of rounds adjusted to 4 (minimum).\n");
}

TEST_F(RoundsTest, WithinTheLimitsNothingIsSaid) {
  EXPECT_EQ(Adjusted(16, 4), "4 ");
  EXPECT_EQ(Adjusted(16, 8), "8 ");
  EXPECT_EQ(Adjusted(0, 0), "0 ");
  EXPECT_EQ(Adjusted(0, -1), "-1 ");
  EXPECT_EQ(Adjusted(200, 100), "100 ");
}

TEST_F(RoundsTest, TooManyRoundsAreCutToHalfTheParticipants) {
  EnterMany(8);
  tourney.ChangeSettings()->rounds = 10;
  CutRoundsToHalf(tourney);
  EXPECT_EQ(Output(),
            "Amount of rounds can't be more than half of players in the tourney.\n"
            "Setting Rounds to 4.\n");
  EXPECT_EQ(tourney.Settings().rounds, 4);
  CutRoundsToHalf(tourney);
  EXPECT_EQ(Output(), "");
}

TEST_F(RoundsTest, TheRoundAdvancesWhenEverybodyHasPlayed) {
  EnterMany(4);
  AddReady(1, 2, kDraw);
  Game& last = Add(3, 4);
  EXPECT_FALSE(AdvanceCurrentRound(tourney));
  EXPECT_EQ(tourney.State().round, 1);
  last.status = kReady;
  EXPECT_TRUE(AdvanceCurrentRound(tourney));
  EXPECT_EQ(tourney.State().round, 2);
  EXPECT_FALSE(AdvanceCurrentRound(tourney));
}

TEST_F(RoundsTest, TheRoundNeverAdvancesPastRounds) {
  EnterMany(2);
  tourney.ChangeSettings()->rounds = 1;
  AddReady(1, 2, kDraw);
  EXPECT_FALSE(AdvanceCurrentRound(tourney));
  EXPECT_EQ(tourney.State().round, 1);
}

TEST_F(RoundsTest, AFirstGameThatIsNotReadyBlocksTheRound) {
  EnterMany(2);
  Add(1, 2, 1, 1);
  AddReady(2, 1, kDraw);
  EXPECT_FALSE(AdvanceCurrentRound(tourney));
}

TEST_F(RoundsTest, WithoutParticipantsTheRoundAdvances) {
  EXPECT_TRUE(AdvanceCurrentRound(tourney));
  EXPECT_EQ(tourney.State().round, 2);
}

TEST_F(RoundsTest, AbsurdSubRoundsAreCutToWhatTheMemoryHolds) {
  tourney.ChangeSettings()->sub_rounds = 2147483647;
  EXPECT_EQ(PlayableSubRounds(tourney, 0), 2000000);
  EXPECT_EQ(PlayableSubRounds(tourney, 10), 200000);
  EXPECT_EQ(PlayableSubRounds(tourney, 5000000), 1);
  tourney.ChangeSettings()->sub_rounds = 0;
  EXPECT_EQ(PlayableSubRounds(tourney, 10), 0);
  tourney.ChangeSettings()->sub_rounds = 3;
  EXPECT_EQ(PlayableSubRounds(tourney, 10), 3);
}

TEST_F(RoundsTest, ARoundRobinDoesNotAdvance) {
  tourney.ChangeSettings()->type = kRoundRobin;
  EXPECT_FALSE(AdvanceCurrentRound(tourney));
  EXPECT_EQ(tourney.State().round, 1);
}

TEST_F(RoundsTest, ASwissLacksTheRoundsBehindTheLastOneThatHasGames) {
  EnterMany(8);
  tourney.ChangeSettings()->rounds = 10;
  EXPECT_EQ(LastSwissRound(tourney), 4) << "no more than half of the participants";
  EXPECT_EQ(RoundsWithoutGames(tourney), 4);
  Add(1, 2, 3);
  EXPECT_EQ(RoundsWithoutGames(tourney), 1);
  Add(1, 3, 5);
  EXPECT_EQ(RoundsWithoutGames(tourney), 0);
  tourney.ChangeSettings()->rounds = -1;
  EXPECT_EQ(LastSwissRound(tourney), 0);
  tourney.ChangeSettings()->type = kRoundRobin;
  EXPECT_EQ(RoundsWithoutGames(tourney), 0);
}

}  // namespace
}  // namespace tarvendo
