#include "console/exit_code.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "base/text.h"
#include "tourney/rounds.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

/// So many numbers of games are told; who has more of them looks into the list of games.
constexpr std::size_t kMostTold = 20;

std::string CountOf(const std::vector<int>& games) {
  return std::to_string(games.size()) + ":";
}

std::string NumbersOf(const std::vector<int>& games) {
  std::string numbers;
  for (std::size_t i = 0; i < std::min(games.size(), kMostTold); ++i)
    numbers += Format(" %d", games[i]);
  return numbers + (games.size() > kMostTold ? " ..." : "");
}

std::string GamesWithoutResult(const Tourney& tourney) {
  std::vector<int> unplayed;
  std::vector<int> unknown;
  for (const Game& game : tourney.Games()) {
    if (!game.IsReady()) {
      unplayed.push_back(game.number);
    } else if (game.LacksResult()) {
      unknown.push_back(game.number);
    }
  }
  std::string lines;
  if (!unplayed.empty()) {
    lines += "Games not played: " + CountOf(unplayed) + NumbersOf(unplayed) + "\n";
  }
  if (!unknown.empty()) {
    lines += "Games played without a result: " + CountOf(unknown) + NumbersOf(unknown) +
             " ('replay' plays them again)\n";
  }
  return lines;
}

std::string MissingRounds(const Tourney& tourney) {
  const int rounds = RoundsWithoutGames(tourney);
  if (rounds == 0) return "";
  const bool pairs_itself = tourney.Settings().auto_run != 0;
  return Format("Rounds not paired: %d of %d%s\n", rounds, LastSwissRound(tourney),
                pairs_itself ? "" : " (AutoRun is off; 'set autorun on' pairs them)");
}

}  // namespace

std::string WhatIsMissing(const Tourney& tourney, bool is_saved) {
  std::string lines;
  if (tourney.Games().empty()) lines += "The tourney has no games.\n";
  lines += GamesWithoutResult(tourney) + MissingRounds(tourney);
  if (tourney.Switch().HasStoppedItself()) lines += "The runner stopped itself.\n";
  if (!is_saved) lines += "The tourney is not saved.\n";
  return lines;
}

ExitCode CodeOf(RunEnd end, const std::string& missing) {
  if (end == RunEnd::kAsked) return kEndedByUser;
  if (end == RunEnd::kFault) return kAsEver;
  return missing.empty() ? kAllPlayed : kNotAllPlayed;
}

}  // namespace tarvendo
