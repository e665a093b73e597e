// One pass over the games puts each into the cells of its two players; a cell is what has been
// scored there so far and the single results, for whoever points at it.

#include <algorithm>
#include <string_view>

#include "base/text.h"
#include "publish/html_text.h"
#include "publish/page_parts.h"
#include "publish/report_model.h"
#include "tourney/game_score.h"

namespace tarvendo {
namespace {

struct CrossCell {
  std::string singles;  ///< "1w ½b", as seen from the row
  QuarterPoints points = 0;
  int decided = 0;  ///< games with a result
  int games = 0;
  int opponent = -1;  ///< index; in a Swiss round
  bool is_white = false;
  bool is_playing = false;
  bool is_bye = false;
};

const char* ResultMark(const ReportGame& game, QuarterPoints points) {
  if (!game.HasResult()) return "*";
  if (points == kWinPoints) return "1";
  return points == kDrawPoints ? "½" : "0";
}

void Enter(CrossCell& cell, const ReportGame& game, bool is_white) {
  ++cell.games;
  cell.opponent = is_white ? game.black : game.white;
  cell.is_white = is_white;
  cell.is_bye = game.is_bye;
  cell.is_playing = cell.is_playing || game.state == ReportGameState::kPlaying;
  if (game.state != ReportGameState::kPlayed) return;
  const QuarterPoints points = is_white ? WhiteScore(game.result) : BlackScore(game.result);
  if (!cell.singles.empty()) cell.singles += ' ';
  cell.singles += ResultMark(game, points);
  cell.singles += is_white ? 'w' : 'b';
  if (!game.HasResult()) return;
  cell.points += points;
  ++cell.decided;
}

/// The colour of a cell: more than half won, half, less.
std::string_view ClassOf(const CrossCell& cell) {
  if (cell.decided == 0) return cell.is_playing ? " class=p" : "";
  const int half = cell.decided * kDrawPoints;
  return cell.points > half ? " class=w" : cell.points == half ? " class=d" : " class=l";
}

void OpenCell(std::string& html, const CrossCell& cell, bool with_single, bool is_small) {
  html += "<td";
  html += ClassOf(cell);
  if (!cell.singles.empty() && (with_single || cell.games > 1)) {
    html += is_small ? " tabindex=0" : " tabindex=-1";
    html += " data-r=\"" + cell.singles + "\"";
  }
  html += '>';
}

void AddScore(std::string& html, const CrossCell& cell) {
  if (cell.decided > 0) {
    html += PointsForPeople(cell.points);
  } else if (cell.is_playing) {
    html += "<span class=hidden>being played</span>•";
  } else if (!cell.singles.empty()) {
    html += '*';
  }
}

/// The rows of a cross table are numbered from the top: ranks may be shared, and lines may not.
std::vector<std::size_t> LinesOf(const Report& report) {
  std::vector<std::size_t> lines(report.participants.size());
  for (std::size_t line = 0; line < report.order.size(); ++line)
    lines[report.order[line]] = line + 1;
  return lines;
}

void BeginRow(std::string& html, const Report& report, std::size_t index, std::size_t line) {
  const ReportParticipant& shown = report.participants[index];
  html += Format("<tr id=p%d><td>%d<th scope=row>", AsInt(line), AsInt(line));
  AddName(html, shown.name);
  html += "<td><b>" + PointsForPeople(shown.points) + "</b>";
}

// Round robin.

/// The cells of a round robin: a row and a column for each participant, byes too.
class RoundRobinCells {
 public:
  explicit RoundRobinCells(const Report& report)
      : lines_(LinesOf(report)), size_(report.order.size()), cells_(size_ * size_) {
    for (const ReportGame& game : report.games) {
      if (game.white < 0 || game.black < 0 || game.white == game.black) continue;
      Enter(At(game.white, game.black), game, true);
      Enter(At(game.black, game.white), game, false);
    }
  }

  /// Lines are 0-based here.
  const CrossCell& Of(std::size_t row, std::size_t column) const {
    return cells_[row * size_ + column];
  }

 private:
  CrossCell& At(int own, int opponent) {
    const std::size_t row = lines_[static_cast<std::size_t>(own)] - 1;
    return cells_[row * size_ + lines_[static_cast<std::size_t>(opponent)] - 1];
  }

