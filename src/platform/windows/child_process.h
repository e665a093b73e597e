#pragma once

#include <string>

#include "platform/windows/handle.h"

namespace tarvendo {

/// Where a child's standard streams go; null: where the program's own go.
struct ChildStreams {
  void* input = nullptr;
  void* output = nullptr;
};

/// Starts a command line with these streams and returns the process, not open when it could not be
/// started. Any thread.
Handle StartChild(const std::string& command_line, const ChildStreams& streams);

/// The same for a child that goes its own way: the keys that end this program (Ctrl-C) do not reach
/// it, it gets `handed_on` (null: nothing) besides its streams, and it belongs to `job` (null: to
/// none) from its first step on, as far as the host lets it.
Handle StartChildAlone(const std::string& command_line, const ChildStreams& streams,
                       void* handed_on, void* job);

}  // namespace tarvendo
