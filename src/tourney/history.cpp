#include "tourney/history.h"

#include <algorithm>

#include "tourney/tourney.h"

namespace tarvendo {

bool HasGameInRound(const Tourney& tourney, const Player& player, int round,
                    bool must_be_finished) {
  for (const int index : player.games) {
    const Game* game = tourney.GameAt(index);
    if (game != nullptr && game->round == round) return !must_be_finished || game->IsReady();
  }
  return false;
}

bool RoundComplete(const Tourney& tourney, const Player& player, int round, bool only_finished) {
  const auto count = std::count_if(player.games.begin(), player.games.end(), [&](int index) {
    const Game* game = tourney.GameAt(index);
    return game != nullptr && game->round == round && (!only_finished || game->IsReady());
  });
  return count >= EffectiveSubRounds(tourney);
}

}  // namespace tarvendo
