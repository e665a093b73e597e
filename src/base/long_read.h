#pragma once

#include <cstddef>
#include <string>

#include "base/bounded_read.h"

namespace tarvendo {

class FileSystem;

/// As ReadUpTo, but throws Terminated when the process is asked to end meanwhile
/// (platform/faults.h). For the files that commands read, which may be large.
BoundedText ReadLongFile(FileSystem& files, const std::string& path, std::size_t limit);

}  // namespace tarvendo
