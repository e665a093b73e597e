#pragma once

#include <string>

namespace tarvendo {

/// How long the engines may think.
struct TimeControl {
  int seconds = 60;  ///< base time of one time period
  int inc = 0;       ///< increment per move in seconds, 0 = none
  int mps = 0;       ///< moves per time period, 0 = the whole game

  bool operator==(const TimeControl&) const = default;
};

/// Reads "moves time increment", the time as minutes or minutes:seconds. What is missing or
/// unreadable is 0; a number out of range becomes the nearest one in it.
///
///     "40 2:30 5" is 40 moves in 150 seconds, 5 seconds for each move; "0 5 0" is 300 seconds for
///     the game
TimeControl ParseTimeControl(const std::string& text);

}  // namespace tarvendo
