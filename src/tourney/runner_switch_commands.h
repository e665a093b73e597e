#pragma once

namespace tarvendo {

class Tourney;

/// Switches the runner on or off and says so. A game that is being played is finished and collected
/// first.
void StartRunner(Tourney& tourney);
void StopRunner(Tourney& tourney);

/// Sets when the runner goes on or off by itself (seconds since the epoch) and says so; 0 clears
/// the time and prints nothing.
void SetStartTime(Tourney& tourney, long long time);
void SetStopTime(Tourney& tourney, long long time);

/// Prints "Runner status: RUNNING\n" or "... STOPPED\n" and the times that are set, the earlier one
/// first (the stop time when they are equal).
void ShowRunnerStatus(const Tourney& tourney);

}  // namespace tarvendo
