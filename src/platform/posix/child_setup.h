#pragma once

#include <signal.h>
#include <spawn.h>
#include <sys/types.h>

#include <optional>

namespace tarvendo {

/// How a child process is started: with the signals as a fresh program expects them, and whatever
/// else is asked for.
class ChildSetup {
 public:
  ChildSetup();
  ~ChildSetup();
  ChildSetup(const ChildSetup&) = delete;
  ChildSetup& operator=(const ChildSetup&) = delete;

  /// The child finds the end when it reads its standard input.
  void ReadNothing();

  /// The child's standard input comes from `descriptor`.
  void ReadFrom(int descriptor);

  /// The child's standard output goes to `descriptor`.
  void WriteTo(int descriptor);

  /// The keys that end this program (Ctrl-C) do not reach the child.
  void LeaveProcessGroup();

  /// The child gets this descriptor of ours too, under its number.
  void HandOn(int descriptor);

  /// Starts the program arguments[0], looked for in PATH when it is a bare name. The array ends
  /// with a null pointer. Nothing when it could not be started.
  std::optional<pid_t> Spawn(char* const* arguments);

 private:
  posix_spawn_file_actions_t actions_;
  posix_spawnattr_t attributes_;
  short flags_;
};

/// Puts what this program has done to its signals back, in a child before it becomes another
/// program.
void ResetChildSignals();

/// Closes everything but the standard streams and `kept` (negative: nothing more), which the next
/// program gets as well; in a child, by system calls alone.
void CloseAllBut(int kept);

/// No signal is handled by this thread as long as it lives: between a fork and ResetChildSignals
/// the child would tell its parent about signals that were meant for the child.
class SignalsHeldBack {
 public:
  SignalsHeldBack();
  ~SignalsHeldBack() { Release(); }
  SignalsHeldBack(const SignalsHeldBack&) = delete;
  SignalsHeldBack& operator=(const SignalsHeldBack&) = delete;

  /// Earlier than the end of its life; in the child, which does not come to that end.
  void Release() const;

 private:
  sigset_t before_;
};

}  // namespace tarvendo
