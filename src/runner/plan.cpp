#include "runner/plan.h"

#include <algorithm>

#include "runner/running_games.h"
#include "tourney/bye.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

const Game* GameWhoseTurnItIs(const Tourney& tourney, const RunningGames& running,
                              const std::vector<int>& blocked) {
  return tourney.FirstSpooledGame([&](const Game& game) {
    const bool is_blocked = std::find(blocked.begin(), blocked.end(), game.number) != blocked.end();
    return !is_blocked && !running.HasNumber(game.number);
  });
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
  if (tourney.Settings().auto_run == 0 ||
      (may_only_spool && tourney.FirstGameToSpool() == nullptr)) {
    return {PlanStep::kWait};
  }
  if (!attempt.has_nothing_to_spool) return {PlanStep::kSpool};
  return {tourney.IsSwiss() ? StepTowardsRound(attempt) : PlanStep::kSwitchOff};
}

}  // namespace tarvendo
