#include "publish/html_text.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"

namespace tarvendo {

void AddText(std::string& html, std::string_view text) {
  std::size_t done = 0;
  for (std::size_t at = text.find_first_of("&<>\"'"); at != std::string_view::npos;
       at = text.find_first_of("&<>\"'", done)) {
    html += text.substr(done, at - done);
    switch (text[at]) {
      case '&':
        html += "&amp;";
        break;
      case '<':
        html += "&lt;";
        break;
      case '>':
        html += "&gt;";
        break;
      case '"':
        html += "&quot;";
        break;
      default:
        html += "&#39;";
    }
    done = at + 1;
  }
  html += text.substr(done);
}

void AddName(std::string& html, std::string_view name) {
  // Most names have nothing in them that could change a direction, and a large page many names.
  const bool is_ascii = std::all_of(name.begin(), name.end(), [](char c) { return c > 0; });
  if (is_ascii) return AddText(html, name);
  html += "<bdi>";
  AddText(html, name);
  html += "</bdi>";
}

std::string PointsForPeople(QuarterPoints points) {
  const int whole = WholePoints(points);
  if (!HasHalfPoint(points)) return std::to_string(whole);
  return (whole == 0 ? "" : std::to_string(whole)) + "½";
}

std::string EloForPeople(double elo) {
  const long rounded = std::lround(elo);
  if (rounded == 0) return "0";
  return (rounded > 0 ? "+" : "−") + std::to_string(std::labs(rounded));
}

std::string DurationForPeople(int seconds) {
  if (seconds < 3600) return Format("%d:%02d", seconds / 60, seconds % 60);
  return Format("%d:%02d:%02d", seconds / 3600, seconds / 60 % 60, seconds % 60);
}

}  // namespace tarvendo
