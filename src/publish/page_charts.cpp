// Both charts are SVG whose places across are percentages (or, of lines, a drawing that is
// stretched), and all their words are HTML beside it: so they fit every screen, and no text in them
// ever becomes smaller than the rest of the page.

#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "publish/html_text.h"
#include "publish/page_parts.h"
#include "publish/report_model.h"
#include "tourney/game_score.h"

namespace tarvendo {
namespace {

/// A step of 1, 2 or 5 times a power of ten of which about `wanted` fit into a range.
double RoundStep(double range, int wanted) {
  const double rough = range / wanted;
  const double power = std::pow(10, std::floor(std::log10(rough)));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (rough <= factor * power) return factor * power;
  }
  return 10 * power;
}

// Elo.

/// The scale of the Elo chart: from the lowest to the highest end of an interval, and its marks.
struct EloScale {
  double low = -50;
  double high = 50;
  double step = 50;

  double At(double elo) const { return std::clamp((elo - low) / (high - low) * 100, 0.0, 100.0); }
};

double LowEnd(const EloRating& rating) {
  return rating.elo - rating.margin.value_or(0);
}

double HighEnd(const EloRating& rating) {
  return rating.elo + rating.margin.value_or(0);
}

EloScale ScaleFor(const Report& report, const std::vector<std::size_t>& ranked) {
  EloScale scale;
  for (const std::size_t index : ranked) {
    const EloRating& rating = report.elo.Of(index);
    if (rating.kind == EloKind::kNone) continue;
    scale.low = std::min(scale.low, LowEnd(rating));
    scale.high = std::max(scale.high, HighEnd(rating));
  }
  scale.step = RoundStep(scale.high - scale.low, 5);
  scale.low = std::floor(scale.low / scale.step) * scale.step;
  scale.high = std::ceil(scale.high / scale.step) * scale.step;
  return scale;
}

void AddEloAxis(std::string& html, const EloScale& scale) {
  html += "<div class=axis><span></span><div class=marks>";
  for (double mark = scale.low; mark <= scale.high + scale.step / 2; mark += scale.step) {
    html += Format("<span style=\"left:%.2f%%\">", scale.At(mark)) + EloForPeople(mark) + "</span>";
  }
  html += "</div><span></span></div>\n";
}

void AddEloMarks(std::string& html, const EloScale& scale) {
  for (double mark = scale.low; mark <= scale.high + scale.step / 2; mark += scale.step) {
    const double x = scale.At(mark);
    const bool is_mean = std::abs(mark) < scale.step / 2;
    html += Format("<line class=%s x1=%.2f%% x2=%.2f%% y1=0 y2=100%% />", is_mean ? "mean" : "grid",
                   x, x);
  }
}

/// An interval as a line with its rating as a dot, or a bound as an arrow.
void AddEloShape(std::string& html, const EloScale& scale, const EloRating& rating) {
  const double x = scale.At(rating.elo);
  if (rating.kind != EloKind::kRated) {
    const char* arrow = rating.kind == EloKind::kAtLeast ? "M0-6v12M0 0h16m-5-5 5 5-5 5"
                                                         : "M0-6v12M0 0h-16m5-5-5 5 5 5";
    html += Format("<svg x=%.2f%% y=50%% overflow=visible><path class=bound d=\"%s\"/></svg>", x,
                   arrow);
    return;
  }
  const double low = scale.At(LowEnd(rating));
  const double high = scale.At(HighEnd(rating));
  html += Format("<line class=error x1=%.2f%% x2=%.2f%% y1=50%% y2=50%% />", low, high);
  for (const double end : {low, high})
    html +=
        Format("<svg x=%.2f%% y=50%% overflow=visible><path class=error d=\"M0-4v8\"/></svg>", end);
  html += Format("<circle cx=%.2f%% cy=50%% r=4.5 />", x);
}

std::string EloWords(const EloRating& rating) {
  switch (rating.kind) {
    case EloKind::kNone:
      return "–";
    case EloKind::kAtLeast:
      return "≥ " + EloForPeople(rating.elo);
    case EloKind::kAtMost:
      return "≤ " + EloForPeople(rating.elo);
    case EloKind::kRated:
      break;
  }
  const std::string number = EloForPeople(rating.elo);
  return rating.margin ? number + Format(" ± %ld", std::lround(*rating.margin)) : number;
}

// Points.

/// So many lines can be told apart.
constexpr std::size_t kMostLines = 8;

constexpr int kMostRoundsInChart = 2000;

/// The points of one participant behind each round that it has played in, from round 0 on.
std::vector<double> PointsByRound(const Report& report, std::size_t index, int rounds) {
  std::vector<double> gained(static_cast<std::size_t>(rounds) + 1, 0.0);
  std::size_t last = 0;
  for (const ReportGame& game : report.games) {
    const bool is_white = game.white == static_cast<int>(index);
    if (!is_white && game.black != static_cast<int>(index)) continue;
    if (game.state != ReportGameState::kPlayed || game.round < 1 || game.round > rounds) continue;
    const auto round = static_cast<std::size_t>(game.round);
    gained[round] += InPoints(is_white ? WhiteScore(game.result) : BlackScore(game.result));
    last = std::max(last, round);
  }
  gained.resize(last + 1);
  for (std::size_t round = 1; round < gained.size(); ++round)
    gained[round] += gained[round - 1];
  return gained;
}

int RoundsPlayed(const Report& report) {
  int last = 0;
  for (const ReportGame& game : report.games) {
    if (game.state == ReportGameState::kPlayed) last = std::max(last, game.round);
  }
  return std::min(last, kMostRoundsInChart);
}

/// Marks between 0 and a highest number, so many that they do not stand in each other's way.
double StepOfMarks(double highest) {
  return std::max(RoundStep(highest, 6), 1.0);
}

void AddMarks(std::string& html, const char* side, double highest) {
  const double step = StepOfMarks(highest);
  for (double mark = 0; mark <= highest + 1e-9; mark += step)
    html += Format("<span style=\"%s:%.2f%%\">%.0f</span>", side, mark / highest * 100, mark);
}

void AddLine(std::string& html, const std::vector<double>& points, std::size_t line, int rounds,
             double highest) {
  std::string path;
  for (std::size_t round = 0; round < points.size(); ++round) {
    path +=
        Format("%c%.2f %.2f", round == 0 ? 'M' : 'L', 1000.0 * static_cast<double>(round) / rounds,
               300 - 300 * points[round] / highest);
  }
  html += Format("<path class=\"line c%d\" d=\"%s\"/>", AsInt(line + 1), path.c_str());
}

void AddDrawing(std::string& html, const std::vector<std::vector<double>>& lines, int rounds,
                double highest) {
  html += "<div class=points><div class=side>";
  AddMarks(html, "bottom", highest);
  html +=
      "</div><svg viewBox=\"0 0 1000 300\" preserveAspectRatio=none role=img "
      "aria-label=\"Points by round; the end of each line stands in the list below\">";
  for (double mark = 0; mark <= highest + 1e-9; mark += StepOfMarks(highest))
    html += Format("<path class=grid d=\"M0 %.2fh1000\"/>", 300 - 300 * mark / highest);
  for (std::size_t line = lines.size(); line-- > 0;)
    AddLine(html, lines[line], line, rounds, highest);
  html += "</svg><div class=marks>";
  AddMarks(html, "left", rounds);
  html += "</div></div>\n";
}

void AddLegend(std::string& html, const Report& report, const std::vector<std::size_t>& ranked) {
  html += "<ul class=legend>\n";
  for (std::size_t line = 0; line < ranked.size(); ++line) {
    html += Format(
        "<li><svg width=34 height=12 aria-hidden=true><path class=\"line c%d\" "
        "d=\"M1 6h32\"/></svg><span>",
        AsInt(line + 1));
    AddName(html, report.participants[ranked[line]].name);
    html += ' ';
    html += PointsForPeople(report.participants[ranked[line]].points);
    html += "</span>\n";
  }
  html += "</ul>\n";
}

}  // namespace

