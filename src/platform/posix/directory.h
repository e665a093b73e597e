#pragma once

#include <dirent.h>

#include <memory>
#include <string>
#include <vector>

namespace tarvendo {

struct DirectoryCloser {
  void operator()(DIR* directory) const { closedir(directory); }
};

/// A directory that is being read; null when it cannot be.
using OpenedDirectory = std::unique_ptr<DIR, DirectoryCloser>;

/// FileSystem::PathsWithPrefix.
std::vector<std::string> HostPathsWithPrefix(const std::string& prefix);

}  // namespace tarvendo
