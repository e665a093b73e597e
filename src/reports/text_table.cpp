#include "reports/text_table.h"

#include <string_view>

#include "platform/faults.h"
#include "reports/cross_table.h"

namespace tarvendo {
namespace {

std::size_t BlanksFor(std::string_view text, int width) {
  const auto room = static_cast<std::size_t>(width < 0 ? 0 : width);
  return room > text.size() ? room - text.size() : 0;
}

void AppendLeft(std::string& line, std::string_view text, int width) {
  line += text;
  line.append(BlanksFor(text, width), ' ');
}

void AppendRight(std::string& line, std::string_view text, int width) {
  line.append(BlanksFor(text, width), ' ');
  line += text;
}

const char* ShortHeading(ColumnKind kind) {
  switch (kind) {
    case ColumnKind::kRank:
      return "Rank";
    case ColumnKind::kNumber:
      return "No";
    case ColumnKind::kName:
      return "Name";
    case ColumnKind::kPoints:
      return "Pts";
    case ColumnKind::kBuchholz:
      return "Buch";
    case ColumnKind::kSonnebornBerger:
      return "S-B";
    case ColumnKind::kCross:
    case ColumnKind::kBar:
      break;
  }
  return "";
}

void AppendColumnHeading(std::string& text, const TableColumn& column) {
  if (column.kind == ColumnKind::kCross) {
    AppendRight(text, std::to_string(column.cross_number), column.width);
  } else {
    AppendLeft(text, ShortHeading(column.kind), column.width);
  }
}

/// "  7." in a column of four.
void AppendPlace(std::string& text, int place, int width) {
  AppendRight(text, std::to_string(place), width - 1);
  text += '.';
}

/// "|##\|" for two and a half points.
std::string Bar(QuarterPoints score) {
  std::string bar(static_cast<std::size_t>(WholePoints(score)) + 1, '#');
  bar.front() = '|';
  if (HasHalfPoint(score)) bar += '\\';
  return bar + '|';
}

void AppendCell(std::string& text, const CrossTable& table, const TableRow& row,
                const TableColumn& column) {
  switch (column.kind) {
    case ColumnKind::kRank:
      return AppendPlace(text, row.rank, column.width);
    case ColumnKind::kNumber:
      return AppendPlace(text, row.number, column.width);
    case ColumnKind::kName:
      return AppendLeft(text, row.name, column.width);
    case ColumnKind::kCross:
      return AppendLeft(text, table.CrossCell(row, column), column.width);
    case ColumnKind::kPoints:
      return AppendRight(text, row.points, column.width);
    case ColumnKind::kBuchholz:
      return AppendRight(text, row.buchholz, column.width);
    case ColumnKind::kSonnebornBerger:
      return AppendRight(text, row.sonneborn_berger, column.width);
    case ColumnKind::kBar:
      return AppendLeft(text, Bar(row.score), column.width);
  }
}

}  // namespace

std::string TextTable(const CrossTable& table) {
  std::string text;
  for (const TableColumn& column : table.columns) {
    AppendColumnHeading(text, column);
    text += '|';
  }
  text += '\n';
  for (const TableColumn& column : table.columns) {
    text.append(static_cast<std::size_t>(column.width), '-');
    text += '|';
  }
  text += '\n';
  for (const TableRow& row : table.rows) {
    EndWhenAsked();
    for (const TableColumn& column : table.columns) {
      AppendCell(text, table, row, column);
      text += '|';
    }
    text += '\n';
  }
  return text;
}

}  // namespace tarvendo
