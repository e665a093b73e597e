#pragma once

#include "base/scores.h"
#include "tourney/game.h"

namespace tarvendo {

/// What a GameResult gives White. A game is scored when it is READY; that is for the caller to look
/// at.
constexpr QuarterPoints WhiteScore(int result) {
  if (result == kWhiteWins) return kWinPoints;
  return result == kDraw ? kDrawPoints : 0;
}
inline QuarterPoints WhiteScore(const Game& game) {
  return WhiteScore(game.result);
}

/// What it gives Black.
constexpr QuarterPoints BlackScore(int result) {
  if (result == kBlackWins) return kWinPoints;
  return result == kDraw ? kDrawPoints : 0;
}
inline QuarterPoints BlackScore(const Game& game) {
  return BlackScore(game.result);
}

/// Whether it is one that two players have fought out: a win or a draw.
constexpr bool IsDecidedOnBoard(int result) {
  return result == kWhiteWins || result == kBlackWins || result == kDraw;
}
inline bool IsDecidedOnBoard(const Game& game) {
  return IsDecidedOnBoard(game.result);
}

}  // namespace tarvendo