void AddEloChart(std::string& html, const Report& report) {
  std::vector<std::size_t> ranked = ByRank(report);
  std::stable_sort(ranked.begin(), ranked.end(), [&](std::size_t a, std::size_t b) {
    return report.elo.Of(a).group < report.elo.Of(b).group;
  });
  const std::size_t all = ranked.size();
  if (all > kPageLimits.elo_rows) ranked.resize(kPageLimits.elo_rows);
  BeginSection(html, "elo", "Elo",
               all > ranked.size()
                   ? Format("With 95 %% intervals; the first %d of %d, all are in the standings.",
                            AsInt(ranked.size()), AsInt(all))
                   : "With 95 % intervals, in the order of rank.");
  const EloScale scale = ScaleFor(report, ranked);
  html += "<div class=elo>\n";
  AddEloAxis(html, scale);
  for (const std::size_t index : ranked) {
    const EloRating& rating = report.elo.Of(index);
    html += "<div><span>";
    AddName(html, report.participants[index].name);
    html += "</span><svg aria-hidden=true>";
    AddEloMarks(html, scale);
    if (rating.kind != EloKind::kNone) AddEloShape(html, scale, rating);
    html += "</svg><span>" + EloWords(rating) + "</span></div>\n";
  }
  html += "</div>\n";
  EndSection(html);
}

void AddPointsChart(std::string& html, const Report& report) {
  std::vector<std::size_t> ranked = ByRank(report);
  const bool is_part = ranked.size() > kMostLines;
  if (is_part) ranked.resize(kMostLines);
  BeginSection(html, "points", "Points by round",
               is_part ? Format("The first %d of the standings.", AsInt(kMostLines)) : "");
  const int rounds = RoundsPlayed(report);
  if (rounds == 0 || ranked.empty()) {
    html += "<p>No game has been played yet.</p>\n";
    EndSection(html);
    return;
  }
  std::vector<std::vector<double>> lines;
  double highest = 1;
  for (const std::size_t index : ranked) {
    lines.push_back(PointsByRound(report, index, rounds));
    highest = std::max(highest, std::ceil(lines.back().back()));
  }
  AddDrawing(html, lines, rounds, highest);
  AddLegend(html, report, ranked);
  EndSection(html);
}

}  // namespace tarvendo
