#include "tourney/colour_state.h"

#include <cstddef>

#include "players/player.h"
#include "tourney/game.h"

namespace tarvendo {
namespace {

struct ColourCount {
  int white = 0;
  int black = 0;
  bool last_was_white = false;
};

ColourCount CountColours(const std::vector<Game>& games, const Player& player) {
  ColourCount count;
  for (const int index : player.games) {
    if (index < 0 || static_cast<std::size_t>(index) >= games.size()) continue;
    count.last_was_white = games[static_cast<std::size_t>(index)].white == player.number;
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

int ColourWish(const std::vector<Game>& games, const Player& player) {
  return WishAfter(CountColours(games, player));
}

}  // namespace tarvendo
