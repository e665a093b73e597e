#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "publish/html_text.h"
#include "publish/page_parts.h"
#include "publish/report_model.h"

namespace tarvendo {
namespace {

/// In a field that is too large for all pairs each player is held against so many behind it.
constexpr std::size_t kNeighbours = 10;

/// Never "100" nor "0": nothing is as sure as that.
std::string PercentText(double chance) {
  return std::to_string(std::clamp<long>(std::lround(chance * 100), 1, 99));
}

/// The colour of a chance that is worth one.
const char* ClassOfChance(double chance) {
  if (chance >= 0.95) return " class=w";
  return chance <= 0.05 ? " class=l" : "";
}

void AddChance(std::string& html, const Report& report, std::size_t a, std::size_t b) {
  const auto chance = report.elo.ChanceOfSuperiority(a, b);
  html += "<td";
  if (!chance) {
    html += a == b ? " class=x>" : ">";
    return;
  }
  html += ClassOfChance(*chance);
  html += '>' + PercentText(*chance);
}

void BeginChances(std::string& html, bool is_wide) {
  html += Format(
      "<table class=\"cross%s\"><caption class=hidden>Chance of superiority</caption>"
      "<thead><tr><th scope=col>#<th scope=col>Name",
      is_wide ? " wide" : "");
}

void BeginLine(std::string& html, const Report& report, std::size_t index, std::size_t line) {
  html += Format("<tr><td>%d<th scope=row>", AsInt(line + 1));
  AddName(html, report.participants[index].name);
}

void AddAllPairs(std::string& html, const Report& report, const std::vector<std::size_t>& ranked) {
  BeginChances(html, ranked.size() > 24);
  for (std::size_t line = 0; line < ranked.size(); ++line)
    html += Format("<th scope=col>%d", AsInt(line + 1));
  html += "\n<tbody>\n";
  for (std::size_t line = 0; line < ranked.size(); ++line) {
    BeginLine(html, report, ranked[line], line);
    for (const std::size_t other : ranked)
      AddChance(html, report, ranked[line], other);
    html += '\n';
  }
}

void AddNeighbours(std::string& html, const Report& report,
                   const std::vector<std::size_t>& ranked) {
  BeginChances(html, false);
  for (std::size_t behind = 1; behind <= kNeighbours; ++behind)
    html += Format("<th scope=col>+%d", AsInt(behind));
  html += "\n<tbody>\n";
  for (std::size_t line = 0; line + 1 < ranked.size(); ++line) {
    BeginLine(html, report, ranked[line], line);
    const std::size_t end = std::min(line + kNeighbours + 1, ranked.size());
    for (std::size_t other = line + 1; other < end; ++other)
      AddChance(html, report, ranked[line], ranked[other]);
    html += '\n';
  }
}

}  // namespace

void AddSuperiority(std::string& html, const Report& report) {
  const std::vector<std::size_t> ranked = ByRank(report);
  const bool is_whole = ranked.size() <= kPageLimits.superiority;
  BeginSection(html, "superiority", "Chance of superiority",
               is_whole ? "How sure it is, in percent, that the row is stronger than the column."
                        : "How sure it is, in percent, that a player is stronger than the one so "
                          "many lines behind it.");
  const bool folded = ranked.size() > kPageLimits.open_tables;
  BeginBox(html, "Chance of superiority", folded);
  if (is_whole) {
    AddAllPairs(html, report, ranked);
  } else {
    AddNeighbours(html, report, ranked);
  }
  html += "</table>\n";
  EndBox(html, folded);
  EndSection(html);
}

}  // namespace tarvendo