  std::vector<std::size_t> lines_;
  std::size_t size_;
  std::vector<CrossCell> cells_;
};

void AddRoundRobinRow(std::string& html, const Report& report, const RoundRobinCells& cells,
                      std::size_t line) {
  const std::size_t size = report.order.size();
  BeginRow(html, report, report.order[line], line + 1);
  for (std::size_t column = 0; column < size; ++column) {
    if (column == line) {
      html += "<td class=x>";
      continue;
    }
    const CrossCell& cell = cells.Of(line, column);
    OpenCell(html, cell, size <= kPageLimits.single_results, size <= 12);
    AddScore(html, cell);
  }
  html += '\n';
}

void AddRoundRobinHead(std::string& html, const Report& report) {
  const std::size_t size = report.order.size();
  html += Format(
      "<table class=\"cross%s\"><caption class=hidden>Cross table</caption><thead><tr>"
      "<th scope=col>#<th scope=col>Name<th scope=col>Points",
      size > 24 ? " wide" : "");
  for (std::size_t line = 0; line < size; ++line) {
    html += Format("<th scope=col><a href=#p%d", AsInt(line + 1));
    if (size <= kPageLimits.single_results) {
      html += " title=\"";
      AddText(html, report.participants[report.order[line]].name);
      html += '"';
    }
    html += Format(">%d</a>", AsInt(line + 1));
  }
  html += "\n<tbody>\n";
}

void AddRoundRobin(std::string& html, const Report& report) {
  const std::size_t size = report.order.size();
  BeginSection(html, "cross", "Cross table",
               "Points of the row against each column, in the order of rank. "
               "<span class=screen>Point at a cell to see its games: result and colour.</span>");
  if (size > kPageLimits.cross_table) {
    html += Format(
        "<p>A cross table of %d participants would be too large for a page: all games are in "
        "<a href=games.csv>games.csv</a>.</p>\n",
        AsInt(size));
    EndSection(html);
    return;
  }
  const bool folded = size > kPageLimits.open_tables;
  BeginBox(html, "Cross table", folded);
  AddRoundRobinHead(html, report);
  const RoundRobinCells cells(report);
  for (std::size_t line = 0; line < size; ++line)
    AddRoundRobinRow(html, report, cells, line);
  html += "</table>\n";
  EndBox(html, folded);
  EndSection(html);
}

// Swiss.

/// A damaged file may hold any round.
constexpr int kMostRounds = 200;

int LastRound(const Report& report) {
  int last = 0;
  for (const ReportGame& game : report.games)
    last = std::max(last, game.round);
  return std::clamp(std::max(last, report.round), 1, kMostRounds);
}

void AddSwissCell(std::string& html, const CrossCell& cell, const std::vector<std::size_t>& lines,
                  bool with_single) {
  OpenCell(html, cell, with_single && cell.games > 1, true);
  AddScore(html, cell);
  if (cell.games == 0) return;
  if (cell.is_bye) {
    html += " bye";
    return;
  }
  if (cell.opponent < 0) return;
  const std::size_t line = lines[static_cast<std::size_t>(cell.opponent)];
  html += Format(" <a href=#p%d>%c%d</a>", AsInt(line), cell.is_white ? 'w' : 'b', AsInt(line));
}

std::vector<CrossCell> SwissCells(const Report& report, int rounds) {
  std::vector<CrossCell> cells(report.participants.size() * static_cast<std::size_t>(rounds));
  for (const ReportGame& game : report.games) {
    if (game.round < 1 || game.round > rounds) continue;
    for (const bool is_white : {true, false}) {
      const int index = is_white ? game.white : game.black;
      if (index < 0) continue;
      const auto row = static_cast<std::size_t>(index) * static_cast<std::size_t>(rounds);
      Enter(cells[row + static_cast<std::size_t>(game.round) - 1], game, is_white);
    }
  }
  return cells;
}

void AddSwiss(std::string& html, const Report& report) {
  const int rounds = LastRound(report);
  BeginSection(html, "cross", "Round by round",
               "“1 w7”: won with White against line 7 of this table; b is Black.");
  const bool folded = report.order.size() > 4 * kPageLimits.open_tables;
  BeginBox(html, "Round by round", folded);
  html += Format(
      "<table class=\"cross swiss%s\"><caption class=hidden>Round by round</caption>"
      "<thead><tr><th scope=col>#<th scope=col>Name<th scope=col>Points",
      rounds > 11 ? " wide" : "");
  for (int round = 1; round <= rounds; ++round)
    html += Format("<th scope=col>%d", round);
  html += "\n<tbody>\n";
  const std::vector<CrossCell> cells = SwissCells(report, rounds);
  const std::vector<std::size_t> lines = LinesOf(report);
  for (const std::size_t index : ByRank(report)) {
    BeginRow(html, report, index, lines[index]);
    for (int round = 0; round < rounds; ++round) {
      const std::size_t cell = index * static_cast<std::size_t>(rounds);
      AddSwissCell(html, cells[cell + static_cast<std::size_t>(round)], lines, true);
    }
    html += '\n';
  }
  html += "</table>\n";
  EndBox(html, folded);
  EndSection(html);
}

}  // namespace

void AddCrossTable(std::string& html, const Report& report) {
  if (report.is_swiss) {
    AddSwiss(html, report);
  } else {
    AddRoundRobin(html, report);
  }
}

}  // namespace tarvendo
