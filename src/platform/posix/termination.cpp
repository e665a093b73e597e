#include "platform/posix/termination.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>

#include "platform/faults.h"

namespace tarvendo {
namespace {

// A signal handler reaches nothing but globals.
std::atomic<bool> termination_requested{false};
std::atomic<int> wake_end{-1};
static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<int>::is_always_lock_free);

/// Makes the pipe and returns the end that is waited on.
int MakeWakePipe() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return -1;
  wake_end = ends[1];
  return ends[0];
}

}  // namespace

int TerminationDescriptor() {
  static const int waited_on = MakeWakePipe();
  return waited_on;
}

void NoteTermination() {
  const int saved_error = errno;
  termination_requested = true;
  const char byte = 'T';
  // When the pipe is full, everybody is awake already.
  while (write(wake_end, &byte, 1) < 0 && errno == EINTR) {
  }
  errno = saved_error;
}

void RequestTermination() {
  TerminationDescriptor();
  NoteTermination();
}

bool TerminationRequested() {
  return termination_requested;
}

}  // namespace tarvendo
