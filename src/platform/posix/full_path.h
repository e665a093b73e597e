#pragma once

#include <string>

namespace tarvendo {

/// A host path made absolute against `current`, the directory as the operating system gives it. `.`
/// and doubled separators go; a `..` goes with the directory before it only as far as that one
/// belongs to `current`, since behind a symbolic link `..` is another directory than it looks.
std::string FullHostPath(const std::string& path, const std::string& current);

}  // namespace tarvendo
