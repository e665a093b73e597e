#include "publish/page.h"

#include "base/text.h"
#include "publish/html_text.h"
#include "publish/page_parts.h"
#include "publish/report_model.h"

namespace tarvendo {
namespace {

constexpr int kReloadSeconds = 30;

/// A red and a blue square of a board, for the browser's tab.
constexpr const char* kIcon =
    "<link rel=icon href=\"data:image/svg+xml,%3Csvg xmlns='http://www.w3.org/2000/svg' "
    "viewBox='0 0 2 2'%3E%3Cpath fill='%231f5f8b' d='M0 0h1v2h1V1H0z'/%3E%3C/svg%3E\">\n";

void AddHead(std::string& html, const Report& report) {
  html +=
      "<!DOCTYPE html>\n<html lang=en>\n<head>\n<meta charset=utf-8>\n"
      "<meta name=viewport content=\"width=device-width, initial-scale=1\">\n"
      "<meta http-equiv=Content-Security-Policy content=\"default-src 'none'; img-src data:; "
      "style-src 'unsafe-inline'; script-src 'sha256-";
  html += kPageScriptHash;
  html += "'\">\n<meta name=generator content=Tarvendo>\n";
  html += kIcon;
  if (report.counts.Left() > 0) {
    html += Format("<noscript><meta http-equiv=refresh content=%d></noscript>\n", kReloadSeconds);
  }
  html += "<title>";
  AddText(html, report.name);
  html += "</title>\n<style>";
  html += kPageStyle;
  html += "</style>\n</head>\n";
}

void AddFact(std::string& html, const char* name, const std::string& value) {
  if (value.empty()) return;
  html += "<div><dt>";
  html += name;
  html += "</dt><dd>";
  AddText(html, value);
  html += "</dd></div>\n";
}

std::string TypeText(const Report& report) {
  if (report.is_swiss) return "Swiss system";
  return report.sub_rounds > 1 ? Format("Round robin, %d times", report.sub_rounds) : "Round robin";
}

/// "43 of 90 games played", and what else there is to say of them.
std::string ProgressText(const ReportCounts& counts) {
  std::string text = Format("%d of %d games played", counts.played, counts.all);
  if (counts.playing > 0) text += Format(", %d being played", counts.playing);
  if (counts.without_result > 0) text += Format(", %d without a result", counts.without_result);
  return text;
}

void AddProgress(std::string& html, const ReportCounts& counts) {
  const double share = counts.all > 0 ? 100.0 * counts.played / counts.all : 0;
  html += "<div class=progress><div class=bar aria-hidden=true><i style=\"width:";
  html += Format("%.1f%%\"></i></div>\n<p>", share);
  html += ProgressText(counts);
  html += Format(" (%d %%)</p></div>\n", static_cast<int>(share));
}

void AddReload(std::string& html) {
  html += Format(
      "<p class=live data-seconds=%d><span>Games are left: this page loads itself anew every %d "
      "seconds.</span></p>\n",
      kReloadSeconds, kReloadSeconds);
}

void AddLinks(std::string& html, const Report& report, const PageSurroundings& surroundings) {
  html += "<nav aria-label=\"On this page\"><a href=#standings>Standings</a> <a href=#cross>";
  html += report.is_swiss ? "Rounds" : "Cross table";
  html +=
      "</a> <a href=#elo>Elo</a> <a href=#points>Points by round</a> "
      "<a href=#superiority>Superiority</a> <a href=#games>Games</a></nav>\n"
      "<p class=files>To download: <a href=standings.csv>standings.csv</a> "
      "<a href=games.csv>games.csv</a> <a href=tourney.json>tourney.json</a>";
  if (surroundings.pgn_until > 0) html += " <a href=games.pgn>games.pgn</a>";
  html += "</p>\n";
}

}  // namespace

void AddHeading(std::string& html, const Report& report, const PageSurroundings& surroundings) {
  html += "<header>\n<h1>";
  AddName(html, report.name);
  html += "</h1>\n<dl>\n";
  AddFact(html, "Type", TypeText(report));
  AddFact(html, "Round", Format("%d of %d", report.round, report.rounds));
  AddFact(html, "Participants", std::to_string(report.counts.participants));
  AddFact(html, "Games", Format("%d of %d", report.counts.played, report.counts.all));
  AddFact(html, "Time control", report.time_control_text);
  AddFact(html, "Computer", report.computer);
  AddFact(html, "Last change", report.changed_at_text);
  html += "</dl>\n";
  AddProgress(html, report.counts);
  if (report.counts.Left() > 0) AddReload(html);
  AddLinks(html, report, surroundings);
  html += "</header>\n";
}

void BeginSection(std::string& html, const char* id, const char* heading, const std::string& note) {
  html += "<section id=";
  html += id;
  html += "><h2>";
  html += heading;
  html += "</h2>\n";
  if (!note.empty()) html += "<p class=note>" + note + "</p>\n";
}

void EndSection(std::string& html) {
  html += "</section>\n";
}

void BeginBox(std::string& html, const std::string& label, bool folded) {
  if (folded) html += "<details><summary>Show: " + label + "</summary>\n";
  html += "<div class=scroll tabindex=0 role=region aria-label=\"" + label + "\">\n";
}

void EndBox(std::string& html, bool folded) {
  html += "</div>\n";
  if (folded) html += "</details>\n";
}

std::vector<std::size_t> ByRank(const Report& report) {
  std::vector<std::size_t> ranked = report.order;
  ranked.resize(static_cast<std::size_t>(report.counts.participants));
  return ranked;
}

std::string ReportPage(const Report& report, const PageSurroundings& surroundings) {
  std::string html;
  html.reserve(65536 + report.participants.size() * 1024 + report.games.size() * 256);
  AddHead(html, report);
  html += "<body>\n";
  AddHeading(html, report, surroundings);
  html += "<main>\n";
  AddStandings(html, report);
  AddCrossTable(html, report);
  AddEloChart(html, report);
  AddPointsChart(html, report);
  AddSuperiority(html, report);
  AddGames(html, report, surroundings);
  html +=
      "</main>\n<footer><p>Made by Tarvendo, a tournament manager for chess "
      "engines.</p></footer>\n";
  html += "<script>";
  html += kPageScript;
  html += "</script>\n</body>\n</html>\n";
  return html;
}

}  // namespace tarvendo
