#pragma once

#include <memory>
#include <string>

#include "platform/files.h"
#include "platform/posix/descriptor.h"

namespace tarvendo {

/// Opens a host path with a mode of fopen's; null when that is not possible.
std::unique_ptr<OutputFile> OpenStdioFile(const std::string& host_path, const char* mode);

/// Takes over an open file for writing. `lock` is kept open as long as the result lives. Null when
/// the host has no room for it.
std::unique_ptr<OutputFile> MakeStdioFile(Descriptor file, Descriptor lock);

}  // namespace tarvendo
