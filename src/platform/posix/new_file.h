#pragma once

#include <string>

#include "platform/files.h"

namespace tarvendo {

/// FileSystem::CreateNew, for paths in the host's form.
NewFileAttempt MakeNewFile(const std::string& host_path, const std::string& model);

/// Waits until the names in the directory of `host_path` are on the disk. True also where the
/// directory may not be read or its file system has no such thing: nobody can do better there.
bool SyncDirectoryOf(const std::string& host_path);

}  // namespace tarvendo
