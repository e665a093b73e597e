#include "reports/table_columns.h"

#include <algorithm>
#include <array>

#include "reports/digit_count.h"

namespace tarvendo {
namespace {

constexpr int kLeastNumberWidth = 4;
constexpr int kLeastNameWidth = 4;
constexpr int kMostNameWidth = 20;
constexpr int kLeastTieBreakWidth = 5;

int WholePoints(QuarterPoints score) {
  return score / 4;
}

bool HasHalfPoint(QuarterPoints score) {
  return (static_cast<unsigned>(score) & 2U) != 0;
}

int NumberWidth(const TableMeasures& measures) {
  return std::max(DigitCount(measures.participants), kLeastNumberWidth);
}

int NameWidth(const TableMeasures& measures) {
  return std::clamp(measures.name_length, kLeastNameWidth, kMostNameWidth);
}

int CrossWidth(const TableMeasures& measures) {
  return measures.cross_width;
}

int PointsWidth(const TableMeasures& measures) {
  const int width = DigitCount(WholePoints(measures.points)) + 3;
  return measures.with_games ? width + DigitCount(measures.games_played) + 3 : width;
}

int BuchholzWidth(const TableMeasures& measures) {
  return std::max(DigitCount(WholePoints(measures.buchholz)) + 3, kLeastTieBreakWidth);
}

int SonnebornBergerWidth(const TableMeasures& measures) {
  return std::max(DigitCount(WholePoints(measures.sonneborn_berger)) + 4, kLeastTieBreakWidth);
}

/// The longest bar with its two ends.
int BarWidth(const TableMeasures& measures) {
  return WholePoints(measures.points) + (HasHalfPoint(measures.points) ? 1 : 0) + 2;
}

std::string RankCell(const TableRow& row, const TableColumn&) {
  return std::to_string(row.rank) + ".";
}

std::string NumberCell(const TableRow& row, const TableColumn&) {
  return std::to_string(row.number) + ".";
}

std::string NameCell(const TableRow& row, const TableColumn&) {
  return row.name;
}

std::string CrossCell(const TableRow& row, const TableColumn& column) {
  const auto width = static_cast<std::size_t>(column.width);
  const auto place = static_cast<std::size_t>(column.cross_number) - 1;
  return row.cross.substr(place * width, width);
}

std::string PointsCell(const TableRow& row, const TableColumn&) {
  return row.points;
}

std::string BuchholzCell(const TableRow& row, const TableColumn&) {
  return row.buchholz;
}

std::string SonnebornBergerCell(const TableRow& row, const TableColumn&) {
  return row.sonneborn_berger;
}

std::string BarCell(const TableRow& row, const TableColumn&) {
  std::string bar(static_cast<std::size_t>(WholePoints(row.score)) + 1, '#');
  bar.front() = '|';
  if (HasHalfPoint(row.score)) bar += '\\';
  return bar + '|';
}

using enum ColumnKind;
using enum Alignment;
using Shown = TableOptions;

// clang-format off
constexpr std::array<ColumnForm, 8> kForms = {{
    {kRank, "Rank", "Rank", kRight, "center", &Shown::rank, false, NumberWidth, RankCell},
    {kNumber, "No", "Number", kRight, "center", &Shown::number, false, NumberWidth, NumberCell},
    {kName, "Name", "Name", kLeft, "left", nullptr, false, NameWidth, NameCell},
    {kCross, "", "", kLeft, "center", &Shown::cross, false, CrossWidth, CrossCell},
    {kPoints, "Pts", "Points", kRight, "center", &Shown::points, false, PointsWidth, PointsCell},
    {kBuchholz, "Buch", "Buch", kRight, "center", &Shown::tie_breaks, true, BuchholzWidth,
     BuchholzCell},
    {kSonnebornBerger, "S-B", "S-B", kRight, "center", &Shown::tie_breaks, false,
     SonnebornBergerWidth, SonnebornBergerCell},
    {kBar, "", nullptr, kLeft, "left", &Shown::bar, false, BarWidth, BarCell},
}};
// clang-format on

}  // namespace

std::span<const ColumnForm> ColumnForms() {
  return kForms;
}

}  // namespace tarvendo
