#include "platform/posix/ctrl_c.h"

#include <signal.h>
#include <time.h>

#include <atomic>

#include "platform/posix/wake_up.h"

namespace tarvendo {
namespace {

/// Who presses the key twice so quickly means it.
constexpr std::int64_t kTwice = 1000;  // milliseconds

// A signal handler reaches nothing but globals.
std::atomic<bool> follow_rules{false};
std::atomic<CtrlC> present_meaning{CtrlC::kEndsProgram};
std::atomic<std::int64_t> last_press{-kTwice};
std::atomic<bool> pressed{false};
std::atomic<bool> stop_wanted{false};
std::atomic<bool> size_changed{false};
std::atomic<const WakeUp*> alarm_clock{nullptr};
static_assert(std::atomic<std::int64_t>::is_always_lock_free);

const WakeUp& EventWakeUp() {
  static const WakeUp wake_up;
  alarm_clock = &wake_up;
  return wake_up;
}

void Note(std::atomic<bool>& event) {
  event = true;
  const WakeUp* const wake_up = alarm_clock;
  if (wake_up != nullptr) wake_up->Wake();
}

void OnStop(int /*signal*/) {
  Note(stop_wanted);
}

void OnNewSize(int /*signal*/) {
  Note(size_changed);
}

void Handle(int number, void (*handler)(int)) {
  struct sigaction action {};
  sigaction(number, nullptr, &action);
  if (action.sa_handler == SIG_IGN) return;  // A shell without job control wants it so.
  action = {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  sigaction(number, &action, nullptr);
}

}  // namespace

void FollowKeyRules(bool follow) {
  EventWakeUp();
  follow_rules = follow;
}

CtrlCMeans::CtrlCMeans(CtrlC meaning) : before_(present_meaning.exchange(meaning)) {}

CtrlCMeans::~CtrlCMeans() {
  present_meaning = before_;
}

std::int64_t PressTime() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<std::int64_t>(now.tv_sec) * 1000 + now.tv_nsec / 1000000;
}

bool TakeCtrlC(std::int64_t milliseconds) {
  if (!follow_rules || present_meaning == CtrlC::kEndsProgram) return false;
  if (present_meaning == CtrlC::kEndsCommand) return true;
  if (milliseconds - last_press.exchange(milliseconds) < kTwice) return false;
  Note(pressed);
  return true;
}

TerminalEvents TakeTerminalEvents() {
  EventWakeUp().Drain();
  return {pressed.exchange(false), stop_wanted.exchange(false), size_changed.exchange(false)};
}

int TerminalEventDescriptor() {
  return EventWakeUp().Get();
}

TerminalSignals::TerminalSignals() {
  Handle(SIGTSTP, OnStop);
  Handle(SIGWINCH, OnNewSize);
}

TerminalSignals::~TerminalSignals() {
  Handle(SIGTSTP, SIG_DFL);
  Handle(SIGWINCH, SIG_DFL);
}

void TerminalSignals::StopProcess() {
  Handle(SIGTSTP, SIG_DFL);
  raise(SIGTSTP);
  Handle(SIGTSTP, OnStop);
}

}  // namespace tarvendo
