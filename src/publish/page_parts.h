#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tarvendo {

struct PageSurroundings;
struct Report;

// The parts of the page (page.h); each adds its HTML. For page.cpp.

/// How much of a large tourney the page shows, so that a browser can bear it.
struct PageLimits {
  std::size_t open_tables = 60;      ///< more participants: wide tables are folded at first
  std::size_t single_results = 100;  ///< up to so many, cells of one game show it on hover too
  std::size_t cross_table = 400;     ///< of a round robin; more have none
  std::size_t superiority = 300;     ///< more see the ten behind them only
  std::size_t elo_rows = 100;
  std::size_t open_games = 600;        ///< more games: only the last round is unfolded at first
  std::size_t games_in_tables = 5000;  ///< more are lines of text: cells are what weighs
};
inline constexpr PageLimits kPageLimits;

void AddHeading(std::string& html, const Report& report, const PageSurroundings& surroundings);
void AddStandings(std::string& html, const Report& report);
void AddCrossTable(std::string& html, const Report& report);
void AddEloChart(std::string& html, const Report& report);
void AddPointsChart(std::string& html, const Report& report);
void AddSuperiority(std::string& html, const Report& report);
void AddGames(std::string& html, const Report& report, const PageSurroundings& surroundings);

/// Opens a part with its heading, and the box in which a wide table scrolls by itself; `folded`
/// puts the box behind a line that opens it. EndTable closes all of it.
void BeginSection(std::string& html, const char* id, const char* heading, const std::string& note);
void EndSection(std::string& html);
void BeginBox(std::string& html, const std::string& label, bool folded);
void EndBox(std::string& html, bool folded);

/// A size as the formats of every host take it.
inline int AsInt(std::size_t size) {
  return static_cast<int>(size);
}

/// The indices of those who are no bye, in the order of rank.
std::vector<std::size_t> ByRank(const Report& report);

extern const char* const kPageStyle;
extern const char* const kPageScript;

/// What the page's policy knows the script by: the SHA-256 of kPageScript, in base 64.
extern const char* const kPageScriptHash;

}  // namespace tarvendo
