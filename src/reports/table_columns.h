#pragma once

#include <span>
#include <string>

#include "base/scores.h"
#include "reports/table_options.h"

namespace tarvendo {

/// What a column shows.
enum class ColumnKind { kRank, kNumber, kName, kCross, kPoints, kBuchholz, kSonnebornBerger, kBar };

/// At which end of its cell a text stands.
enum class Alignment { kLeft, kRight };

/// What decides how wide the columns are.
struct TableMeasures {
  int participants = 0;
  int cross_width = 0;
  bool with_games = false;  ///< the number of games played stands behind the points
  // The highest of all participants:
  int name_length = 0;
  QuarterPoints points = 0;
  QuarterPoints buchholz = 0;
  QuarterPoints sonneborn_berger = 0;
  int games_played = 0;
};

/// One participant's line.
struct TableRow {
  int rank = 0;
  int number = 0;
  std::string name;   ///< whole, however wide the column is
  std::string cross;  ///< all cross cells, one behind the other, each as wide as its column
  // With their mark: "*" when a READY game of the participant has no result, else a blank.
  std::string points;  ///< " 3.5", with games " 3.5 / 5"
  std::string buchholz;
  std::string sonneborn_berger;
  QuarterPoints score = 0;  ///< the points, for the bar
};

struct TableColumn;

/// All that makes a kind of column what it is, in both forms of the table.
struct ColumnForm {
  ColumnKind kind;
  const char* heading;         ///< in the text form; a cross column has its number instead
  const char* page_heading;    ///< in the HTML form; null: not even an empty cell
  Alignment alignment;         ///< of the cells in the text form
  const char* page_align;      ///< of the cells in the HTML form, the attribute's word
  bool TableOptions::*option;  ///< what shows the column; null: it is always shown
  bool is_of_swiss;            ///< a round robin does not have it
  int (*width)(const TableMeasures& measures);
  std::string (*cell)(const TableRow& row, const TableColumn& column);
};

struct TableColumn {
  const ColumnForm* form;
  int width;             ///< characters, without what separates the columns
  int cross_number = 0;  ///< of a cross column: the opponent's number or the round, 1-based

  /// What stands in a row's cell: of the bar the text form, "|##\|" for two and a half points.
  std::string Cell(const TableRow& row) const { return form->cell(row, *this); }
};

/// All kinds of columns, in the order in which they stand.
std::span<const ColumnForm> ColumnForms();

}  // namespace tarvendo
