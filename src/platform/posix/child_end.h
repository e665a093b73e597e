#pragma once

#include <sys/types.h>

namespace tarvendo {

/// Whether the child has ended; it is reaped then. True also when there is no such child any more.
bool HasEnded(pid_t child);

}  // namespace tarvendo
