#pragma once

#include <chrono>

namespace tarvendo {

class Tourney;

/// Switches the runner on and off at the times that the user has set. Used by the timer thread
/// only; a pass takes the tourney's lock.
class RunnerTimer {
 public:
  explicit RunnerTimer(Tourney& tourney) : tourney_(tourney) {}

  /// Switches when a time has come, and clears it; at most one of the two a pass, the start first.
  /// Returns how long to wait until the next pass.
  std::chrono::milliseconds Pass();

 private:
  Tourney& tourney_;
};

}  // namespace tarvendo
