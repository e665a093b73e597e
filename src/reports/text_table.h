#pragma once

#include <string>

namespace tarvendo {

struct CrossTable;

/// The table in plain text: a line of headings, a line of dashes, a line for each participant;
/// every cell is as wide as its column and ends with "|". A name longer than its column stands
/// whole and pushes the rest of its line to the right.
///
///   Rank|No  |Name    |1|2|3|Pts |S-B  |
///   ----|----|--------|-|-|-|----|-----|
///     1.|  2.|Bishop  |+|X|=| 1.5| 0.75|
std::string TextTable(const CrossTable& table);

}  // namespace tarvendo
