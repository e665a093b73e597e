#pragma once

#include <string>

namespace tarvendo {

class Tourney;

/// What the program ends with.
enum ExitCode : int {
  kAllPlayed = 0,     ///< every game has a result; also --help and --version
  kAsEver = 1,        ///< nobody has asked for a code; or an error of the program's own
  kRefused = 2,       ///< what was asked for makes no sense or cannot be read
  kNotAllPlayed = 3,  ///< some game has no result, or the runner stopped itself
  kEndedByUser = 4,   ///< Ctrl-C, or a signal
};

/// What is missing when the runner has nothing left to do, a line for each of it; empty when every
/// game has a result. Missing are: games without a result, rounds that a Swiss tourney still has to
/// pair, all of it when there are no games, and a runner that is on when it has stopped itself.
/// `is_saved`: AutoSave is off, or the last save went well.
std::string WhatIsMissing(const Tourney& tourney, bool is_saved);

/// How a run has ended.
enum class RunEnd {
  kDone,   ///< the runner had nothing left to do
  kAsked,  ///< the process was asked to end
  kFault,  ///< an error of the program's own
};

/// The code of a run that ended in that way, with `missing` from WhatIsMissing.
ExitCode CodeOf(RunEnd end, const std::string& missing);

}  // namespace tarvendo
