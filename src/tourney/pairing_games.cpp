#include "tourney/pairing_games.h"

#include <utility>

#include "tourney/tourney.h"

namespace tarvendo {
namespace {

bool IsSamePairing(const Game& a, const Game& b) {
  return a.round == b.round &&
         ((a.white == b.white && a.black == b.black) || (a.white == b.black && a.black == b.white));
}

}  // namespace

void AddGamesOfPairing(Tourney& tourney, int white, int black, int round, int sub_rounds) {
  for (int sub_round = 1; sub_round <= sub_rounds; ++sub_round) {
    tourney.AddGame(white, black, round, sub_round);
    std::swap(white, black);
  }
}

std::size_t PairingIndex(const Tourney& tourney, const Game& game) {
  std::size_t pairings = 0;
  const Game* before = nullptr;
  for (const Game& other : tourney.Games()) {
    if (before == nullptr || !IsSamePairing(*before, other)) ++pairings;
    if (&other == &game) return pairings - 1;
    before = &other;
  }
  return pairings;
}

}  // namespace tarvendo
