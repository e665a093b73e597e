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
/// started. With `alone`, the keys that end this program (Ctrl-C) do not reach the child. Any
/// thread.
Handle StartChild(std::string command_line, const ChildStreams& streams, bool alone);

}  // namespace tarvendo
