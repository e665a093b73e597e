#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "publish/html_text.h"
#include "publish/page_parts.h"
#include "publish/report_model.h"

namespace tarvendo {
namespace {

/// Of a field that is too large for all pairs: so many behind each one.
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

void BeginLine(std::string& html, const Report& report, std::size_t place, std::size_t line) {
  html += Format("<tr><td>%d<th scope=row>", AsInt(line + 1));
  AddName(html, report.participants[place].name);
}

void AddAllPairs(std::string& html, const Report& report, const std::vector<std::size_t>& places) {
  BeginChances(html, places.size() > 24);
  for (std::size_t line = 0; line < places.size(); ++line)
    html += Format("<th scope=col>%d", AsInt(line + 1));
  html += "\n<tbody>\n";
  for (std::size_t line = 0; line < places.size(); ++line) {
    BeginLine(html, report, places[line], line);
    for (const std::size_t other : places)
      AddChance(html, report, places[line], other);
    html += '\n';
  }
}

void AddNeighbours(std::string& html, const Report& report,
                   const std::vector<std::size_t>& places) {
  BeginChances(html, false);
  for (std::size_t behind = 1; behind <= kNeighbours; ++behind)
    html += Format("<th scope=col>+%d", AsInt(behind));
  html += "\n<tbody>\n";
  for (std::size_t line = 0; line + 1 < places.size(); ++line) {
    BeginLine(html, report, places[line], line);
    const std::size_t end = std::min(line + kNeighbours + 1, places.size());
    for (std::size_t other = line + 1; other < end; ++other)
      AddChance(html, report, places[line], places[other]);
    html += '\n';
  }
}

}  // namespace

void AddSuperiority(std::string& html, const Report& report) {
  const std::vector<std::size_t> places = RankedPlaces(report);
  const bool is_whole = places.size() <= kPageLimits.superiority;
  BeginSection(html, "superiority", "Chance of superiority",
               is_whole ? "How sure it is, in percent, that the row is stronger than the column."
                        : "How sure it is, in percent, that a player is stronger than the one so "
                          "many lines behind it.");
  const bool folded = places.size() > kPageLimits.open_tables;
  BeginBox(html, "Chance of superiority", folded);
  if (is_whole) {
    AddAllPairs(html, report, places);
  } else {
    AddNeighbours(html, report, places);
  }
  html += "</table>\n";
  EndBox(html, folded);
  EndSection(html);
}

}  // namespace tarvendo
