#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tarvendo {

/// What a file system is told to do with its disk, and when it is told to see to it that it is
/// there.
enum class DiskStepKind {
  kName,         ///< `path` leads to `file` from now on: it was made, or takes the place of another
  kNoName,       ///< `path` leads nowhere
  kRename,       ///< `path` leads nowhere, and `to` leads to `file`, in one step
  kDirectory,    ///< `path` is a directory
  kNoDirectory,  ///< it is none any more
  kData,         ///< `bytes` is the whole content of `file`
  kDataSynced,   ///< the content of `file` is on the disk
  kNamesSynced,  ///< what was done so far to the names in the directory `path` is on the disk
};

struct DiskStep {
  DiskStepKind kind = DiskStepKind::kName;
  std::string path;
  std::string to;
  std::uint64_t file = 0;
  std::string bytes;
};

using DiskSteps = std::vector<DiskStep>;

}  // namespace tarvendo
