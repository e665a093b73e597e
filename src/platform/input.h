#pragma once

#include <memory>
#include <string>

namespace tarvendo {

/// Bytes that come in one after the other: the keyboard, a script. Used by the console thread only.
class InputStream {
 public:
  virtual ~InputStream() = default;

  /// The next byte (0 to 255), or -1 at the end, which stays. Waits for it; when the process was
  /// asked to end and there is nothing left in the stream's own buffer, throws Terminated
  /// (faults.h). CR LF arrives as LF.
  virtual int Get() = 0;
};

/// Standard input.
std::unique_ptr<InputStream> OpenKeyboard();

/// A script file; null when it cannot be opened for reading (a directory cannot).
std::unique_ptr<InputStream> OpenScript(const std::string& path);

/// Writes to standard output (the console) and flushes; text passes untouched by code pages, line
/// feeds in the host's text form. What cannot be written is lost: there is nobody left to tell.
void WriteConsole(const std::string& text);

/// The same for standard error.
void WriteConsoleError(const std::string& text);

/// How many columns the terminal has that standard error goes to; 0 when it goes to none.
int ColumnsOfError();

/// Whether standard output goes to a terminal.
bool IsOutputTerminal();

}  // namespace tarvendo
