#pragma once

#include <memory>
#include <mutex>
#include <string>

#include "platform/clock.h"
#include "platform/files.h"

namespace tarvendo {

/// The file of --log: what the console gets is added to it, with the local time before each line:
///
///     2026-11-22 01:23:45 Game 7 spooled.
///
/// Any thread may call it.
class TimedLog {
 public:
  /// Opens the file for adding, and makes it when it is missing.
  TimedLog(FileSystem& files, Clock& clock, const std::string& path);

  bool IsOpen() const { return file_ != nullptr; }

  /// Adds a text, which may be less or more than a line. False when it could not be written: what
  /// came before is there, and so may be what comes after.
  bool Write(const std::string& text);

  /// The same, but gives up when somebody is writing at this moment: for the end through a fault,
  /// whose thread may never come back.
  bool TryWrite(const std::string& text);

 private:
  bool Add(const std::string& text);

  Clock& clock_;
  std::mutex mutex_;  ///< guards what follows
  bool begins_inside_line_;
  std::unique_ptr<OutputFile> file_;
  bool is_line_begun_ = false;
};

}  // namespace tarvendo
