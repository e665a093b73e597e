#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/clock.h"
#include "platform/files.h"
#include "platform/host.h"
#include "platform/processes.h"

namespace tarvendo {

/// A command line that runs beside this program and whose output is read when it has ended: a
/// scheduler that does not answer keeps nobody waiting. Used by one thread.
class AsideCommand {
 public:
  /// The output goes to `output_file` until it is read. The lock, when there is one, is held until
  /// the command has ended.
  AsideCommand(const Host& host, const std::string& line, std::string output_file,
               std::unique_ptr<LockedFile> lock);
  /// A command that still runs goes on, and its output stays.
  ~AsideCommand() = default;
  AsideCommand(const AsideCommand&) = delete;
  AsideCommand& operator=(const AsideCommand&) = delete;

  /// True also for a command that could not be started; it has no output.
  bool HasEnded() const;

  TimePoint Started() const { return started_; }

  /// The whole output of a command that has ended. Its file is deleted.
  std::string TakeOutput();

  /// Ends it, with all that it has started.
  void End();

 private:
  Host host_;
  std::string output_file_;
  std::optional<BatchId> process_;
  TimePoint started_;
};

}  // namespace tarvendo
