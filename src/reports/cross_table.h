#pragma once

#include <vector>

#include "reports/table_columns.h"
#include "reports/table_options.h"

namespace tarvendo {

class Tourney;

/// The standings as a table: rows in their order, columns in theirs, every cell's text. The two
/// forms of the table (text_table.h, html_table.h) only write it down.
struct CrossTable {
  std::vector<TableColumn> columns;
  std::vector<TableRow> rows;
  int name_width = 0;
  bool pictures = false;  ///< the bar of the HTML form is made of pictures
};

/// Makes the table from the standings and Rounds as they are; in one pass over the games, so that
/// its time grows with the number of cells and games. Changes and prints nothing.
CrossTable BuildCrossTable(const Tourney& tourney, const TableOptions& options);

}  // namespace tarvendo
