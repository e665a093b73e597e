#include <cmath>

#include "base/text.h"
#include "publish/html_text.h"
#include "publish/page_parts.h"
#include "publish/report_model.h"

namespace tarvendo {
namespace {

/// A cell that sorts by a number which is not quite what it shows.
void AddCell(std::string& html, double value, const std::string& shown) {
  html += Format("<td data-v=%.10g>", value);
  html += shown;
}

void AddCount(std::string& html, int count) {
  html += "<td>" + std::to_string(count);
}

void AddElo(std::string& html, const EloRating& rating, bool with_group) {
  const std::string group =
      with_group && rating.group > 0 ? Format(" <small>group %d</small>", rating.group) : "";
  switch (rating.kind) {
    case EloKind::kNone:
      html += "<td class=none>–<td class=none>–";
      return;
    case EloKind::kAtLeast:
      AddCell(html, rating.elo, "≥ " + EloForPeople(rating.elo) + group);
      html += "<td class=none>won all";
      return;
    case EloKind::kAtMost:
      AddCell(html, rating.elo, "≤ " + EloForPeople(rating.elo) + group);
      html += "<td class=none>lost all";
      return;
    case EloKind::kRated:
      break;
  }
  AddCell(html, rating.elo, EloForPeople(rating.elo) + group);
  if (rating.margin) {
    AddCell(html, *rating.margin,
            EloForPeople(rating.elo - *rating.margin) + " to " +
                EloForPeople(rating.elo + *rating.margin));
  } else {
    html += "<td class=none>–";
  }
}

void AddRow(std::string& html, const Report& report, std::size_t index) {
  const ReportParticipant& shown = report.participants[index];
  html += "<tr><td>" + std::to_string(shown.rank) + "<th scope=row>";
  AddName(html, shown.name);
  AddCell(html, shown.points, "<b>" + PointsForPeople(shown.points) + "</b>");
  for (const int count : {shown.games, shown.wins, shown.draws, shown.losses})
    AddCount(html, count);
  const auto percent = shown.Percent();
  html += percent ? Format("<td>%.1f", *percent) : "<td class=none>–";
  AddElo(html, report.elo.Of(index), report.elo.Groups() > 1);
  if (report.is_swiss) html += Format("<td>%.2f", InPoints(shown.buchholz));
  html += Format("<td>%.2f\n", InPoints(shown.sonneborn_berger));
}

/// A bye stands below the others, with nothing but its name.
void AddBye(std::string& html, const Report& report, std::size_t index) {
  html += "<tr class=bye><td>–<th scope=row>";
  AddName(html, report.participants[index].name);
  html += Format("<td colspan=%d>bye: its games are won by the others without being played\n",
                 report.is_swiss ? 10 : 9);
}

std::string NoteOnRatings(const Report& report) {
  std::string note =
      "Elo: the ratings under which these results are likeliest, draws counted as half a win, "
      "their mean 0; with the interval that holds the truth in 95 of 100 cases.";
  if (report.elo.Groups() > 1) {
    note +=
        " Groups that have not met, or of which one has won every game against the other, cannot "
        "be compared: each has a mean of its own.";
  }
  return note;
}

}  // namespace

void AddStandings(std::string& html, const Report& report) {
  BeginSection(html, "standings", "Standings", NoteOnRatings(report));
  BeginBox(html, "Standings", false);
  html +=
      "<table class=sorts><caption class=hidden>Standings</caption><thead><tr>"
      "<th scope=col data-up>Rank<th scope=col data-up>Name<th scope=col>Points<th scope=col>Games"
      "<th scope=col>Won<th scope=col>Drawn<th scope=col>Lost<th scope=col>%<th scope=col>Elo"
      "<th scope=col>95 %";
  if (report.is_swiss) html += "<th scope=col><abbr title=Buchholz>Buch.</abbr>";
  html += "<th scope=col><abbr title=Sonneborn-Berger>S-B</abbr>\n<tbody>\n";
  for (const std::size_t index : report.order) {
    if (report.participants[index].is_bye) {
      AddBye(html, report, index);
    } else {
      AddRow(html, report, index);
    }
  }
  html += "</table>\n";
  EndBox(html, false);
  EndSection(html);
}

}  // namespace tarvendo
