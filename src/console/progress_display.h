#pragma once

#include <chrono>
#include <functional>

#include "console/progress.h"
#include "platform/clock.h"

namespace tarvendo {

class Outputs;

/// Shows the progress of a run while it is awaited: at a terminal one line drawn anew each second,
/// elsewhere a line a minute. Used by the console thread.
class ProgressDisplay {
 public:
  /// `count` looks at the tourney now; `columns` tells the terminal's width, 0 when there is none.
  ProgressDisplay(Clock& clock, Outputs& outputs, std::function<RunCounts()> count,
                  std::function<int()> columns);

  /// Shows how far the run is, but at the first call elsewhere than at a terminal. Returns when to
  /// call again.
  std::chrono::milliseconds Look();

  /// Takes the line away and says how far the run has come.
  void End();

 private:
  Clock& clock_;
  Outputs& outputs_;
  std::function<RunCounts()> count_;
  std::function<int()> columns_;
  Progress progress_;
  bool is_first_ = true;
};

}  // namespace tarvendo
