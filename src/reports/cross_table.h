#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/scores.h"
#include "reports/table_options.h"

namespace tarvendo {

class Tourney;

/// What a column shows.
enum class ColumnKind { kRank, kNumber, kName, kCross, kPoints, kBuchholz, kSonnebornBerger, kBar };

struct TableColumn {
  ColumnKind kind;
  int width;             ///< characters, without what separates the columns
  int cross_number = 0;  ///< of a cross column: the opponent's number or the round, 1-based
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

/// The standings as a table: rows in their order, columns in theirs, every cell's text. The two
/// forms of the table (text_table.h, html_table.h) only write it down.
struct CrossTable {
  std::vector<TableColumn> columns;
  std::vector<TableRow> rows;
  int name_width = 0;
  int cross_width = 0;
  bool pictures = false;  ///< the bar of the HTML form is made of pictures

  /// The cross cell of a row in a cross column.
  std::string_view CrossCell(const TableRow& row, const TableColumn& column) const {
    const auto width = static_cast<std::size_t>(cross_width);
    const auto place = static_cast<std::size_t>(column.cross_number) - 1;
    return std::string_view(row.cross).substr(place * width, width);
  }
};

/// Makes the table from the standings and Rounds as they are; in one pass over the games, so that
/// its time grows with the number of cells and games. Changes and prints nothing.
CrossTable BuildCrossTable(const Tourney& tourney, const TableOptions& options);

}  // namespace tarvendo
