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

void AppendColumnHeading(std::string& text, const TableColumn& column) {
  if (column.cross_number != 0) {
    AppendRight(text, std::to_string(column.cross_number), column.width);
  } else {
    AppendLeft(text, column.form->heading, column.width);
  }
}

void AppendCell(std::string& text, const TableRow& row, const TableColumn& column) {
  const auto append = column.form->alignment == Alignment::kLeft ? AppendLeft : AppendRight;
  append(text, column.Cell(row), column.width);
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
      AppendCell(text, row, column);
      text += '|';
    }
    text += '\n';
  }
  return text;
}

}  // namespace tarvendo
