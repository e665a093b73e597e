#include "runner/next_game.h"

#include <algorithm>

#include "base/log.h"
#include "pairing/swiss_driver.h"
#include "runner/spool.h"
#include "tourney/history.h"
#include "tourney/rounds.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

constexpr long long kLogLimit = 2097152;  ///< bytes

bool IsSpooledEarlier(const Game& a, const Game& b) {
  return static_cast<unsigned>(a.spool_index) < static_cast<unsigned>(b.spool_index);
}

Game* FirstSpooledGame(Tourney& tourney) {
  Game* first = nullptr;
  for (Game& game : tourney.Games()) {
    if (game.status != kSpooled) continue;
    if (first == nullptr || IsSpooledEarlier(game, *first)) first = &game;
  }
  return first;
}

/// AutoRun of a Swiss tourney: spools the next game, pairing a round or replaying games when it has
/// to.
bool SpoolNextSwissGame(Tourney& tourney, BracketList& brackets) {
  if (Spool(tourney, 0)) return true;
  if (PairSwissRound(tourney, brackets, PairingRequest())) return Spool(tourney, 0);
  return ReplayUnfinished(tourney);
}

bool IsCurrentRoundPlayed(const Tourney& tourney) {
  const auto& participants = tourney.Participants();
  return std::all_of(participants.begin(), participants.end(), [&](const Player& player) {
    return RoundComplete(tourney, player, tourney.round, true);
  });
}

}  // namespace

Game* NextGameToRun(Tourney& tourney, BracketList& brackets) {
  while (true) {
    if (Game* game = FirstSpooledGame(tourney)) {
      tourney.current_game = game->number;
      return game;
    }
    tourney.current_game = 0;
    if (tourney.settings.auto_run == 0) return nullptr;
    const bool spooled =
        tourney.IsSwiss() ? SpoolNextSwissGame(tourney, brackets) : Spool(tourney, 0);
    if (!spooled) {
      tourney.settings.auto_run = 0;
      return nullptr;
    }
  }
}

void NextRound(Tourney& tourney, BracketList& brackets) {
  if (TheLog != nullptr) TheLog->Housekeep(kLogLimit);
  if (tourney.settings.auto_save != 0) AutoSave(tourney);
  if (!tourney.IsSwiss() || !IsCurrentRoundPlayed(tourney)) return;
  CutRoundsToHalf(tourney);
  RecomputeCurrentRound(tourney);
  if (tourney.round >= tourney.settings.rounds) {
    Print("Tourney finished.\n");
    tourney.settings.auto_run = 0;
  } else if (tourney.settings.auto_run != 0) {
    PairSwissRound(tourney, brackets, PairingRequest());
  }
}

void AutoSave(Tourney& tourney) {
  if (!tourney.Save("")) Print("Saving tourney failed!\n");
}

}  // namespace tarvendo
