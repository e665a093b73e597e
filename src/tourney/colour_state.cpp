#include "tourney/colour_state.h"

#include "tourney/tourney.h"

namespace tarvendo {
namespace {

struct ColourCount {
  int white = 0;
  int black = 0;
  bool last_was_white = false;
};

ColourCount CountColours(const Tourney& tourney, const Player& player) {
  ColourCount count;
  for (const int index : player.games) {
    const Game* game = tourney.GameAt(index);
    if (game == nullptr) continue;
    count.last_was_white = game->white == player.number;
    ++(count.last_was_white ? count.white : count.black);
  }
  return count;
}

int WishAfter(const ColourCount& count) {
  const int more_white = count.white - count.black;
  if (more_white >= 2) return kMustHaveBlack;
  if (more_white <= -2) return kMustHaveWhite;
  if (more_white == 1) return kMediumBlack;
  if (more_white == -1) return kMediumWhite;
  return count.last_was_white ? kWeakBlack : kWeakWhite;
}

}  // namespace

void UpdateColourState(const Tourney& tourney, Player& player) {
  if (!tourney.IsSwiss()) return;
  player.colour_state =
      IsLastSwissRound(tourney) ? kNoColourWish : WishAfter(CountColours(tourney, player));
}

bool IsLastSwissRound(const Tourney& tourney) {
  return tourney.IsSwiss() && tourney.State().round == tourney.Settings().rounds;
}

}  // namespace tarvendo
