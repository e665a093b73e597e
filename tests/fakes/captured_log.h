#pragma once

#include <mutex>
#include <string>
#include <utility>

#include "base/log.h"
#include "fakes/manual_clock.h"
#include "fakes/memory_file_system.h"
#include "fakes/scripted_processes.h"
#include "fakes/scripted_watches.h"
#include "platform/host.h"

namespace tarvendo {

/// A whole made-up machine with a log on it: while it lives it is TheLog, and what the program
/// prints is collected here. Declared first in a test or a fixture, before everything that uses its
/// host.
class CapturedLog {
 public:
  CapturedLog()
      : processes(files),
        host{files, processes, clock, watches},
        log(
            host, [this](const std::string& text) { Collect(console_, text); },
            [this](const std::string& text) { Collect(errors_, text); }),
        before_(std::exchange(TheLog, &log)) {}
  ~CapturedLog() { TheLog = before_; }
  CapturedLog(const CapturedLog&) = delete;
  CapturedLog& operator=(const CapturedLog&) = delete;

  /// What has been printed on the console since the last call.
  std::string TakeOutput() { return Take(console_); }

  /// The same for standard error.
  std::string TakeErrors() { return Take(errors_); }

  MemoryFileSystem files;
  ScriptedProcesses processes;
  ManualClock clock;
  ScriptedWatches watches;
  Host host;
  Log log;

 private:
  void Collect(std::string& to, const std::string& text) {
    const std::lock_guard guard(mutex_);
    to += text;
  }

  std::string Take(std::string& from) {
    const std::lock_guard guard(mutex_);
    return std::exchange(from, std::string());
  }

  Log* before_;
  std::mutex mutex_;
  std::string console_;
  std::string errors_;
};

}  // namespace tarvendo
