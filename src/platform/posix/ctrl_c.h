#pragma once

#include <cstdint>

namespace tarvendo {

/// What the key Ctrl-C does. SIGINT from another program always asks this one to end.
enum class CtrlC {
  kEndsProgram,  ///< the process is asked to end
  kClearsLine,   ///< what waits for input is told; twice within a second: the process is asked
  kEndsCommand,  ///< nothing: the command that was started gets the key too
};

/// Whether the key has any meaning but the first: while the keyboard of a terminal is read.
void FollowKeyRules(bool follow);

/// What the key means as long as this lives, when rules are followed.
class CtrlCMeans {
 public:
  explicit CtrlCMeans(CtrlC meaning);
  ~CtrlCMeans();
  CtrlCMeans(const CtrlCMeans&) = delete;
  CtrlCMeans& operator=(const CtrlCMeans&) = delete;

 private:
  CtrlC before_;
};

/// Called in the signal handler, when the key was pressed at that time (PressTime). False when the
/// process is to be asked to end.
bool TakeCtrlC(std::int64_t milliseconds);

/// Now, by a clock that nobody sets.
std::int64_t PressTime();

/// What has happened to the terminal since the last call, told by signals.
struct TerminalEvents {
  bool ctrl_c = false;    ///< the line is to be cleared
  bool stop = false;      ///< Ctrl-Z
  bool new_size = false;  ///< the window has another size
};
TerminalEvents TakeTerminalEvents();

/// A descriptor that can be read from while there are such events.
int TerminalEventDescriptor();

/// As long as this lives, Ctrl-Z and changes of the window's size are events.
class TerminalSignals {
 public:
  TerminalSignals();
  ~TerminalSignals();
  TerminalSignals(const TerminalSignals&) = delete;
  TerminalSignals& operator=(const TerminalSignals&) = delete;

  /// Stops the process, as Ctrl-Z does by itself; returns when it goes on.
  static void StopProcess();
};

}  // namespace tarvendo
