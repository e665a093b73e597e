#pragma once

#include <string>

#include "platform/scratch_directory.h"

namespace tarvendo {

/// Makes a batch file (and what it needs) that runs as long as the file `awaited` is in the
/// directory, in a program that it has started. Returns its path.
std::string MakeWaitingBatch(const ScratchDirectory& directory, const std::string& awaited);

}  // namespace tarvendo
