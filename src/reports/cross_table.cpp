#include "reports/cross_table.h"

#include <algorithm>
#include <numeric>

#include "reports/cross_cells.h"
#include "tourney/participant_indices.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

TableMeasures Measure(const std::vector<Player>& participants, int cross_width, bool with_games) {
  TableMeasures measures;
  measures.participants = static_cast<int>(participants.size());
  measures.cross_width = cross_width;
  measures.with_games = with_games;
  for (const Player& player : participants) {
    const int name_length = static_cast<int>(player.texts.name.size());
    measures.name_length = std::max(measures.name_length, name_length);
    measures.points = std::max(measures.points, player.points);
    measures.buchholz = std::max(measures.buchholz, player.buchholz);
    measures.sonneborn_berger = std::max(measures.sonneborn_berger, player.sonneborn_berger);
    measures.games_played = std::max(measures.games_played, player.games_played);
  }
  return measures;
}

void AddColumns(CrossTable& table, const Tourney& tourney, const TableOptions& options,
                const CrossLayout& layout) {
  const TableMeasures measures = Measure(tourney.Participants(), layout.width, options.games);
  for (const ColumnForm& form : ColumnForms()) {
    if (form.option != nullptr && !(options.*form.option)) continue;
    if (form.is_of_swiss && !tourney.IsSwiss()) continue;
    const int width = form.width(measures);
    if (form.kind == ColumnKind::kName) table.name_width = width;
    if (form.kind != ColumnKind::kCross) {
      table.columns.push_back({&form, width});
      continue;
    }
    for (int i = 1; i <= layout.columns; ++i)
      table.columns.push_back({&form, width, i});
  }
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
  AddColumns(table, tourney, options, layout);
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
