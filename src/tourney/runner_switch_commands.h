#pragma once

namespace tarvendo {

class Tourney;

/// Moves the switch of the runner and says so. The runner itself sees it at its next step; when it
/// goes off, a game that is being played is finished and collected first.
void SwitchRunnerOn(Tourney& tourney);
void SwitchRunnerOff(Tourney& tourney);

/// Sets when the runner goes on or off by itself (seconds since the epoch) and says so; 0 clears
/// the time and prints nothing.
void SetStartTime(Tourney& tourney, long long time);
void SetStopTime(Tourney& tourney, long long time);

/// Prints "Runner status: RUNNING\n" or "... STOPPED\n" and the times that are set, the earlier one
/// first (the stop time when they are equal).
void ShowRunnerStatus(const Tourney& tourney);

}  // namespace tarvendo
