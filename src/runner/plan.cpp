#include "runner/plan.h"

#include <algorithm>

#include "runner/running_games.h"
#include "tourney/bye.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

bool IsSpooledEarlier(const Game& a, const Game& b) {
  return static_cast<unsigned>(a.spool_index) < static_cast<unsigned>(b.spool_index);
}

const Game* GameWhoseTurnItIs(const Tourney& tourney, const RunningGames& running,
                              const std::vector<int>& blocked) {
  const Game* first = nullptr;
  for (const Game& game : tourney.Games()) {
    if (game.status != kSpooled || (first != nullptr && !IsSpooledEarlier(game, *first))) continue;
    const bool is_blocked = std::find(blocked.begin(), blocked.end(), game.number) != blocked.end();
    if (!is_blocked && !running.HasNumber(game.number)) first = &game;
  }
  return first;
}

bool HasGameToSpool(const Tourney& tourney) {
  return std::any_of(tourney.Games().begin(), tourney.Games().end(),
                     [](const Game& game) { return game.status == kNothingDone; });
}

/// What a Swiss tourney with AutoRun does when nothing is left to spool.
PlanStep StepTowardsRound(const PlanAttempt& attempt) {
  if (attempt.has_paired) return PlanStep::kSwitchOff;
  if (!attempt.failed_to_pair) return PlanStep::kPair;
  return attempt.failed_to_replay ? PlanStep::kSwitchOff : PlanStep::kReplay;
}

}  // namespace

Plan PlanNextStep(const Tourney& tourney, const RunningGames& running, const PlanAttempt& attempt,
                  const std::vector<int>& blocked) {
  if (const Game* game = GameWhoseTurnItIs(tourney, running, blocked)) {
    return {ResultByBye(tourney, *game) ? PlanStep::kBye : PlanStep::kStart, game->number};
  }
  const bool may_only_spool = !running.IsEmpty() || !blocked.empty();
  if (tourney.Settings().auto_run == 0 || (may_only_spool && !HasGameToSpool(tourney))) {
    return {PlanStep::kWait};
  }
  if (!attempt.has_nothing_to_spool) return {PlanStep::kSpool};
  return {tourney.IsSwiss() ? StepTowardsRound(attempt) : PlanStep::kSwitchOff};
}

}  // namespace tarvendo
