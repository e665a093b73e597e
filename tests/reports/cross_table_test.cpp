#include "reports/cross_table.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tourney/standings.h"
#include "tourney/table_tourney.h"

namespace tarvendo {
namespace {

class CrossTableTest : public TableTourney {
 protected:
  CrossTable Build(const TableOptions& options = {}) { return BuildCrossTable(tourney, options); }

  /// The width of the first column of a kind; 0 when the table has none.
  int Width(ColumnKind kind, const TableOptions& options = {}) {
    const CrossTable table = Build(options);
    const auto found =
        std::find_if(table.columns.begin(), table.columns.end(),
                     [&](const TableColumn& column) { return column.form->kind == kind; });
    return found == table.columns.end() ? 0 : found->width;
  }

  std::vector<ColumnKind> Kinds(const TableOptions& options) {
    std::vector<ColumnKind> kinds;
    for (const TableColumn& column : Build(options).columns)
      kinds.push_back(column.form->kind);
    return kinds;
  }

  std::vector<int> NumbersOfRows(const TableOptions& options) {
    std::vector<int> numbers;
    for (const TableRow& row : Build(options).rows)
      numbers.push_back(row.number);
    return numbers;
  }
};

TEST_F(CrossTableTest, RankAndNumberAreFourWideUntilTenThousand) {
  TableOptions options;
  options.cross = false;
  for (const auto& [participants, width] : {std::pair{9, 4}, {1000, 4}, {9999, 4}, {10000, 5}}) {
    AddPlayers(participants);
    EXPECT_EQ(Width(ColumnKind::kRank, options), width) << participants;
    EXPECT_EQ(Width(ColumnKind::kNumber, options), width) << participants;
  }
}

TEST_F(CrossTableTest, TheNameColumnIsFourToTwentyWide) {
  EXPECT_EQ(Build().name_width, 4);
  AddPlayer("Al");
  EXPECT_EQ(Build().name_width, 4);
  AddPlayer("Hector");
  EXPECT_EQ(Build().name_width, 6);
  AddPlayer(std::string(20, 'x'));
  EXPECT_EQ(Build().name_width, 20);
  AddPlayer(std::string(21, 'x'));
  EXPECT_EQ(Build().name_width, 20);
  EXPECT_EQ(Width(ColumnKind::kName), 20);
}

TEST_F(CrossTableTest, PointsAreAsWideAsTheHighestAndWithGamesAsTheMostPlayed) {
  AddPlayers(2);
  TableOptions with_games;
  with_games.games = true;
  EXPECT_EQ(Width(ColumnKind::kPoints), 4) << "no points count as one digit";
  EXPECT_EQ(Width(ColumnKind::kPoints, with_games), 8);
  P(1).points = 38;
  P(2).games_played = 10;
  EXPECT_EQ(Width(ColumnKind::kPoints), 4);
  EXPECT_EQ(Width(ColumnKind::kPoints, with_games), 9);
  P(1).points = 40;
  EXPECT_EQ(Width(ColumnKind::kPoints), 5);
  EXPECT_EQ(Width(ColumnKind::kPoints, with_games), 10);
}

TEST_F(CrossTableTest, TieBreaksAreAtLeastFiveWide) {
  AddPlayers(1);
  EXPECT_EQ(Width(ColumnKind::kBuchholz), 5);
  EXPECT_EQ(Width(ColumnKind::kSonnebornBerger), 5);
  P(1).buchholz = 4 * 10;
  P(1).sonneborn_berger = 4 * 10;
  EXPECT_EQ(Width(ColumnKind::kBuchholz), 5);
  EXPECT_EQ(Width(ColumnKind::kSonnebornBerger), 6);
  P(1).buchholz = 4 * 100;
  EXPECT_EQ(Width(ColumnKind::kBuchholz), 6);
}

TEST_F(CrossTableTest, TheBarIsAsWideAsTheHighestWithItsEnds) {
  AddPlayers(1);
  TableOptions options;
  options.bar = true;
  EXPECT_EQ(Width(ColumnKind::kBar, options), 2);
  P(1).points = 12;
  EXPECT_EQ(Width(ColumnKind::kBar, options), 5);
  P(1).points = 14;
  EXPECT_EQ(Width(ColumnKind::kBar, options), 6);
}

TEST_F(CrossTableTest, SwissHasAColumnForEachRoundAndBuchholz) {
  AddPlayers(8);
  tourney.ChangeSettings()->rounds = 3;
  using enum ColumnKind;
  EXPECT_EQ(Kinds({}), (std::vector{kRank, kNumber, kName, kCross, kCross, kCross, kPoints,
                                    kBuchholz, kSonnebornBerger}));
}

TEST_F(CrossTableTest, RoundRobinHasAColumnForEachParticipantAndNoBuchholz) {
  MakeRoundRobin();
  AddPlayers(4);
  using enum ColumnKind;
  EXPECT_EQ(Kinds({}), (std::vector{kRank, kNumber, kName, kCross, kCross, kCross, kCross, kPoints,
                                    kSonnebornBerger}));
  EXPECT_EQ(Build().columns[6].cross_number, 4);
}

TEST_F(CrossTableTest, EverySwitchTakesAwayItsColumnAndTheNameAlwaysStays) {
  AddPlayers(4);
  tourney.ChangeSettings()->rounds = 2;
  TableOptions options;
  options.bar = true;
  using enum ColumnKind;
  std::vector<ColumnKind> left = Kinds(options);
  const auto without = [&](bool TableOptions::*option, std::initializer_list<ColumnKind> gone) {
    options.*option = false;
    for (const ColumnKind kind : gone)
      std::erase(left, kind);
    EXPECT_EQ(Kinds(options), left);
  };
  without(&TableOptions::rank, {kRank});
  without(&TableOptions::number, {kNumber});
  without(&TableOptions::cross, {kCross});
  without(&TableOptions::points, {kPoints});
  without(&TableOptions::tie_breaks, {kBuchholz, kSonnebornBerger});
  without(&TableOptions::bar, {kBar});
  EXPECT_EQ(left, std::vector{kName});
}

TEST_F(CrossTableTest, RowsStandByRankAndEqualRanksInListOrder) {
  AddPlayers(6);
  const int ranks[] = {3, 1, 5, 3, 1, 6};
  for (int i = 0; i < 6; ++i)
    P(i + 1).rank = ranks[i];
  EXPECT_EQ(NumbersOfRows({}), (std::vector{2, 5, 1, 4, 3, 6}));
  TableOptions by_number;
  by_number.by_rank = false;
  EXPECT_EQ(NumbersOfRows(by_number), (std::vector{1, 2, 3, 4, 5, 6}));
}

TEST_F(CrossTableTest, CrossCellsFollowTheirRow) {
  MakeRoundRobin();
  AddPlayers(3);
  Play(3, 1, kWhiteWins);
  Play(3, 2, kDraw);
  UpdateStandingsAndRound(tourney);
  const CrossTable table = Build();
  EXPECT_EQ(table.rows[0].number, 3);
  EXPECT_EQ(table.rows[0].cross, "+=X");
  EXPECT_EQ(table.columns[4].Cell(table.rows[0]), "=");
}

TEST_F(CrossTableTest, AReadyGameWithoutResultPutsAStarBeforeEverySum) {
  AddPlayers(4);
  Play(1, 2, kUnknown);
  Play(3, 9, kUnfinished);
  Schedule(4, 4);
  const CrossTable table = Build();
  for (int i = 0; i < 4; ++i) {
    const TableRow& row = table.rows[static_cast<std::size_t>(i)];
    const char mark = i < 3 ? '*' : ' ';
    EXPECT_EQ(row.points[0], mark) << i;
    EXPECT_EQ(row.buchholz[0], mark) << i;
    EXPECT_EQ(row.sonneborn_berger[0], mark) << i;
  }
}

TEST_F(CrossTableTest, SumsHaveTheEndingsOfTheirColumns) {
  AddPlayers(1);
  P(1).points = 14;
  P(1).games_played = 5;
  P(1).rank = 1;
  const char* buchholz[] = {" 7.0", " 7.25", " 7.5", " 7.75"};
  const char* sonneborn_berger[] = {" 10.00", " 10.25", " 10.50", " 10.75"};
  for (int quarters = 0; quarters < 4; ++quarters) {
    P(1).buchholz = 28 + quarters;
    P(1).sonneborn_berger = 40 + quarters;
    const TableRow row = Build().rows[0];
    EXPECT_EQ(row.buchholz, buchholz[quarters]);
    EXPECT_EQ(row.sonneborn_berger, sonneborn_berger[quarters]);
    EXPECT_EQ(row.points, " 3.5");
  }
  TableOptions with_games;
  with_games.games = true;
  EXPECT_EQ(Build(with_games).rows[0].points, " 3.5 / 5");
}

}  // namespace
}  // namespace tarvendo
