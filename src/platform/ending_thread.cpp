#include "platform/ending_thread.h"

#include <atomic>
#include <thread>

#include "platform/faults.h"

namespace tarvendo {
namespace {

std::atomic<std::thread::id> ending_thread{};  ///< the only one that is ended; none: any

}  // namespace

void EndOnThisThread() {
  ending_thread = std::this_thread::get_id();
}

void EndOnAnyThread() {
  ending_thread = std::thread::id();
}

void EndWhenAsked() {
  if (!TerminationRequested()) return;
  const std::thread::id ending = ending_thread;
  const bool is_meant = ending == std::thread::id() || ending == std::this_thread::get_id();
  if (is_meant) throw Terminated("asked to end in the middle of a command");
}

}  // namespace tarvendo
