#pragma once

#include <string>
#include <string_view>

#include "base/scores.h"

namespace tarvendo {

/// Adds a text that is UTF-8 to a page: whatever it holds, it is text there, and in the value of an
/// attribute too.
void AddText(std::string& html, std::string_view text);

/// Adds a name: as AddText, and a name that is written from right to left, or that holds marks for
/// directions, leaves what stands around it in its order.
void AddName(std::string& html, std::string_view name);

/// "3½", "0", "12".
std::string PointsForPeople(QuarterPoints points);

/// "+151", "−81", "0": Elo, with a real minus sign.
std::string EloForPeople(double elo);

/// "2:31", "1:02:03".
std::string DurationForPeople(int seconds);

}  // namespace tarvendo
