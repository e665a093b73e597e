#pragma once

#include <string>

#include "platform/files.h"

namespace tarvendo {

/// FileSystem::Lock and IsLocked.
LockAttempt LockHostFile(const std::string& path);
bool IsHostFileLocked(const std::string& path);

}  // namespace tarvendo
