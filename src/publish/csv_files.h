#pragma once

#include <string>

namespace tarvendo {

struct Report;

// Comma-separated values as RFC 4180 has them (https://www.rfc-editor.org/rfc/rfc4180): UTF-8, a
// line of headings, a text in double quotes where it needs them. docs/files.md tells the columns.

/// One line for each participant, in the order of rank.
std::string StandingsCsv(const Report& report);

/// One line for each game, in the order of the list.
std::string GamesCsv(const Report& report);

}  // namespace tarvendo
