#include "runner/runner_timer.h"

#include <mutex>

#include "platform/clock.h"
#include "runner/runner_switch_commands.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

constexpr std::chrono::milliseconds kTimerInterval{2000};

}  // namespace

std::chrono::milliseconds RunnerTimer::Pass() {
  // Under the lock no game begins before its start has been told, and no time comes before it has
  // been set.
  const std::lock_guard lock(tourney_.Lock());
  const long long now = tourney_.GetHost().clock.Now();
  if (tourney_.Switch().TakeStartTime(now)) {
    StartRunner(tourney_);
  } else if (tourney_.Switch().TakeStopTime(now)) {
    StopRunner(tourney_);
  }
  return kTimerInterval;
}

}  // namespace tarvendo
