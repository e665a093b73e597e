#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "platform/host.h"

namespace tarvendo {

class OutputFile;

/// One open log file.
class LogFile {
 public:
  /// Opens and empties the file.
  LogFile(FileSystem& files, std::string full_name);
  virtual ~LogFile();

  bool IsOpen() const { return stream_ != nullptr; }
  const std::string& Name() const { return name_; }

  void Write(const std::string& text);

  /// When the file has reached `limit` bytes, keeps about the newer half of it, but no more than
  /// kMostLogKept: what stands behind the first line end after the middle. The last line then
  /// stands there twice.
  void CutDown(std::int64_t limit);

 private:
  FileSystem& files_;
  std::string name_;
  std::unique_ptr<OutputFile> stream_;
};

/// Everything that the program tells the user: into each log file first, then to the console. Made
/// first and destroyed last by main, reached through TheLog. Any thread may call it; a message is
/// written whole, two threads never mix inside one.
class Log {
 public:
  using Sink = std::function<void(const std::string&)>;

  /// `console` and `error` take what goes to standard output and standard error.
  Log(Host& host, Sink console, Sink error);
  virtual ~Log();
  Log(const Log&) = delete;
  Log& operator=(const Log&) = delete;

  /// Adds a log file, emptying it; the name is made a full path first. True when it is in the list
  /// now, false when it could not be opened.
  bool AddFile(const std::string& name);

  /// Writes a message to every log file and to the console.
  void Write(const std::string& text);

  /// Writes a message to standard error only.
  void WriteError(const std::string& text);

  /// Writes a line to the log files only: what the user typed.
  void Echo(const std::string& line);

  /// Runs a line by the host's command processor and copies its standard output, by way of the file
  /// "tmpfile.$$$" in the current directory, to the log files and the console. The last line comes
  /// twice when it ends in a line feed. False, with a message on standard error, when the temporary
  /// file could not be made (the line has then been run without capture) or not be read back.
  bool RunShellCommand(const std::string& line);

  /// Deletes the temporary file of a command that an exception or a fault has broken off, if there
  /// is one. Called by the emergency exit, on the thread that ran the command.
  void DropShellOutput();

  /// Cuts the first log file down when it has reached `limit` bytes. Below 1 stands for 1048578;
  /// a limit below 2048 counts as 2048.
  void Housekeep(std::int64_t limit);

 private:
  /// Copies what another program has printed.
  void WriteOutput(const std::string& output);

  Host& host_;
  Sink console_;
  Sink error_;
  std::int64_t default_limit_ = 1048578;
  std::string shell_output_;  ///< of the command that is being run; used by the console thread only
  std::recursive_mutex mutex_;  ///< guards files_ and keeps messages whole
  std::vector<std::unique_ptr<LogFile>> files_;
};

/// The one log, set by main for as long as it lives; null before and after.
extern Log* TheLog;

/// Writes a formatted message through TheLog; nothing when there is none.
void Print(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// Writes a message as it stands to standard error, and to nothing else, through TheLog.
void PrintError(const std::string& text);

/// Writes a message as it stands through TheLog.
void PrintText(const std::string& text);

}  // namespace tarvendo
