#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "console/status_line.h"
#include "console/timed_log.h"
#include "platform/host.h"

namespace tarvendo {

/// Where the program's words go beside its own log: standard output and standard error, the file of
/// --log, and around the line of --progress. Made by the program's main part before the log, which
/// writes to it; any thread may write.
class Outputs {
 public:
  using Sink = std::function<void(const std::string&)>;

  /// `console` and `error` put a text on standard output and standard error. `shares_terminal`:
  /// both go to the same terminal.
  Outputs(Sink console, Sink error, bool shares_terminal)
      : console_(std::move(console)),
        error_(std::move(error)),
        shares_terminal_(shares_terminal),
        status_(error_) {}

  /// From now on everything is added to that file, too. False when it cannot be opened.
  bool AddTimedLog(Host& host, const std::string& path);

  void ToConsole(const std::string& text);
  void ToError(const std::string& text);

  /// Adds to the file what the emergency exit has put on the console by itself, unless another
  /// thread is writing to the file at this moment.
  void NoteInEmergency(const std::string& text);

  StatusLine& Status() { return status_; }

 private:
  void Note(const std::string& text);

  Sink console_;
  Sink error_;
  bool shares_terminal_;
  StatusLine status_;
  std::unique_ptr<TimedLog> timed_log_;
  std::once_flag told_;  ///< that the file takes nothing more
};

}  // namespace tarvendo
