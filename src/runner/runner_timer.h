#pragma once

#include <chrono>

namespace tarvendo {

class Clock;
class SharedTourney;

/// Switches the runner on and off at the times that the user has set. Used by the timer thread
/// only; a pass takes the tourney.
class RunnerTimer {
 public:
  RunnerTimer(SharedTourney& shared, Clock& clock) : shared_(shared), clock_(clock) {}

  /// Switches when a time has come, and clears it; at most one of the two a pass, the start first.
  /// Returns how long to wait until the next pass.
  std::chrono::milliseconds Pass();

 private:
  SharedTourney& shared_;
  Clock& clock_;
};

}  // namespace tarvendo
