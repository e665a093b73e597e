#include "tourney/history.h"

#include "tourney/small_tourney.h"

namespace tarvendo {
namespace {

class HistoryTest : public TourneyTest {
 protected:
  HistoryTest() { Enter({"A", "B", "C"}); }

  const Player& One() { return *tourney.FindParticipant(1); }
};

TEST_F(HistoryTest, AGameInTheRoundIsFound) {
  Add(1, 2, 3);
  EXPECT_TRUE(HasGameInRound(tourney, One(), 3, false));
  EXPECT_FALSE(HasGameInRound(tourney, One(), 3, true));
  EXPECT_FALSE(HasGameInRound(tourney, One(), 2, false));
  tourney.ChangeGames()[0].status = kReady;
  EXPECT_TRUE(HasGameInRound(tourney, One(), 3, true));
}

TEST_F(HistoryTest, OnlyTheFirstGameOfTheRoundCounts) {
  Add(1, 2, 1, 1);
  AddReady(2, 1, kDraw, 1);
  EXPECT_FALSE(HasGameInRound(tourney, One(), 1, true));
  std::swap(tourney.ChangeGames()[0].status, tourney.ChangeGames()[1].status);
  EXPECT_TRUE(HasGameInRound(tourney, One(), 1, true));
}

TEST_F(HistoryTest, ARoundIsCompleteWithAGameForEverySubRound) {
  tourney.ChangeSettings()->sub_rounds = 2;
  Add(1, 2, 1, 1);
  EXPECT_FALSE(RoundComplete(tourney, One(), 1, false));
  AddReady(2, 1, kDraw, 1);
  EXPECT_TRUE(RoundComplete(tourney, One(), 1, false));
  EXPECT_FALSE(RoundComplete(tourney, One(), 1, true));
  tourney.ChangeGames()[0].status = kReady;
  EXPECT_TRUE(RoundComplete(tourney, One(), 1, true));
}

TEST_F(HistoryTest, NoSubRoundsCountAsOne) {
  for (const int sub_rounds : {0, -3}) {
    tourney.ChangeSettings()->sub_rounds = sub_rounds;
    EXPECT_FALSE(RoundComplete(tourney, *tourney.FindParticipant(3), 1, false));
  }
  Add(1, 2);
  EXPECT_TRUE(RoundComplete(tourney, One(), 1, false));
}

TEST_F(HistoryTest, PlacesThatNoGameHasAreLeftOut) {
  tourney.Change(*tourney.FindParticipant(1))->games = {-1, 5, 2147483647, -2147483647};
  EXPECT_FALSE(HasGameInRound(tourney, One(), 0, false));
  EXPECT_FALSE(RoundComplete(tourney, One(), 0, false));
}

}  // namespace
}  // namespace tarvendo
