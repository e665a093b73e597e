#include "tourney/standings.h"

#include <gtest/gtest.h>

#include <limits>

#include "tourney/table_tourney.h"

namespace tarvendo {
namespace {

class Standings : public TableTourney {};

TEST_F(Standings, AWinIsFourQuartersAndADrawTwo) {
  AddPlayers(3);
  Play(1, 2, kWhiteWins);
  Play(3, 1, kBlackWins, 2);
  Play(2, 3, kDraw, 3);
  UpdateStandingsAndRound(tourney);
  EXPECT_EQ(P(1).points, 8);
  EXPECT_EQ(P(2).points, 2);
  EXPECT_EQ(P(3).points, 2);
  EXPECT_EQ(P(1).games_played, 2);
}

TEST_F(Standings, AReadyGameWithoutResultCountsAsPlayedAndForNothingElse) {
  for (const int result : {kUnknown, kUnfinished}) {
    tourney.ChangeParticipants().clear();
    tourney.ChangeGames().clear();
    AddPlayers(3);
    Play(1, 3, kWhiteWins);
    Play(1, 2, result, 2);
    UpdateStandingsAndRound(tourney);
    EXPECT_EQ(P(1).games_played, 2);
    EXPECT_EQ(P(2).games_played, 1);
    EXPECT_EQ(P(2).points, 0);
    EXPECT_EQ(P(2).buchholz, 0) << "has not met the player with a point";
    EXPECT_EQ(P(2).sonneborn_berger, 0);
  }
}

TEST_F(Standings, WhenBothLoseTheyHavePlayedButNotMet) {
  AddPlayers(3);
  Play(1, 3, kWhiteWins);
  Play(1, 2, kBothLose, 2);
  UpdateStandingsAndRound(tourney);
  EXPECT_EQ(P(1).points, 4);
  EXPECT_EQ(P(2).points, 0);
  EXPECT_EQ(P(2).games_played, 1);
  EXPECT_EQ(P(2).buchholz, 0);
}

TEST_F(Standings, GamesThatAreNotReadyAreIgnored) {
  AddPlayers(2);
  Play(1, 2, kWhiteWins).status = kSpooled;
  Play(1, 2, kWhiteWins, 2).status = kNothingDone;
  UpdateStandingsAndRound(tourney);
  EXPECT_EQ(P(1).games_played, 0);
  EXPECT_EQ(P(1).points, 0);
  EXPECT_EQ(P(2).buchholz, 0);
}

TEST_F(Standings, TwoWhoMeetTwiceGiveEachOtherBuchholzOnce) {
  AddPlayers(3);
  Play(1, 2, kWhiteWins, 1, 1);
  Play(2, 1, kDraw, 1, 2);
  Play(2, 3, kWhiteWins, 2);
  UpdateStandingsAndRound(tourney);
  EXPECT_EQ(P(1).points, 6);
  EXPECT_EQ(P(2).points, 6);
  EXPECT_EQ(P(1).buchholz, 6);
  EXPECT_EQ(P(1).sonneborn_berger, (4 + 2) * 6 / 4);
  EXPECT_EQ(P(2).buchholz, 6 + 0);
  EXPECT_EQ(P(2).sonneborn_berger, 2 * 6 / 4 + 4 * 0);
}

TEST_F(Standings, EverythingIsComputedAnewInEachRun) {
  AddPlayers(2);
  Play(1, 2, kWhiteWins);
  UpdateStandingsAndRound(tourney);
  UpdateStandingsAndRound(tourney);
  EXPECT_EQ(P(1).points, 4);
  EXPECT_EQ(P(1).games_played, 1);
  EXPECT_EQ(P(2).buchholz, 4);
  tourney.ChangeGames().clear();
  UpdateStandingsAndRound(tourney);
  EXPECT_EQ(P(1).points, 0);
  EXPECT_EQ(P(2).buchholz, 0);
  EXPECT_EQ(P(2).rank, 1);
}

TEST_F(Standings, SwissBreaksTiesByBuchholzFirst) {
  AddPlayers(5);
  // P1 and P2 have a win each; P1 has also lost to P3, who has two points, P2 to P4, who has one.
  Play(1, 5, kWhiteWins, 1);
  Play(2, 5, kWhiteWins, 2);
  Play(3, 1, kWhiteWins, 3);
  Play(3, 5, kWhiteWins, 4);
  Play(4, 2, kWhiteWins, 5);
  UpdateStandingsAndRound(tourney);
  EXPECT_EQ(P(1).points, P(2).points);
  EXPECT_GT(P(1).buchholz, P(2).buchholz);
  EXPECT_EQ(P(1).sonneborn_berger, P(2).sonneborn_berger);
  EXPECT_LT(P(1).rank, P(2).rank);
}

/// P1 beats the stronger and loses to the weaker of two opponents, P2 the other way round.
class EqualButForSonnebornBerger : public TableTourney {
 protected:
  void SetUp() override {
    AddPlayers(6);
    Play(1, 3, kWhiteWins, 1);
    Play(1, 4, kBlackWins, 2);
    Play(2, 3, kBlackWins, 3);
    Play(2, 4, kWhiteWins, 4);
    Play(3, 5, kWhiteWins, 5);
    Play(3, 6, kWhiteWins, 6);
  }
};

TEST_F(EqualButForSonnebornBerger, TheHigherSonnebornBergerStandsAheadInASwiss) {
  UpdateStandingsAndRound(tourney);
  ASSERT_EQ(P(1).points, P(2).points);
  ASSERT_EQ(P(1).buchholz, P(2).buchholz);
  EXPECT_GT(P(1).sonneborn_berger, P(2).sonneborn_berger);
  EXPECT_EQ(P(1).rank, 2);
  EXPECT_EQ(P(2).rank, 3);
}

TEST_F(Standings, RoundRobinLooksAtSonnebornBergerOnly) {
  MakeRoundRobin();
  AddPlayers(5);
  // P1: a win over P4 (1 point), P2: a win over P5 (none) and a loss to P3 (3 points).
  Play(1, 4, kWhiteWins, 1);
  Play(2, 5, kWhiteWins, 1);
  Play(4, 5, kWhiteWins, 2);
  Play(3, 2, kWhiteWins, 2);
  Play(3, 5, kWhiteWins, 3);
  Play(3, 4, kWhiteWins, 4);
  UpdateStandingsAndRound(tourney);
  ASSERT_EQ(P(1).points, P(2).points);
  ASSERT_LT(P(1).buchholz, P(2).buchholz);
  ASSERT_GT(P(1).sonneborn_berger, P(2).sonneborn_berger);
  EXPECT_LT(P(1).rank, P(2).rank);
  tourney.ChangeSettings()->type = kSwiss;
  UpdateStandingsAndRound(tourney);
  EXPECT_GT(P(1).rank, P(2).rank);
}

TEST_F(Standings, EqualScoresShareARankAndTheNextIsSkipped) {
  AddPlayers(5);
  // P1 first, P2 to P4 with a draw each against P1, P5 with nothing.
  Play(1, 2, kDraw, 1);
  Play(3, 1, kDraw, 2);
  Play(1, 4, kDraw, 3);
  UpdateStandingsAndRound(tourney);
  EXPECT_EQ(P(1).rank, 1);
  EXPECT_EQ(P(2).rank, 2);
  EXPECT_EQ(P(3).rank, 2);
  EXPECT_EQ(P(4).rank, 2);
  EXPECT_EQ(P(5).rank, 5);
}

TEST_F(Standings, ARoundThatEverybodyHasPlayedMovesTheSwissOn) {
  tourney.ChangeSettings()->rounds = 3;
  AddPlayers(2);
  Play(1, 2, kDraw, 1);
  UpdateStandingsAndRound(tourney);
  EXPECT_EQ(tourney.State().round, 2);
  UpdateStandingsAndRound(tourney);
  EXPECT_EQ(tourney.State().round, 2) << "round 2 has no games yet";
}

TEST_F(Standings, TheCurrentRoundNeverGoesPastRounds) {
  tourney.ChangeSettings()->rounds = 1;
  AddPlayers(2);
  Play(1, 2, kDraw, 1);
  UpdateStandingsAndRound(tourney);
  EXPECT_EQ(tourney.State().round, 1);
}

TEST_F(Standings, ARoundRobinHasNoCurrentRoundToMove) {
  MakeRoundRobin();
  AddPlayers(2);
  Play(1, 2, kDraw, 1);
  UpdateStandingsAndRound(tourney);
  EXPECT_EQ(tourney.State().round, 1);
}

TEST_F(Standings, OnlyTheFirstGameOfTheRoundInTheHistoryCountsForMovingOn) {
  tourney.ChangeSettings()->rounds = 3;
  AddPlayers(2);
  Schedule(1, 2, 1, 1);
  Play(2, 1, kDraw, 1, 2);
  UpdateStandingsAndRound(tourney);
  EXPECT_EQ(tourney.State().round, 1);
}

TEST_F(Standings, AParticipantWithoutGameInTheRoundHoldsItUp) {
  tourney.ChangeSettings()->rounds = 3;
  AddPlayers(3);
  Play(1, 2, kDraw, 1);
  UpdateStandingsAndRound(tourney);
  EXPECT_EQ(tourney.State().round, 1);
}

TEST_F(Standings, WithoutParticipantsEachRunMovesTheRoundOn) {
  tourney.ChangeSettings()->rounds = 3;
  UpdateStandingsAndRound(tourney);
  EXPECT_EQ(tourney.State().round, 2);
  UpdateStandingsAndRound(tourney);
  UpdateStandingsAndRound(tourney);
  EXPECT_EQ(tourney.State().round, 3);
}

TEST_F(Standings, GamesOfStrangersAndAgainstOneselfDoNoHarm) {
  AddPlayers(2);
  Play(1, 77, kWhiteWins);
  Play(0, -5, kDraw);
  Play(std::numeric_limits<int>::max(), std::numeric_limits<int>::min(), kDraw);
  Play(2, 2, kDraw, std::numeric_limits<int>::min());
  UpdateStandingsAndRound(tourney);
  EXPECT_EQ(P(1).points, 4);
  EXPECT_EQ(P(1).games_played, 1);
  EXPECT_EQ(P(1).buchholz, 0);
  EXPECT_EQ(P(2).points, 4);
  EXPECT_EQ(P(2).games_played, 2);
  EXPECT_EQ(P(2).buchholz, 0);
}

TEST_F(Standings, ParticipantsOfADamagedFileAreFoundByTheirOddNumbers) {
  AddPlayers(3);
  tourney.ChangeParticipants()[0].number = 3;
  tourney.ChangeParticipants()[1].number = -8;
  tourney.ChangeParticipants()[2].number = 900;
  Play(3, -8, kWhiteWins);
  Play(900, 3, kWhiteWins, 2);
  UpdateStandingsAndRound(tourney);
  EXPECT_EQ(tourney.Participants()[0].points, 4);
  EXPECT_EQ(tourney.Participants()[1].buchholz, 4);
  EXPECT_EQ(tourney.Participants()[2].rank, 1);
}

TEST_F(Standings, NothingIsPrinted) {
  AddPlayers(2);
  Play(1, 2, kDraw);
  UpdateStandingsAndRound(tourney);
  EXPECT_EQ(machine.TakeOutput(), "");
}

}  // namespace
}  // namespace tarvendo
