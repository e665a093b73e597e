#include "platform/doorbell.h"

#include <windows.h>

#include <algorithm>
#include <array>

#include "platform/windows/handle.h"
#include "platform/windows/termination.h"

namespace tarvendo {
namespace {

/// The span as the host takes it; a shorter one than was asked for where that has no room.
DWORD WaitSpan(std::chrono::milliseconds span) {
  if (span == Doorbell::kForEver) return INFINITE;
  constexpr std::chrono::milliseconds::rep kMost = 3600000;
  return static_cast<DWORD>(std::clamp<std::chrono::milliseconds::rep>(span.count(), 0, kMost));
}

class EventDoorbell : public Doorbell {
 public:
  void Ring() override { SetEvent(event_.Get()); }

  void Await(std::chrono::milliseconds span) override {
    const std::array<HANDLE, 2> sources = {event_.Get(), TerminationEvent()};
    WaitForMultipleObjects(2, sources.data(), FALSE, WaitSpan(span));
  }

 private:
  Handle event_{CreateEventA(nullptr, FALSE, FALSE, nullptr)};
};

}  // namespace

std::unique_ptr<Doorbell> MakeDoorbell() {
  return std::make_unique<EventDoorbell>();
}

}  // namespace tarvendo
