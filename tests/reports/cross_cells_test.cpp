#include "reports/cross_cells.h"

#include <gtest/gtest.h>

#include <limits>

#include "tourney/table_tourney.h"

namespace tarvendo {
namespace {

class CrossCellsTest : public TableTourney {
 protected:
  /// The cells of a participant (1-based), each followed by "|".
  std::string Row(int player, bool long_cells = false) {
    const CrossLayout layout = LayOutCross(tourney, long_cells);
    const std::string cells = CrossCells(tourney, layout)[static_cast<std::size_t>(player) - 1];
    std::string row;
    for (int i = 0; i < layout.columns; ++i) {
      row += cells.substr(static_cast<std::size_t>(i * layout.width),
                          static_cast<std::size_t>(layout.width)) +
             "|";
    }
    EXPECT_EQ(row.size(), cells.size() + static_cast<std::size_t>(layout.columns));
    return row;
  }

  int Width(bool long_cells = false) { return LayOutCross(tourney, long_cells).width; }
};

class RoundRobinCells : public CrossCellsTest {
 protected:
  void SetUp() override {
    MakeRoundRobin();
    AddPlayers(4);
  }
};

TEST_F(RoundRobinCells, ShowTheResultFromBothSidesAndAnXForOneself) {
  Play(1, 2, kWhiteWins);
  Play(1, 3, kDraw);
  Play(1, 4, kBlackWins);
  EXPECT_EQ(Row(1), "X|+|=|-|");
  EXPECT_EQ(Row(2), "-|X| | |");
  EXPECT_EQ(Row(3), "=| |X| |");
  EXPECT_EQ(Row(4), "+| | |X|");
}

TEST_F(RoundRobinCells, BothLoseIsALossForBothAndNoResultIsAStar) {
  Play(1, 2, kBothLose);
  Play(1, 3, kUnknown);
  Play(4, 1, kUnfinished);
  EXPECT_EQ(Row(1), "X|-|*|*|");
  EXPECT_EQ(Row(2), "-|X| | |");
  EXPECT_EQ(Row(4), "*| | |X|");
}

TEST_F(RoundRobinCells, AGameNotYetReadyIsABlankWhateverItsResult) {
  Play(1, 2, kWhiteWins).status = kSpooled;
  Schedule(1, 3);
  EXPECT_EQ(Row(1), "X| | | |");
}

TEST_F(RoundRobinCells, HaveOneMarkForEachSubRound) {
  tourney.ChangeSettings()->sub_rounds = 3;
  Play(1, 2, kWhiteWins, 1, 1);
  Play(2, 1, kWhiteWins, 1, 2);
  Play(1, 3, kDraw, 2, 3);
  EXPECT_EQ(Row(1), "XXX|+- |  =|   |");
  EXPECT_EQ(Row(2), "-+ |XXX|   |   |");
}

TEST_F(RoundRobinCells, NoSubRoundsCountAsOne) {
  for (const int sub_rounds : {0, -4}) {
    tourney.ChangeSettings()->sub_rounds = sub_rounds;
    EXPECT_EQ(Width(), 1);
    EXPECT_EQ(Row(2), " |X| | |");
  }
  Play(1, 2, kWhiteWins, 1, 0);
  EXPECT_EQ(Row(1), "X|+| | |") << "a game without sub-round belongs to the first";
}

TEST_F(RoundRobinCells, OfTwoGamesInOneSubRoundTheFirstIsShown) {
  Play(2, 1, kDraw);
  Play(1, 2, kWhiteWins);
  Schedule(1, 3);
  Play(1, 3, kWhiteWins);
  EXPECT_EQ(Row(1), "X|=| | |") << "also when the first is still to be played";
}

TEST_F(RoundRobinCells, GamesWithoutAPlaceAreLeftOut) {
  Play(1, 9, kWhiteWins);
  Play(0, 1, kWhiteWins);
  Play(1, 1, kWhiteWins);
  Play(1, 2, kWhiteWins, 1, 2);
  Play(1, 2, kWhiteWins, 1, std::numeric_limits<int>::max());
  EXPECT_EQ(Row(1), "X| | | |");
}

TEST_F(RoundRobinCells, LongOnesTellPointsAndGames) {
  tourney.ChangeSettings()->sub_rounds = 2;
  Play(1, 2, kWhiteWins, 1, 1);
  Play(2, 1, kDraw, 1, 2);
  Play(1, 3, kUnknown, 2, 1);
  Schedule(1, 4, 3, 1);
  EXPECT_EQ(Width(true), 7);
  EXPECT_EQ(Row(1, true), "X      |1.5/2  |0.0/1  |       |");
  EXPECT_EQ(Row(2, true), "0.5/2  |X      |       |       |");
}

TEST_F(RoundRobinCells, LongOnesComeWithOneSubRoundToo) {
  Play(1, 2, kDraw);
  EXPECT_EQ(Width(true), 7);
  EXPECT_EQ(Row(1, true), "X      |0.5/1  |       |       |");
  tourney.ChangeSettings()->sub_rounds = 10;
  EXPECT_EQ(Width(true), 8);
  tourney.ChangeSettings()->sub_rounds = 100;
  EXPECT_EQ(Width(true), 9);
}

TEST_F(RoundRobinCells, ALongOneTooWideTellsThePointsOnly) {
  tourney.ChangeSettings()->sub_rounds = 1000;
  for (int i = 1; i <= 1000; ++i)
    Play(1, 2, kWhiteWins, 1, i);
  EXPECT_EQ(Row(1, true), "X         |1000.0    |          |          |");
  EXPECT_EQ(Row(2, true), "0.0/1000  |X         |          |          |");
}

TEST_F(RoundRobinCells, AnAbsurdNumberOfSubRoundsDoesNotExhaustTheMemory) {
  tourney.ChangeSettings()->sub_rounds = std::numeric_limits<int>::max();
  Play(1, 2, kWhiteWins);
  const CrossLayout layout = LayOutCross(tourney, false);
  EXPECT_LE(layout.width, 2'000'000);
  EXPECT_EQ(CrossCells(tourney, layout)[1].substr(0, 2), "- ");
  EXPECT_EQ(Width(true), 16);
}

class SwissCells : public CrossCellsTest {
 protected:
  void SetUp() override {
    tourney.ChangeSettings()->rounds = 3;
    AddPlayers(8);
  }
};

TEST_F(SwissCells, HaveMarkColourAndOpponent) {
  Play(1, 2, kWhiteWins, 1);
  Play(8, 1, kWhiteWins, 2);
  Play(1, 5, kDraw, 3);
  EXPECT_EQ(Width(), 4);
  EXPECT_EQ(Row(1), "+W2 |-B8 |=W5 |");
  EXPECT_EQ(Row(2), "-B1 |    |    |");
  EXPECT_EQ(Row(8), "    |+W1 |    |");
}

TEST_F(SwissCells, MarkEveryResultFromBothSides) {
  const struct {
    int result;
    char white;
    char black;
  } cases[] = {{kWhiteWins, '+', '-'}, {kBlackWins, '-', '+'},  {kDraw, '=', '='},
               {kBothLose, '-', '-'},  {kUnfinished, '*', '*'}, {kUnknown, '*', '*'},
               {3, '*', '*'}};
  for (const auto& one : cases) {
    tourney.ChangeGames().clear();
    Play(1, 2, one.result, 1);
    EXPECT_EQ(Row(1)[0], one.white) << one.result;
    EXPECT_EQ(Row(2)[0], one.black) << one.result;
  }
}

TEST_F(SwissCells, AGameToBePlayedHasItsOpponentButNoMark) {
  Schedule(3, 4, 2);
  EXPECT_EQ(Row(3), "    | W4 |    |");
  EXPECT_EQ(Row(4), "    | B3 |    |");
}

TEST_F(SwissCells, AreWideEnoughForEveryOpponent) {
  AddPlayers(10);
  EXPECT_EQ(Width(), 5);
  Play(1, 10, kDraw, 1);
  EXPECT_EQ(Row(1), "=W10 |     |     |");
  AddPlayers(100);
  EXPECT_EQ(Width(), 6);
  tourney.ChangeSettings()->sub_rounds = 0;
  EXPECT_EQ(Width(), 6);
}

TEST_F(SwissCells, OfTwoGamesInOneRoundTheFirstIsShown) {
  Schedule(1, 2, 1);
  Play(1, 3, kWhiteWins, 1);
  EXPECT_EQ(Row(1), " W2 |    |    |");
  EXPECT_EQ(Row(3), "-B1 |    |    |");
}

TEST_F(SwissCells, GamesWithoutAPlaceAreLeftOut) {
  for (const int round : {0, -1, 4, std::numeric_limits<int>::min()}) {
    Play(1, 2, kWhiteWins, round);
  }
  EXPECT_EQ(Row(1), "    |    |    |");
}

TEST_F(SwissCells, AnOpponentTooLongForItsCellIsLeftOut) {
  Play(1, 12345, kWhiteWins, 1);
  Play(77, 1, kWhiteWins, 2);
  EXPECT_EQ(Row(1), "+W  |-B77|    |");
}

TEST_F(SwissCells, WithSubRoundsHaveAMarkForEachAndTheOpponentInThreeColumns) {
  tourney.ChangeSettings()->sub_rounds = 2;
  AddPlayers(12);
  Play(1, 12, kWhiteWins, 1, 1);
  Play(12, 1, kDraw, 1, 2);
  Schedule(1, 3, 2, 1);
  Play(3, 1, kWhiteWins, 2, 2);
  EXPECT_EQ(Width(), 5);
  EXPECT_EQ(Row(1), "+= 12| -  3|     |");
  EXPECT_EQ(Row(12), "-=  1|     |     |");
  EXPECT_EQ(Row(3), "     | +  1|     |");
}

TEST_F(SwissCells, WithThreeSubRoundsAreSixWide) {
  tourney.ChangeSettings()->sub_rounds = 3;
  Play(1, 2, kWhiteWins, 1, 3);
  EXPECT_EQ(Row(1), "  +  2|      |      |");
}

TEST_F(SwissCells, WithSubRoundsLeaveOutAnOpponentOfMoreThanThreeDigits) {
  tourney.ChangeSettings()->sub_rounds = 2;
  Play(1, 1000, kWhiteWins, 1, 1);
  EXPECT_EQ(Row(1), "+    |     |     |");
}

TEST_F(SwissCells, LongOnesComeWithSubRoundsOnly) {
  Play(1, 2, kWhiteWins, 1, 1);
  EXPECT_EQ(Row(1, true), "+W2 |    |    |");
  tourney.ChangeSettings()->sub_rounds = 2;
  Play(2, 1, kDraw, 1, 2);
  Schedule(1, 3, 2, 1);
  EXPECT_EQ(Width(true), 7);
  EXPECT_EQ(Row(1, true), "1.5/2  |       |       |");
  EXPECT_EQ(Row(2, true), "0.5/2  |       |       |");
}

TEST_F(SwissCells, AreNoneWithoutRoundsOrParticipants) {
  tourney.ChangeSettings()->rounds = -1;
  EXPECT_EQ(Row(1), "");
  tourney.ChangeParticipants().clear();
  EXPECT_TRUE(CrossCells(tourney, LayOutCross(tourney, false)).empty());
}

}  // namespace
}  // namespace tarvendo
