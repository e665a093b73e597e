#pragma once

#include <chrono>
#include <memory>

namespace tarvendo {

/// Lets the console thread sleep until another thread rings, or the process is asked to end. No
/// processor time is used meanwhile, and no signal is missed.
class Doorbell {
 public:
  virtual ~Doorbell() = default;

  /// Wakes the one who waits, or lets his next wait return at once. Any thread.
  virtual void Ring() = 0;

  static constexpr std::chrono::milliseconds kForEver = std::chrono::milliseconds::max();

  /// Waits for a ring that no wait has answered yet, until the process is asked to end (faults.h,
  /// TerminationRequested), or for `span` of real time, whatever comes first.
  virtual void Await(std::chrono::milliseconds span) = 0;
};

std::unique_ptr<Doorbell> MakeDoorbell();

}  // namespace tarvendo
