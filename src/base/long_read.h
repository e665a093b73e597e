#pragma once

#include <cstddef>
#include <string>

#include "base/bounded_read.h"

namespace tarvendo {

class FileSystem;

/// As ReadUpTo, but throws Terminated when the process is asked to end meanwhile
/// (platform/faults.h): for a file that a command works on, which may be a large one.
BoundedText ReadLongFile(FileSystem& files, const std::string& path, std::size_t limit);

}  // namespace tarvendo
