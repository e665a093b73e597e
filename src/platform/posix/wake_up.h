#pragma once

#include "platform/posix/descriptor.h"

namespace tarvendo {

/// Wakes a thread that polls. Any thread.
class WakeUp {
 public:
  WakeUp();

  /// False when the host has no descriptor left to give: nobody can be woken then.
  bool IsOpen() const { return event_.IsOpen(); }

  /// What the thread polls; readable from a call of Wake to the next of Drain.
  int Get() const { return event_.Get(); }

  void Wake() const;
  void Drain() const;

 private:
  Descriptor event_;
};

}  // namespace tarvendo
