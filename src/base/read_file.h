#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "base/bounded_read.h"

namespace tarvendo {

class FileSystem;

/// The whole text of a file, CR LF folded to LF. Nothing when it cannot be opened and read, or when
/// it has more than `limit` bytes: "The file '%s' has more than %d megabytes, so it is not
/// read.\n".
std::optional<std::string> ReadFile(FileSystem& files, const std::string& path, std::size_t limit);

}  // namespace tarvendo
