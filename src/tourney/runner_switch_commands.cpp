#include "tourney/runner_switch_commands.h"

#include "base/log.h"
#include "platform/clock.h"
#include "tourney/tourney.h"

namespace tarvendo {

void SwitchRunnerOn(Tourney& tourney) {
  tourney.ChangeSwitch()->SetRunning(true);
  Print("\n***************\nRunner started.\n***************\n> ");
}

void SwitchRunnerOff(Tourney& tourney) {
  tourney.ChangeSwitch()->SetRunning(false);
  Print("\n***************\nRunner stopped.\n***************\n> ");
}

void SetStartTime(Tourney& tourney, long long time) {
  tourney.ChangeSwitch()->SetStartTime(time);
  if (time != 0) PrintText("Start time set to " + LocalTimeText(time));
}

void SetStopTime(Tourney& tourney, long long time) {
  tourney.ChangeSwitch()->SetStopTime(time);
  if (time != 0) PrintText("Stop time set to " + LocalTimeText(time));
}

void ShowRunnerStatus(const Tourney& tourney) {
  const RunnerSwitch::State& state = tourney.Switch().Get();
  const std::string start =
      state.start_time != 0 ? "Start time: " + LocalTimeText(state.start_time) : "";
  const std::string stop =
      state.stop_time != 0 ? "Stop time:  " + LocalTimeText(state.stop_time) : "";
  const bool start_is_first = state.start_time < state.stop_time;
  PrintText(std::string("Runner status: ") + (state.running != 0 ? "RUNNING\n" : "STOPPED\n") +
            (start_is_first ? start + stop : stop + start));
}

}  // namespace tarvendo
