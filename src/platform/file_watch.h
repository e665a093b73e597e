#pragma once

#include <functional>
#include <memory>
#include <string>

namespace tarvendo {

/// One file that is being watched; destroying it ends that. No notice is under way any more when
/// the destructor has returned. It ends before the FileWatches that made it.
class FileWatch {
 public:
  virtual ~FileWatch() = default;
};

/// The host's notices about files. May be called from any thread. A notice can be lost, so whoever
/// watches keeps a deadline beside it.
class FileWatches {
 public:
  virtual ~FileWatches() = default;

  /// Calls `on_change` whenever the file of that name (which need not be there yet; its directory
  /// must) appears, is written to or goes, on a thread of the host's: it must be quick, must not
  /// block, and must neither end this watch nor begin or end another. Null where the host gives no
  /// notices: the caller looks by itself then.
  virtual std::unique_ptr<FileWatch> Watch(const std::string& path,
                                           std::function<void()> on_change) = 0;
};

std::unique_ptr<FileWatches> MakeFileWatches();

}  // namespace tarvendo
