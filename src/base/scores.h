#pragma once

#include <string>

namespace tarvendo {

/// Points, Buchholz and Sonneborn-Berger are counted in quarters of a point: a win is 4, a draw 2.
using QuarterPoints = int;

inline constexpr QuarterPoints kWinPoints = 4;
inline constexpr QuarterPoints kDrawPoints = 2;

/// How many whole points these are.
constexpr int WholePoints(QuarterPoints score) {
  return score / kWinPoints;
}

/// Whether half a point stands behind the whole ones; a quarter beyond that counts for nothing.
constexpr bool HasHalfPoint(QuarterPoints score) {
  return (static_cast<unsigned>(score) & 2U) != 0;
}

/// 3.25 for 13 quarters.
constexpr double InPoints(QuarterPoints score) {
  return score / double{kWinPoints};
}

/// "3.5" for 14 or 15 quarters, "3.0" for 12 or 13: points and Buchholz, in whole and half points.
std::string HalfPointText(QuarterPoints score);

/// "10.75" for 43 quarters, ".00" for none: Sonneborn-Berger.
std::string QuarterPointText(QuarterPoints score);

/// "7.75", "7.5", "7.25", "7.0": the Buchholz column of the tables, whose endings are not all
/// alike.
std::string BuchholzColumnText(QuarterPoints score);

}  // namespace tarvendo
