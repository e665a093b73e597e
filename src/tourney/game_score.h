#pragma once

#include "base/scores.h"
#include "tourney/game.h"

namespace tarvendo {

/// What the result of a game gives White, in quarter points. Games are scored when they are READY;
/// that is for the caller to look at.
inline QuarterPoints WhiteScore(const Game& game) {
  if (game.result == kWhiteWins) return kWinPoints;
  return game.result == kDraw ? kDrawPoints : 0;
}

/// What the result of a game gives Black, in quarter points.
inline QuarterPoints BlackScore(const Game& game) {
  if (game.result == kBlackWins) return kWinPoints;
  return game.result == kDraw ? kDrawPoints : 0;
}

/// Whether the result is one between two players who really fought it out: a win or a draw.
inline bool IsDecidedOnBoard(const Game& game) {
  return game.result == kWhiteWins || game.result == kBlackWins || game.result == kDraw;
}

}  // namespace tarvendo
