#include "runner/runner_timer.h"

#include "platform/clock.h"
#include "tourney/runner_switch_commands.h"
#include "tourney/shared_tourney.h"

namespace tarvendo {
namespace {

constexpr std::chrono::milliseconds kPollInterval{2000};

}  // namespace

std::chrono::milliseconds RunnerTimer::Pass() {
  // While it is held no game begins before its start has been told, and no time comes before it has
  // been set.
  const Hold hold = shared_.Take();
  const long long now = clock_.Now();
  if (hold->ChangeSwitch()->TakeStartTime(now)) {
    StartRunner(*hold);
  } else if (hold->ChangeSwitch()->TakeStopTime(now)) {
    StopRunner(*hold);
  }
  return kPollInterval;
}

}  // namespace tarvendo
