#pragma once

#include <cstdint>
#include <limits>
#include <string>

namespace tarvendo {

struct Report;

/// What the page has beside it.
struct PageSurroundings {
  /// games.pgn has the records that begin before this byte of the tourney's PGN file; 0: there is
  /// no games.pgn.
  std::uint64_t pgn_until = std::numeric_limits<std::uint64_t>::max();
};

/// The report as one web page that loads nothing from anywhere: style, pictures (SVG) and the
/// little script that sorts are in it. Without the script everything can be read too. What users
/// have typed is text in it whatever it holds, and the page's own policy forbids every other
/// script.
std::string ReportPage(const Report& report, const PageSurroundings& surroundings);

}  // namespace tarvendo
