#pragma once

#include <string>

namespace tarvendo {

/// Points, Buchholz and Sonneborn-Berger are counted in quarters of a point: a win is 4, a draw 2.
using QuarterPoints = int;

inline constexpr QuarterPoints kWinPoints = 4;
inline constexpr QuarterPoints kDrawPoints = 2;

/// "3.5" for 14 or 15 quarters, "3.0" for 12 or 13: points and Buchholz, in whole and half points.
std::string HalfPointText(QuarterPoints score);

/// "10.75" for 43 quarters, ".00" for none: Sonneborn-Berger.
std::string QuarterPointText(QuarterPoints score);

/// "7.75", "7.5", "7.25", "7.0": the Buchholz column of the tables, whose endings are not all
/// alike.
std::string BuchholzColumnText(QuarterPoints score);

}  // namespace tarvendo
