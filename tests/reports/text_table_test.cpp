#include "reports/text_table.h"

#include <gtest/gtest.h>

#include "reports/cross_table.h"
#include "tourney/standings.h"
#include "tourney/table_tourney.h"

namespace tarvendo {
namespace {

class TextTableTest : public TableTourney {
 protected:
  std::string Table(const TableOptions& options = {}) {
    UpdateStandingsAndRound(tourney);
    return TextTable(BuildCrossTable(tourney, options));
  }

  /// The line of that number, 1-based, without its line feed.
  std::string Line(int number, const TableOptions& options = {}) {
    const std::string table = Table(options);
    std::size_t begin = 0;
    for (int i = 1; i < number; ++i)
      begin = table.find('\n', begin) + 1;
    return table.substr(begin, table.find('\n', begin) - begin);
  }

  /// Three in a round robin: Rook beats Bishop and draws with Knight, Bishop beats Knight.
  void PlayRoundRobin() {
    MakeRoundRobin();
    for (const char* name : {"Bishop", "Rook", "Knight"})
      AddPlayer(name);
    Play(1, 2, kBlackWins, 1);
    Play(2, 3, kDraw, 2);
    Play(1, 3, kWhiteWins, 3);
  }

  /// Four in two rounds of a Swiss.
  void PlaySwiss() {
    for (const char* name : {"Bishop", "Rook", "Knight", "Pawn"})
      AddPlayer(name);
    tourney.ChangeSettings()->rounds = 2;
    Play(1, 2, kWhiteWins, 1);
    Play(3, 4, kDraw, 1);
    Play(3, 1, kUnknown, 2);
    Schedule(2, 4, 2);
  }
};

TEST_F(TextTableTest, ARoundRobinLooksLikeThis) {
  PlayRoundRobin();
  EXPECT_EQ(Table(),
            "Rank|No  |Name  |1|2|3|Pts |S-B  |\n"
            "----|----|------|-|-|-|----|-----|\n"
            "  1.|  2.|Rook  |+|X|=| 1.5| 1.25|\n"
            "  2.|  1.|Bishop|X|-|+| 1.0| 0.50|\n"
            "  3.|  3.|Knight|-|=|X| 0.5| 0.75|\n");
}

TEST_F(TextTableTest, ASwissLooksLikeThis) {
  PlaySwiss();
  EXPECT_EQ(Table(),
            "Rank|No  |Name  |   1|   2|Pts |Buch |S-B  |\n"
            "----|----|------|----|----|----|-----|-----|\n"
            "  1.|  1.|Bishop|+W2 |*B3 |*1.0| *0.0|*0.00|\n"
            "  2.|  3.|Knight|=W4 |*W1 |*0.5| *0.5|*0.25|\n"
            "  2.|  4.|Pawn  |=B3 | B2 | 0.5|  0.5| 0.25|\n"
            "  4.|  2.|Rook  |-B1 | W4 | 0.0|  1.0| 0.00|\n");
}

TEST_F(TextTableTest, WithGamesPointsTellHowManyWerePlayed) {
  PlayRoundRobin();
  TableOptions options;
  options.games = true;
  EXPECT_EQ(Line(1, options), "Rank|No  |Name  |1|2|3|Pts     |S-B  |");
  EXPECT_EQ(Line(2, options), "----|----|------|-|-|-|--------|-----|");
  EXPECT_EQ(Line(3, options), "  1.|  2.|Rook  |+|X|=| 1.5 / 2| 1.25|");
}

TEST_F(TextTableTest, LongCellsTellPointsAndGamesOfAPair) {
  PlayRoundRobin();
  TableOptions options;
  options.long_cells = true;
  EXPECT_EQ(Line(1, options), "Rank|No  |Name  |      1|      2|      3|Pts |S-B  |");
  EXPECT_EQ(Line(3, options), "  1.|  2.|Rook  |1.0/1  |X      |0.5/1  | 1.5| 1.25|");
}

TEST_F(TextTableTest, TheBarStandsLastFilledToTheHighest) {
  PlayRoundRobin();
  TableOptions options;
  options.bar = true;
  EXPECT_EQ(Line(1, options), "Rank|No  |Name  |1|2|3|Pts |S-B  |    |");
  EXPECT_EQ(Line(2, options), "----|----|------|-|-|-|----|-----|----|");
  EXPECT_EQ(Line(3, options), "  1.|  2.|Rook  |+|X|=| 1.5| 1.25||#\\||");
  EXPECT_EQ(Line(4, options), "  2.|  1.|Bishop|X|-|+| 1.0| 0.50||#| |");
  EXPECT_EQ(Line(5, options), "  3.|  3.|Knight|-|=|X| 0.5| 0.75||\\| |");
}

TEST_F(TextTableTest, EachSwitchTakesItsColumnAway) {
  PlaySwiss();
  TableOptions options;
  options.rank = false;
  EXPECT_EQ(Line(1, options), "No  |Name  |   1|   2|Pts |Buch |S-B  |");
  options.number = false;
  EXPECT_EQ(Line(3, options), "Bishop|+W2 |*B3 |*1.0| *0.0|*0.00|");
  options.cross = false;
  EXPECT_EQ(Line(3, options), "Bishop|*1.0| *0.0|*0.00|");
  options.tie_breaks = false;
  EXPECT_EQ(Line(3, options), "Bishop|*1.0|");
  options.points = false;
  EXPECT_EQ(Line(2, options), "------|");
  options.by_rank = false;
  EXPECT_EQ(Line(4, options), "Rook  |");
}

TEST_F(TextTableTest, ANameOfMoreThanTwentyCharactersPushesItsLineOnly) {
  MakeRoundRobin();
  AddPlayer("A name of 21 letters.");
  AddPlayer("B");
  EXPECT_EQ(Line(3), "  1.|  1.|A name of 21 letters.|X| | 0.0| 0.00|");
  EXPECT_EQ(Line(4), "  1.|  2.|B                   | |X| 0.0| 0.00|");
}

TEST_F(TextTableTest, NamesAreTakenAsTheyAre) {
  MakeRoundRobin();
  AddPlayer("100%s %n");
  EXPECT_EQ(Line(3), "  1.|  1.|100%s %n|X| 0.0| 0.00|");
}

TEST_F(TextTableTest, TheThousandthNumberOverflowsItsFourColumns) {
  MakeRoundRobin();
  AddPlayers(1000);
  TableOptions options;
  options.cross = false;
  options.by_rank = false;
  EXPECT_EQ(Line(1002, options), "  1.|1000.|P1000| 0.0| 0.00|");
}

TEST_F(TextTableTest, AHeadingWiderThanItsColumnIsNotCut) {
  MakeRoundRobin();
  AddPlayers(10);
  EXPECT_EQ(Line(1), "Rank|No  |Name|1|2|3|4|5|6|7|8|9|10|Pts |S-B  |");
  EXPECT_EQ(Line(2), "----|----|----|-|-|-|-|-|-|-|-|-|-|----|-----|");
}

TEST_F(TextTableTest, WithoutParticipantsThereAreHeadingsOnly) {
  MakeRoundRobin();
  EXPECT_EQ(Table(),
            "Rank|No  |Name|Pts |S-B  |\n"
            "----|----|----|----|-----|\n");
}

}  // namespace
}  // namespace tarvendo
