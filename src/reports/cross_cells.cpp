#include "reports/cross_cells.h"

#include <algorithm>
#include <cstdint>

#include "base/scores.h"
#include "reports/digit_count.h"
#include "tourney/game_score.h"
#include "tourney/participant_indices.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

constexpr std::int64_t kMostMarks = 32'000'000;

/// What stands in a cell as long as no game has been put into it. It is shown as a blank. So is a
/// game still to be played, but such a game keeps its place against later games.
constexpr char kFree = '\0';

/// For the opponent's number behind the marks of the sub-rounds.
constexpr int kOpponentColumns = 3;

/// How the tourney and the layout together shape the cells.
enum class CellForm { kRoundRobinMarks, kSwissMark, kSwissSubRounds, kLong };

CellForm FormOf(const Tourney& tourney, const CrossLayout& layout) {
  if (layout.long_cells) return CellForm::kLong;
  if (!tourney.IsSwiss()) return CellForm::kRoundRobinMarks;
  return EffectiveSubRounds(tourney) == 1 ? CellForm::kSwissMark : CellForm::kSwissSubRounds;
}

/// A game as one of its players sees it.
struct Side {
  const Game* game;
  std::size_t row;  ///< 0-based place of the player
  int column;       ///< 0-based: the opponent's place, or the round
  bool is_white;

  int Opponent() const { return is_white ? game->black : game->white; }
  QuarterPoints Score() const { return is_white ? WhiteScore(*game) : BlackScore(*game); }
  bool HasWon() const { return game->result == (is_white ? kWhiteWins : kBlackWins); }
  bool HasLost() const {
    return game->result == (is_white ? kBlackWins : kWhiteWins) || game->result == kBothLose;
  }
};

char MarkOf(const Side& side) {
  if (!side.game->IsReady()) return ' ';
  if (side.HasWon()) return '+';
  if (side.HasLost()) return '-';
  return side.game->result == kDraw ? '=' : '*';
}

/// Calls `take` with both sides of every game that has a place in the table, in list order.
template <typename Take>
void ForEachSide(const Tourney& tourney, const CrossLayout& layout, const Take& take) {
  const ParticipantIndices places(tourney.Participants());
  for (const Game& game : tourney.Games()) {
    const int white = places.Of(game.white);
    const int black = places.Of(game.black);
    const bool is_swiss = tourney.IsSwiss();
    if (!is_swiss && white == black) continue;
    const int round_column = game.round >= 1 ? game.round - 1 : -1;
    const int white_column = is_swiss ? round_column : black;
    const int black_column = is_swiss ? round_column : white;
    const auto fits = [&](int row, int column) {
      return row >= 0 && column >= 0 && column < layout.columns;
    };
    if (fits(white, white_column)) {
      take(Side{&game, static_cast<std::size_t>(white), white_column, true});
    }
    if (fits(black, black_column)) {
      take(Side{&game, static_cast<std::size_t>(black), black_column, false});
    }
  }
}

/// The cells while they are being filled.
class CellGrid {
 public:
  CellGrid(const Tourney& tourney, const CrossLayout& layout)
      : layout_(layout),
        width_(static_cast<std::size_t>(layout.width)),
        rows_(tourney.Participants().size(),
              std::string(width_ * static_cast<std::size_t>(layout.columns), kFree)) {}

  char* Cell(std::size_t row, int column) {
    return rows_[row].data() + static_cast<std::size_t>(column) * width_;
  }

  /// Puts the side's mark into the place of its sub-round (1-based, 0 counts as 1), when it is
  /// free.
  void PutMark(const Side& side) {
    const int sub_round = std::max(side.game->sub_round, 1);
    if (sub_round > layout_.sub_rounds) return;
    char& place = Cell(side.row, side.column)[sub_round - 1];
    if (place == kFree) place = MarkOf(side);
  }

  /// Copies a text to the start of a cell; what does not fit is left out as a whole.
  void PutText(std::size_t row, int column, const std::string& text, std::size_t offset = 0) {
    if (offset + text.size() > width_) return;
    std::copy(text.begin(), text.end(), Cell(row, column) + offset);
  }

  void FillOwnCells(char c, int count) {
    for (std::size_t row = 0; row < rows_.size(); ++row) {
      std::fill_n(Cell(row, static_cast<int>(row)), count, c);
    }
  }

  /// Gives the cells away, every free place a blank.
  std::vector<std::string> Take() {
    for (std::string& row : rows_)
      std::replace(row.begin(), row.end(), kFree, ' ');
    return std::move(rows_);
  }

 private:
  const CrossLayout& layout_;
  std::size_t width_;
  std::vector<std::string> rows_;
};

void FillRoundRobin(const Tourney& tourney, const CrossLayout& layout, CellGrid& grid) {
  grid.FillOwnCells('X', layout.sub_rounds);
  ForEachSide(tourney, layout, [&](const Side& side) { grid.PutMark(side); });
}

