#include "console/exit_code.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "tourney/rounds.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

/// So many numbers of games are told; who has more of them looks into the list of games.
constexpr std::size_t kMostTold = 20;

std::string NumbersOf(const std::vector<int>& games) {
  std::string numbers;
  for (std::size_t i = 0; i < std::min(games.size(), kMostTold); ++i)
    numbers += " " + std::to_string(games[i]);
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
    lines += "Games not played: " + std::to_string(unplayed.size()) + ":" + NumbersOf(unplayed) +
             "\n";
  }
  if (!unknown.empty()) {
    lines += "Games played without a result: " + std::to_string(unknown.size()) + ":" +
             NumbersOf(unknown) + " ('replay' plays them again)\n";
  }
  return lines;
}

std::string MissingRounds(const Tourney& tourney) {
  const int rounds = RoundsWithoutGames(tourney);
  if (rounds == 0) return "";
  return "Rounds not paired: " + std::to_string(rounds) + " of " +
         std::to_string(LastSwissRound(tourney)) +
         (tourney.Settings().auto_run != 0 ? "\n"
                                           : " (AutoRun is off; 'set autorun on' pairs them)\n");
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
