#include "tourney/bye.h"

#include "tourney/tourney.h"

namespace tarvendo {

std::optional<int> ResultByBye(const Tourney& tourney, const Game& game) {
  const Player* white = tourney.FindParticipant(game.white);
  const Player* black = tourney.FindParticipant(game.black);
  if (white == nullptr || black == nullptr) return std::nullopt;
  if (IsBye(*white)) return IsBye(*black) ? kBothLose : kBlackWins;
  if (IsBye(*black)) return kWhiteWins;
  return std::nullopt;
}

}  // namespace tarvendo
