#pragma once

#include <cstddef>
#include <string>

namespace tarvendo {

/// A path as it was typed, in the form that the operating system takes: on Linux `\` becomes `/`.
std::string HostPath(std::string path);

/// Whether a name has no directory in it: no `\` and, on Linux, no `/` either.
bool IsBareName(const std::string& name);

/// The position of the last path separator in a path as it was typed (`\`; on Linux `/` too), or
/// std::string::npos when there is none.
std::size_t LastSeparator(const std::string& path);

/// The running executable: a full path.
std::string ExecutablePath();

/// The directory in which the running executable lies, ending in its separator.
std::string ExecutableDirectory();

}  // namespace tarvendo
