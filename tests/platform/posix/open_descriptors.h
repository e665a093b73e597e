#pragma once

#include <cstddef>
#include <filesystem>
#include <iterator>

namespace tarvendo {

/// How many descriptors this process has open, the one that looks included.
inline std::ptrdiff_t OpenDescriptors() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

}  // namespace tarvendo
