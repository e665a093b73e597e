#include "runner/next_game.h"

#include <algorithm>

#include "base/log.h"
#include "pairing/swiss_driver.h"
#include "runner/spool.h"
#include "tourney/history.h"
#include "tourney/rounds.h"
#include "tourney/tourney.h"
#include "tourney/tourney_file.h"

namespace tarvendo {
namespace {

constexpr long long kLogLimit = 2097152;  ///< bytes

bool IsSpooledEarlier(const Game& a, const Game& b) {
  return static_cast<unsigned>(a.spool_index) < static_cast<unsigned>(b.spool_index);
}

const Game* FirstSpooledGame(const Tourney& tourney) {
  const Game* first = nullptr;
  for (const Game& game : tourney.Games()) {
    if (game.status != kSpooled) continue;
    if (first == nullptr || IsSpooledEarlier(game, *first)) first = &game;
  }
  return first;
}

/// AutoRun of a Swiss tourney: spools the next game, pairing a round or replaying games when it has
/// to.
bool SpoolNextSwissGame(Tourney& tourney, FileSystem& files, BracketList& brackets) {
  if (Spool(tourney, files, 0)) return true;
  if (PairSwissRound(tourney, brackets, PairingRequest())) return Spool(tourney, files, 0);
  return ReplayUnfinished(tourney, files);
}

bool IsCurrentRoundPlayed(const Tourney& tourney) {
  const auto& participants = tourney.Participants();
  return std::all_of(participants.begin(), participants.end(), [&](const Player& player) {
    return RoundComplete(tourney, player, tourney.State().round, true);
  });
}

}  // namespace

const Game* NextGameToRun(Tourney& tourney, FileSystem& files, BracketList& brackets) {
  while (true) {
    if (const Game* game = FirstSpooledGame(tourney)) {
      tourney.current_game = game->number;
      return game;
    }
    tourney.current_game = 0;
    if (tourney.Settings().auto_run == 0) return nullptr;
    const bool spooled =
        tourney.IsSwiss() ? SpoolNextSwissGame(tourney, files, brackets) : Spool(tourney, files, 0);
    if (!spooled) {
      tourney.ChangeSettings()->auto_run = 0;
      return nullptr;
    }
  }
}

void NextRound(Tourney& tourney, TourneyFile& file, BracketList& brackets) {
  if (TheLog != nullptr) TheLog->Housekeep(kLogLimit);
  file.AutoSave(tourney);
  if (!tourney.IsSwiss() || !IsCurrentRoundPlayed(tourney)) return;
  CutRoundsToHalf(tourney);
  RecomputeCurrentRound(tourney);
  if (tourney.State().round >= tourney.Settings().rounds) {
    Print("Tourney finished.\n");
    tourney.ChangeSettings()->auto_run = 0;
  } else if (tourney.Settings().auto_run != 0) {
    PairSwissRound(tourney, brackets, PairingRequest());
  }
}

}  // namespace tarvendo
