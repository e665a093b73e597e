#include "console/progress.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "tourney/rounds.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

constexpr double kMilliHour = 3600000.0;

/// Longer than any tourney, and its milliseconds are still a number.
constexpr double kMostHours = 1e8;

/// Below this a span is told to the second.
constexpr long long kExactSeconds = 600;

/// How many games the rounds will have that are not paired yet.
std::size_t GamesToBePaired(const Tourney& tourney) {
  if (tourney.Settings().auto_run == 0) return 0;
  const std::size_t pairs = tourney.Participants().size() / 2;
  const auto sub_rounds = static_cast<std::size_t>(std::max(PlayableSubRounds(tourney, pairs), 1));
  return static_cast<std::size_t>(RoundsWithoutGames(tourney)) * pairs * sub_rounds;
}

std::string Played(const RunCounts& counts) {
  return std::to_string(counts.played) + "/" + std::to_string(counts.all) + " played";
}

std::string WithoutResult(const RunCounts& counts) {
  return std::to_string(counts.without_result) + " without result";
}

std::string RateText(double rate) {
  return rate < 600 ? Format("%.1f/h", rate) : Format("%.0f/min", rate / 60);
}

}  // namespace

RunCounts CountRun(const Tourney& tourney) {
  RunCounts counts;
  int open_round = 0;
  for (const Game& game : tourney.Games()) {
    counts.rounds = std::max(counts.rounds, game.round);
    if (!game.IsReady()) {
      if (open_round == 0 || game.round < open_round) open_round = game.round;
      continue;
    }
    ++counts.played;
    if (game.LacksResult()) ++counts.without_result;
  }
  counts.round = open_round != 0 ? open_round : counts.rounds;
  counts.rounds = std::max(counts.rounds, LastSwissRound(tourney));
  counts.all = tourney.Games().size() + GamesToBePaired(tourney);
  return counts;
}

double Progress::Rate(const RunCounts& counts, TimePoint now) const {
  const auto span = static_cast<double>((now - begin_).count());
  if (counts.ended_here <= ended_here_ || span <= 0) return 0;
  return static_cast<double>(counts.ended_here - ended_here_) * kMilliHour / span;
}

std::string Progress::Line(const RunCounts& counts, TimePoint now) const {
  std::string line = Played(counts) + ", " + std::to_string(counts.playing) + " playing, " +
                     WithoutResult(counts) + Format(", round %d/%d", counts.round, counts.rounds);
  const double rate = Rate(counts, now);
  if (rate <= 0) return line;
  const double left = static_cast<double>(counts.all - counts.played) / rate;
  const auto span =
      std::chrono::milliseconds(static_cast<std::int64_t>(std::min(left, kMostHours) * kMilliHour));
  return line + ", " + RateText(rate) + ", " + SpanText(span) + " left";
}

std::string Progress::LastLine(const RunCounts& counts, TimePoint now) const {
  const double rate = Rate(counts, now);
  return Played(counts) + ", " + WithoutResult(counts) + ", in " + SpanText(now - begin_) +
         (rate > 0 ? ", " + RateText(rate) : "");
}

std::string SpanText(std::chrono::milliseconds span) {
  const long long seconds = (span.count() + 500) / 1000;
  if (seconds < 60) return std::to_string(seconds) + " s";
  if (seconds < kExactSeconds) {
    return std::to_string(seconds / 60) + " min " + std::to_string(seconds % 60) + " s";
  }
  const long long minutes = (seconds + 30) / 60;
  if (minutes < 60) return std::to_string(minutes) + " min";
  const long long hours = minutes / 60;
  if (hours < 24) return std::to_string(hours) + " h " + std::to_string(minutes % 60) + " min";
  const long long rounded = (minutes + 30) / 60;
  return std::to_string(rounded / 24) + " d " + std::to_string(rounded % 24) + " h";
}

}  // namespace tarvendo
