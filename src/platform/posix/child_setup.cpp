#include "platform/posix/child_setup.h"

#include <fcntl.h>
#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <limits>

namespace tarvendo {
namespace {

/// The C library of older systems has no function for it, Linux before 5.9 no such call.
void CloseRange(unsigned first, unsigned last) {
  constexpr unsigned kMost = 65536;
  if (syscall(SYS_close_range, first, last, 0) == 0) return;
  for (unsigned descriptor = first; descriptor <= std::min(last, kMost); ++descriptor) {
    close(static_cast<int>(descriptor));
  }
}

}  // namespace

ChildSetup::ChildSetup() : flags_(POSIX_SPAWN_SETSIGDEF) {
  posix_spawn_file_actions_init(&actions_);
  posix_spawnattr_init(&attributes_);
  // Signals with a handler go back by themselves, what is ignored stays ignored.
  sigset_t restored;
  sigemptyset(&restored);
  sigaddset(&restored, SIGPIPE);
  posix_spawnattr_setsigdefault(&attributes_, &restored);
}

ChildSetup::~ChildSetup() {
  posix_spawn_file_actions_destroy(&actions_);
  posix_spawnattr_destroy(&attributes_);
}

void ChildSetup::ReadNothing() {
  posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
}

void ChildSetup::ReadFrom(int descriptor) {
  posix_spawn_file_actions_adddup2(&actions_, descriptor, STDIN_FILENO);
}

void ChildSetup::WriteTo(int descriptor) {
  posix_spawn_file_actions_adddup2(&actions_, descriptor, STDOUT_FILENO);
}

void ChildSetup::LeaveProcessGroup() {
  posix_spawnattr_setpgroup(&attributes_, 0);
  flags_ = static_cast<short>(flags_ | POSIX_SPAWN_SETPGROUP);
}

void ChildSetup::HandOn(int descriptor) {
  // A descriptor that is copied to itself is no longer closed when the program is started.
  posix_spawn_file_actions_adddup2(&actions_, descriptor, descriptor);
}

std::optional<pid_t> ChildSetup::Spawn(char* const* arguments) {
  posix_spawnattr_setflags(&attributes_, flags_);
  pid_t child = 0;
  if (posix_spawnp(&child, arguments[0], &actions_, &attributes_, arguments, environ) != 0) {
    return std::nullopt;
  }
  return child;
}

void ResetChildSignals() {
  constexpr std::array kHandled = {SIGSEGV, SIGBUS, SIGFPE,  SIGILL,  SIGABRT, SIGTERM,
                                   SIGHUP,  SIGINT, SIGALRM, SIGTSTP, SIGWINCH};
  for (const int number : kHandled) {
    struct sigaction action {};
    sigaction(number, nullptr, &action);
    if (action.sa_handler != SIG_IGN) signal(number, SIG_DFL);
  }
  signal(SIGPIPE, SIG_DFL);
}

void CloseAllBut(int kept) {
  constexpr unsigned kFirst = STDERR_FILENO + 1;
  if (kept < static_cast<int>(kFirst)) {
    CloseRange(kFirst, std::numeric_limits<unsigned>::max());
    return;
  }
  const auto number = static_cast<unsigned>(kept);
  if (number > kFirst) CloseRange(kFirst, number - 1);
  CloseRange(number + 1, std::numeric_limits<unsigned>::max());
  fcntl(kept, F_SETFD, 0);
}

SignalsHeldBack::SignalsHeldBack() {
  sigset_t all;
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, &before_);
}

void SignalsHeldBack::Release() const {
  pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

}  // namespace tarvendo
