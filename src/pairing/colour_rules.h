#pragma once

#include "players/player.h"

namespace tarvendo {

/// How far a bracket goes against the players' wishes for a colour.
enum ColourLevel : int {
  kIgnoreColours = 2,    ///< a new bracket: wishes do not count
  kNoConflict = 4,       ///< no two who are due the same colour
  kWeakGivesWay = 8,     ///< they may meet when one of the wishes is weak
  kMediumGivesWay = 16,  ///< ... or medium; two absolute wishes are never overridden
};

// The rules on colours. A state is a ColourState of players/player.h.

constexpr bool IsDueWhite(int state) {
  return (state & 1) != 0;
}
constexpr bool HasColourWish(int state) {
  return state != kNoColourWish;
}
constexpr bool IsWeakWish(int state) {
  return state == kWeakBlack || state == kWeakWhite;
}
constexpr bool IsMediumWish(int state) {
  return state == kMediumBlack || state == kMediumWhite;
}

/// Whether the two are due the same colour and both care.
constexpr bool IsColourConflict(int state, int other_state) {
  return IsDueWhite(state) == IsDueWhite(other_state) && HasColourWish(state) &&
         HasColourWish(other_state);
}

/// Whether a wish yields to another of the same colour at that level.
constexpr bool GivesWay(int state, ColourLevel level) {
  return (level == kWeakGivesWay && IsWeakWish(state)) ||
         (level == kMediumGivesWay && (IsWeakWish(state) || IsMediumWish(state)));
}

/// Whether players with these wishes may be paired at that level.
constexpr bool ColoursAllowPair(int state, int other_state, ColourLevel level) {
  return level == kIgnoreColours || !IsColourConflict(state, other_state) ||
         GivesWay(state, level) || GivesWay(other_state, level);
}

}  // namespace tarvendo
