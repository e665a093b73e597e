#include "reports/cross_table.h"

#include <algorithm>
#include <numeric>

#include "reports/cross_cells.h"
#include "tourney/participant_indices.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

constexpr int kLeastNumberWidth = 4;
constexpr int kLeastNameWidth = 4;
constexpr int kMostNameWidth = 20;
constexpr int kLeastTieBreakWidth = 5;

/// The numbers that decide how wide the columns are.
struct Highest {
  QuarterPoints points = 0;
  QuarterPoints buchholz = 0;
  QuarterPoints sonneborn_berger = 0;
  int games_played = 0;
  int name_length = 0;
};

Highest FindHighest(const std::vector<Player>& participants) {
  Highest highest;
  for (const Player& player : participants) {
    highest.points = std::max(highest.points, player.points);
    highest.buchholz = std::max(highest.buchholz, player.buchholz);
    highest.sonneborn_berger = std::max(highest.sonneborn_berger, player.sonneborn_berger);
    highest.games_played = std::max(highest.games_played, player.games_played);
    highest.name_length = std::max(highest.name_length, static_cast<int>(player.texts.name.size()));
  }
  return highest;
}

int NameWidth(const Highest& highest) {
  return std::clamp(highest.name_length, kLeastNameWidth, kMostNameWidth);
}

int PointsWidth(const Highest& highest, bool with_games) {
  const int width = DigitCount(WholePoints(highest.points)) + 3;
  return with_games ? width + DigitCount(highest.games_played) + 3 : width;
}

int BuchholzWidth(const Highest& highest) {
  return std::max(DigitCount(WholePoints(highest.buchholz)) + 3, kLeastTieBreakWidth);
}

int SonnebornBergerWidth(const Highest& highest) {
  return std::max(DigitCount(WholePoints(highest.sonneborn_berger)) + 4, kLeastTieBreakWidth);
}

/// The longest bar with its two ends.
int BarWidth(const Highest& highest) {
  return WholePoints(highest.points) + (HasHalfPoint(highest.points) ? 1 : 0) + 2;
}

void AddTieBreakColumns(CrossTable& table, const Highest& highest, bool is_swiss) {
  if (is_swiss) table.columns.push_back({ColumnKind::kBuchholz, BuchholzWidth(highest)});
  table.columns.push_back({ColumnKind::kSonnebornBerger, SonnebornBergerWidth(highest)});
}

void AddColumns(CrossTable& table, const Tourney& tourney, const TableOptions& options,
                int cross_columns) {
  const Highest highest = FindHighest(tourney.Participants());
  const int number_width =
      std::max(DigitCount(static_cast<int>(tourney.Participants().size())), kLeastNumberWidth);
  table.name_width = NameWidth(highest);
  if (options.rank) table.columns.push_back({ColumnKind::kRank, number_width});
  if (options.number) table.columns.push_back({ColumnKind::kNumber, number_width});
  table.columns.push_back({ColumnKind::kName, table.name_width});
  for (int i = 1; i <= cross_columns; ++i) {
    table.columns.push_back({ColumnKind::kCross, table.cross_width, i});
  }
  if (options.points) {
    table.columns.push_back({ColumnKind::kPoints, PointsWidth(highest, options.games)});
  }
  if (options.tie_breaks) AddTieBreakColumns(table, highest, tourney.IsSwiss());
  if (options.bar) table.columns.push_back({ColumnKind::kBar, BarWidth(highest)});
}

/// Of each participant, in list order: whether a game of his is READY but has no result.
std::vector<bool> FindDoubtfulScores(const Tourney& tourney) {
  const ParticipantIndices places(tourney.Participants());
  std::vector<bool> doubtful(tourney.Participants().size(), false);
  for (const Game& game : tourney.Games()) {
    if (!game.IsReady() || !game.LacksResult()) continue;
    for (const int place : {places.Of(game.white), places.Of(game.black)}) {
      if (place >= 0) doubtful[static_cast<std::size_t>(place)] = true;
    }
  }
  return doubtful;
}

TableRow MakeRow(const Player& player, bool is_doubtful, bool with_games) {
  const std::string mark = is_doubtful ? "*" : " ";
  TableRow row;
  row.rank = player.rank;
  row.number = player.number;
  row.name = player.texts.name;
  row.points = mark + HalfPointText(player.points);
  if (with_games) row.points += " / " + std::to_string(player.games_played);
  row.buchholz = mark + BuchholzColumnText(player.buchholz);
  row.sonneborn_berger = mark + QuarterPointText(player.sonneborn_berger);
  row.score = player.points;
  return row;
}

/// The 0-based places of the participants in the order of the rows; equal ranks stay in list order.
std::vector<std::size_t> RowOrder(const std::vector<Player>& participants, bool by_rank) {
  std::vector<std::size_t> order(participants.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  if (by_rank) {
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
      return participants[a].rank < participants[b].rank;
    });
  }
  return order;
}

}  // namespace

CrossTable BuildCrossTable(const Tourney& tourney, const TableOptions& options) {
  const std::vector<Player>& participants = tourney.Participants();
  const CrossLayout layout = LayOutCross(tourney, options.long_cells);
  CrossTable table;
  table.pictures = options.pictures;
  table.cross_width = layout.width;
  AddColumns(table, tourney, options, options.cross ? layout.columns : 0);
  std::vector<std::string> cells(participants.size());
  if (options.cross) cells = CrossCells(tourney, layout);
  const std::vector<bool> doubtful = FindDoubtfulScores(tourney);
  for (const std::size_t place : RowOrder(participants, options.by_rank)) {
    table.rows.push_back(MakeRow(participants[place], doubtful[place], options.games));
    table.rows.back().cross = std::move(cells[place]);
  }
  return table;
}

}  // namespace tarvendo
