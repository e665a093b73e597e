#include "platform/windows/watchdog.h"

#include <windows.h>

#include <algorithm>
#include <atomic>

#include "platform/faults.h"
#include "platform/windows/handle.h"

namespace tarvendo {
namespace {

/// What the thread waits for. It lives as long as the process, like the thread.
struct Watchdog {
  void* armed = CreateEventA(nullptr, FALSE, FALSE, nullptr);
  std::atomic<DWORD> milliseconds{INFINITE};
};

/// Sleeps until it is armed, and ends the process unless it has ended by itself in time.
DWORD WINAPI Watch(void* parameter) {
  const auto* const watchdog = static_cast<Watchdog*>(parameter);
  // Armed again, it counts anew.
  while (WaitForSingleObject(watchdog->armed, watchdog->milliseconds) == WAIT_OBJECT_0) {
  }
  TerminateProcess(GetCurrentProcess(), 1);
  return 0;
}

Watchdog& TheWatchdog() {
  static Watchdog watchdog;
  static const Handle thread(CreateThread(nullptr, 0, Watch, &watchdog, 0, nullptr));
  return watchdog;
}

}  // namespace

void PrepareWatchdog() {
  TheWatchdog();
}

void EndProcessAfter(unsigned seconds) {
  Watchdog& watchdog = TheWatchdog();
  watchdog.milliseconds = std::clamp(seconds, 1U, 1000000U) * 1000;
  SetEvent(watchdog.armed);
}

}  // namespace tarvendo
