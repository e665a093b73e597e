#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/file_watch.h"

namespace tarvendo {

/// Notices about files for the tests: they come when the test says so, on its thread. Names are the
/// same when they are written the same, but that `\` is read as `/`. May be used from any thread.
class ScriptedWatches : public FileWatches {
 public:
  /// Whether the host gives notices at all: Watch returns null otherwise.
  bool gives_notices = true;

  std::unique_ptr<FileWatch> Watch(const std::string& path,
                                   std::function<void()> on_change) override {
    if (!gives_notices) return nullptr;
    return std::make_unique<Entry>(*this, WithSlashes(path), std::move(on_change));
  }

  /// Something has happened to the file: everybody who watches it is told.
  void Notify(const std::string& path) {
    const std::lock_guard guard(mutex_);
    for (const Entry* entry : entries_) {
      if (entry->path == WithSlashes(path)) entry->on_change();
    }
  }

  /// The files that are being watched now, each as often as it is, in the order of their names.
  std::vector<std::string> Watched() {
    const std::lock_guard guard(mutex_);
    std::vector<std::string> paths;
    for (const Entry* entry : entries_)
      paths.push_back(entry->path);
    std::sort(paths.begin(), paths.end());
    return paths;
  }

 private:
  struct Entry : FileWatch {
    Entry(ScriptedWatches& the_owner, std::string the_path, std::function<void()> the_notice)
        : owner(the_owner), path(std::move(the_path)), on_change(std::move(the_notice)) {
      const std::lock_guard guard(owner.mutex_);
      owner.entries_.insert(this);
    }
    ~Entry() override {
      const std::lock_guard guard(owner.mutex_);
      owner.entries_.erase(this);
    }
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;

    ScriptedWatches& owner;
    std::string path;
    std::function<void()> on_change;
  };

  static std::string WithSlashes(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
  }

  std::mutex mutex_;
  std::set<const Entry*> entries_;
};

}  // namespace tarvendo
