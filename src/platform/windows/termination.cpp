#include "platform/windows/termination.h"

#include <windows.h>

#include <atomic>

#include "platform/faults.h"

namespace tarvendo {
namespace {

// The host calls a console handler without any argument of ours.
std::atomic<bool> termination_requested{false};
std::atomic<bool> console_events_wanted{false};

BOOL WINAPI OnConsoleEvent(DWORD event) {
  const bool is_key = event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT;
  if (!console_events_wanted || (is_key && TerminationRequested())) return FALSE;
  RequestTermination();
  // After a closed window the process ends when this returns. When the program is ready before, its
  // end takes this thread along.
  if (!is_key) Sleep(4000);
  return TRUE;
}

}  // namespace

void* TerminationEvent() {
  static void* const event = CreateEventA(nullptr, TRUE, FALSE, nullptr);
  return event;
}

void HearConsoleEvents(bool wanted) {
  // Never taken back: the host may wait for a handler that runs, and that one may be waiting for
  // us.
  static const BOOL installed = SetConsoleCtrlHandler(OnConsoleEvent, TRUE);
  console_events_wanted = wanted && installed != 0;
}

void RequestTermination() {
  termination_requested = true;
  SetEvent(TerminationEvent());
}

bool TerminationRequested() {
  return termination_requested;
}

}  // namespace tarvendo
