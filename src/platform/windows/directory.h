#pragma once

#include <string>
#include <vector>

namespace tarvendo {

/// FileSystem::PathsWithPrefix.
std::vector<std::string> HostPathsWithPrefix(const std::string& prefix);

}  // namespace tarvendo