void FillSwiss(const Tourney& tourney, const CrossLayout& layout, CellGrid& grid) {
  ForEachSide(tourney, layout, [&](const Side& side) {
    char* cell = grid.Cell(side.row, side.column);
    if (cell[0] != kFree) return;
    cell[0] = MarkOf(side);
    cell[1] = side.is_white ? 'W' : 'B';
    grid.PutText(side.row, side.column, std::to_string(side.Opponent()), 2);
  });
}

/// "  7" or " 12"; blanks for a number of more than three digits.
std::string OpponentInThreeColumns(int opponent) {
  const std::string number = std::to_string(opponent);
  if (number.size() > kOpponentColumns) return std::string(kOpponentColumns, ' ');
  return std::string(kOpponentColumns - number.size(), ' ') + number;
}

void FillSwissSubRounds(const Tourney& tourney, const CrossLayout& layout, CellGrid& grid) {
  const auto opponent_place = static_cast<std::size_t>(layout.sub_rounds);
  ForEachSide(tourney, layout, [&](const Side& side) {
    grid.PutMark(side);
    if (grid.Cell(side.row, side.column)[opponent_place] != kFree) return;
    grid.PutText(side.row, side.column, OpponentInThreeColumns(side.Opponent()), opponent_place);
  });
}

/// What a participant has scored in the READY games of one cell.
struct CellScore {
  QuarterPoints points = 0;
  int games = 0;
};

/// "1.5/2", or the points alone when both together are wider than the cell.
std::string LongCellText(const CellScore& score, std::size_t width) {
  const std::string points = HalfPointText(score.points);
  const std::string text = points + "/" + std::to_string(score.games);
  return text.size() <= width ? text : points;
}

void FillLong(const Tourney& tourney, const CrossLayout& layout, CellGrid& grid) {
  const auto columns = static_cast<std::size_t>(layout.columns);
  std::vector<CellScore> scores(tourney.Participants().size() * columns);
  ForEachSide(tourney, layout, [&](const Side& side) {
    if (!side.game->IsReady()) return;
    CellScore& score = scores[side.row * columns + static_cast<std::size_t>(side.column)];
    score.points += side.Score();
    ++score.games;
  });
  for (std::size_t i = 0; i < scores.size(); ++i) {
    if (scores[i].games == 0) continue;
    const auto column = static_cast<int>(i % columns);
    grid.PutText(i / columns, column,
                 LongCellText(scores[i], static_cast<std::size_t>(layout.width)));
  }
  if (!tourney.IsSwiss()) grid.FillOwnCells('X', 1);
}

int CellWidth(const Tourney& tourney, const CrossLayout& layout) {
  switch (FormOf(tourney, layout)) {
    case CellForm::kLong:
      return DigitCount(EffectiveSubRounds(tourney)) + 6;
    case CellForm::kRoundRobinMarks:
      return layout.sub_rounds;
    case CellForm::kSwissMark:
      return DigitCount(static_cast<long long>(tourney.Participants().size())) + 3;
    case CellForm::kSwissSubRounds:
      break;
  }
  return layout.sub_rounds + kOpponentColumns;
}

/// As many sub-rounds as there are, but no more than the memory bears.
int ShownSubRounds(const Tourney& tourney, int columns) {
  const auto cells = static_cast<std::int64_t>(tourney.Participants().size()) * columns;
  const std::int64_t most =
      std::max<std::int64_t>(kMostMarks / std::max<std::int64_t>(cells, 1), 1);
  return static_cast<int>(std::min<std::int64_t>(EffectiveSubRounds(tourney), most));
}

}  // namespace

CrossLayout LayOutCross(const Tourney& tourney, bool long_cells) {
  const int participants = static_cast<int>(tourney.Participants().size());
  CrossLayout layout;
  layout.columns = tourney.IsSwiss() ? std::max(tourney.Settings().rounds, 0) : participants;
  layout.sub_rounds = ShownSubRounds(tourney, layout.columns);
  layout.long_cells = long_cells && (!tourney.IsSwiss() || EffectiveSubRounds(tourney) > 1);
  layout.width = CellWidth(tourney, layout);
  return layout;
}

std::vector<std::string> CrossCells(const Tourney& tourney, const CrossLayout& layout) {
  CellGrid grid(tourney, layout);
  switch (FormOf(tourney, layout)) {
    case CellForm::kRoundRobinMarks:
      FillRoundRobin(tourney, layout, grid);
      break;
    case CellForm::kSwissMark:
      FillSwiss(tourney, layout, grid);
      break;
    case CellForm::kSwissSubRounds:
      FillSwissSubRounds(tourney, layout, grid);
      break;
    case CellForm::kLong:
      FillLong(tourney, layout, grid);
      break;
  }
  return grid.Take();
}

}  // namespace tarvendo
