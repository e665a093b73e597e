#include "runner/runner_timer.h"

#include "platform/clock.h"
#include "runner/runner_switch_commands.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

constexpr std::chrono::milliseconds kPollInterval{2000};

bool HasCome(long long time, long long now) {
  return time != 0 && now >= time;
}

}  // namespace

std::chrono::milliseconds RunnerTimer::Pass() {
  const long long now = tourney_.GetHost().clock.Now();
  RunnerSwitch& runner_switch = tourney_.Switch();
  const RunnerSwitch::State state = runner_switch.Get();
  // Switched first and cleared then, so that nobody ever sees a start that is neither to come nor
  // done.
  if (HasCome(state.start_time, now)) {
    StartRunner(tourney_);
    runner_switch.TakeStartTime(now);
  } else if (HasCome(state.stop_time, now)) {
    StopRunner(tourney_);
    runner_switch.TakeStopTime(now);
  }
  return kPollInterval;
}

}  // namespace tarvendo
