#include "platform/doorbell.h"

#include <windows.h>

#include <array>

#include "platform/windows/handle.h"
#include "platform/windows/termination.h"

namespace tarvendo {
namespace {

class EventDoorbell : public Doorbell {
 public:
  void Ring() override { SetEvent(event_.Get()); }

  void Await() override {
    const std::array<HANDLE, 2> sources = {event_.Get(), TerminationEvent()};
    WaitForMultipleObjects(2, sources.data(), FALSE, INFINITE);
  }

 private:
  Handle event_{CreateEventA(nullptr, FALSE, FALSE, nullptr)};
};

}  // namespace

std::unique_ptr<Doorbell> MakeDoorbell() {
  return std::make_unique<EventDoorbell>();
}

}  // namespace tarvendo
