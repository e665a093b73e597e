#include "tourney/pairing_place.h"

#include "tourney/tourney.h"

namespace tarvendo {
namespace {

bool IsSamePairing(const Game& a, const Game& b) {
  return a.round == b.round &&
         ((a.white == b.white && a.black == b.black) || (a.white == b.black && a.black == b.white));
}

}  // namespace

std::size_t PairingPlace(const Tourney& tourney, const Game& game) {
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
