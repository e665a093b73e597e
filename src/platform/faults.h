#pragma once

#include <functional>
#include <stdexcept>

namespace tarvendo {

/// Thrown out of a wait for input or for a command when the process was asked to end (SIGTERM,
/// SIGHUP, Ctrl-C, a closed console window), when another thread has ended in a fault, or anything
/// else must bring the program down.
class Terminated : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Catches machine faults (access violation, division by zero, illegal instruction, abort) for as
/// long as it lives, and what asks the process to end: it then counts as requested
/// (TerminationRequested). SIGTERM or Ctrl-C a second time end the process at once. A fault signal
/// that is sent to the process counts as a fault of the console thread, whichever thread it
/// reaches. Also keeps a closed console from ending the process. One per process, made on the
/// console thread before any other thread.
class FaultGuard {
 public:
  FaultGuard();
  ~FaultGuard();
  FaultGuard(const FaultGuard&) = delete;
  FaultGuard& operator=(const FaultGuard&) = delete;
};

/// Calls `body` and catches everything that comes out of it: C++ exceptions of any kind and, while
/// a FaultGuard lives, machine faults on this thread. True when `body` returned. After a machine
/// fault the objects that `body` had on the stack are not destroyed and locks that it held stay
/// taken, so the caller does nothing but save what there is and end the program.
bool CallGuarded(const std::function<void()>& body);

/// Makes the console thread's present or next wait for keyboard input throw Terminated. Any thread.
void RequestTermination();

/// Whether the process was asked to end, by RequestTermination or from outside.
bool TerminationRequested();

/// Throws Terminated when the process was asked to end: what may take long calls it now and then,
/// where nothing is half done. While a FaultGuard lives it does so on the guard's thread only, the
/// console's: the runner's thread goes on to the end of what it does.
void EndWhenAsked();

/// Ends the process the hard way when the emergency save itself hangs (a fault inside the memory
/// allocator leaves its lock taken): after `seconds` (at least 1), with the exit code 1, unless the
/// program has ended by then.
void EndProcessAfter(unsigned seconds);

}  // namespace tarvendo
