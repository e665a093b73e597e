#include "platform/faults.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <thread>

#include "platform/input.h"
#include "platform/processes.h"
#include "platform/scratch_directory.h"

namespace tarvendo {
namespace {

using testing::ExitedWithCode;
using testing::KilledBySignal;

// Whatever is told to a process stays told, so each of these tests is a process of its own.

[[noreturn]] void LeaveWhen(bool as_expected) {
  std::_Exit(as_expected ? 0 : 2);
}

bool KeyboardIsTerminated(InputStream& keyboard) {
  try {
    keyboard.Get();
    return false;
  } catch (const Terminated&) {
    return true;
  }
}

/// A keyboard at which these bytes have been typed so far.
std::unique_ptr<InputStream> KeyboardWith(const std::string& typed) {
  std::array<int, 2> ends{};
  const bool made = pipe(ends.data()) == 0 && dup2(ends[0], STDIN_FILENO) == STDIN_FILENO &&
                    write(ends[1], typed.data(), typed.size()) >= 0;
  if (!made) std::_Exit(3);
  return OpenKeyboard();
}

void ReadKeyboardWhileAskedToEnd() {
  const FaultGuard guard;
  const auto keyboard = KeyboardWith("a\r\n");
  const bool read = keyboard->Get() == 'a' && keyboard->Get() == '\n';
  std::thread other(RequestTermination);
  const bool terminated = KeyboardIsTerminated(*keyboard);
  other.join();
  LeaveWhen(read && terminated && TerminationRequested() && KeyboardIsTerminated(*keyboard));
}

TEST(PosixFaultsDeathTest, ARequestToEndWakesTheKeyboard) {
  EXPECT_EXIT(ReadKeyboardWhileAskedToEnd(), ExitedWithCode(0), "");
}

void ReadKeyboardAfterSignal(int number) {
  const FaultGuard guard;
  const auto keyboard = KeyboardWith("");
  kill(getpid(), number);
  LeaveWhen(KeyboardIsTerminated(*keyboard) && TerminationRequested());
}

TEST(PosixFaultsDeathTest, SignalsThatAskTheProcessToEndWakeTheKeyboard) {
  EXPECT_EXIT(ReadKeyboardAfterSignal(SIGTERM), ExitedWithCode(0), "");
  EXPECT_EXIT(ReadKeyboardAfterSignal(SIGHUP), ExitedWithCode(0), "");
  EXPECT_EXIT(ReadKeyboardAfterSignal(SIGINT), ExitedWithCode(0), "");
}

void RaiseTwice(int number) {
  const FaultGuard guard;
  raise(number);
  raise(number);
  LeaveWhen(TerminationRequested());
}

TEST(PosixFaultsDeathTest, ASecondRequestEndsTheProcessAtOnce) {
  EXPECT_EXIT(RaiseTwice(SIGTERM), KilledBySignal(SIGTERM), "");
  EXPECT_EXIT(RaiseTwice(SIGINT), KilledBySignal(SIGINT), "");
}

TEST(PosixFaultsDeathTest, AClosedTerminalMaySayItTwice) {
  EXPECT_EXIT(RaiseTwice(SIGHUP), ExitedWithCode(0), "");
}

void RaiseIgnored() {
  signal(SIGHUP, SIG_IGN);
  {
    const FaultGuard guard;
    raise(SIGHUP);
  }
  raise(SIGHUP);
  LeaveWhen(!TerminationRequested());
}

TEST(PosixFaultsDeathTest, WhatIsIgnoredFromTheStartStaysIgnored) {
  EXPECT_EXIT(RaiseIgnored(), ExitedWithCode(0), "");
}

void RaiseWithoutGuard() {
  { const FaultGuard guard; }
  raise(SIGTERM);
  LeaveWhen(true);
}

TEST(PosixFaultsDeathTest, WithoutAGuardSignalsDoWhatTheyDoByDefault) {
  EXPECT_EXIT(RaiseWithoutGuard(), KilledBySignal(SIGTERM), "");
}

void WriteToAClosedConsole() {
  const FaultGuard guard;
  std::array<int, 2> ends{};
  const bool made = pipe(ends.data()) == 0 && dup2(ends[1], STDOUT_FILENO) == STDOUT_FILENO;
  close(ends[0]);
  WriteConsole("nobody reads this\n");
  LeaveWhen(made);
}

TEST(PosixFaultsDeathTest, AClosedConsoleDoesNotEndTheProcess) {
  EXPECT_EXIT(WriteToAClosedConsole(), ExitedWithCode(0), "");
}

void RunACommandThatEndsTheProgram(const ScratchDirectory& directory) {
  const FaultGuard guard;
  const auto processes = MakeProcesses();
  const std::string wait = "until test -e " + processes->ShellWords({directory.File("go")});
  bool terminated = false;
  try {
    processes->RunShell("kill -TERM $PPID; " + wait + "; do sleep 0.01; done", "");
  } catch (const Terminated&) {
    terminated = true;
  }
  directory.Put("go", "");
  bool refused = false;
  try {
    processes->RunShell("exit", "");
  } catch (const Terminated&) {
    refused = true;
  }
  LeaveWhen(terminated && refused);
}

TEST(PosixFaultsDeathTest, ARequestToEndDoesNotWaitForACommand) {
  const ScratchDirectory directory;
  EXPECT_EXIT(RunACommandThatEndsTheProgram(directory), ExitedWithCode(0), "");
}

void FaultBesideAGuardedThread() {
  const FaultGuard guard;
  CallGuarded([] {
    std::thread unguarded([] { std::abort(); });
    unguarded.join();
  });
  LeaveWhen(true);
}

TEST(PosixFaultsDeathTest, AFaultOutsideEveryGuardedCallEndsTheProcess) {
  EXPECT_EXIT(FaultBesideAGuardedThread(), KilledBySignal(SIGABRT), "");
}

void FaultAfterAGuardedCall() {
  const FaultGuard guard;
  CallGuarded([] {});
  std::abort();
}

TEST(PosixFaultsDeathTest, AFaultAfterAGuardedCallEndsTheProcess) {
  EXPECT_EXIT(FaultAfterAGuardedCall(), KilledBySignal(SIGABRT), "");
}

/// Another process sends the signal to this one; it has done so when this returns.
void SendFromOutside(int number) {
  const pid_t sender = fork();
  if (sender == 0) _exit(kill(getppid(), number) == 0 ? 0 : 1);
  int status = 0;
  if (waitpid(sender, &status, 0) != sender || status != 0) std::_Exit(4);
}

void SetBlocked(int number, bool blocked) {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, number);
  pthread_sigmask(blocked ? SIG_BLOCK : SIG_UNBLOCK, &signals, nullptr);
}

/// A thread that does nothing. It waits in a system call, in which it takes signals even when the
/// thread sanitizer holds them back everywhere else.
class SleepingThread {
 public:
  SleepingThread() {
    if (pipe(ends_.data()) != 0) std::_Exit(3);
    thread_ = std::thread([this] {
      pollfd end{ends_[0], POLLIN, 0};
      while (poll(&end, 1, -1) < 0) {
      }
    });
  }

  void Join() {
    close(ends_[1]);
    thread_.join();
  }

 private:
  std::array<int, 2> ends_{};
  std::thread thread_;
};

bool ReachesThisThread(int number) {
  sigset_t pending;
  do {
    sigpending(&pending);
  } while (sigismember(&pending, number) == 0);
  return !CallGuarded([&] {
    SetBlocked(number, false);
    while (true) {
      pause();
    }
  });
}

/// The console thread takes no signals just now, so the other one gets it.
void SendToTheOtherThread(int number) {
  const FaultGuard guard;
  SleepingThread other;
  SetBlocked(number, true);
  SendFromOutside(number);
  const bool reached = ReachesThisThread(number);
  other.Join();
  LeaveWhen(reached);
}

TEST(PosixFaultsDeathTest, AFaultSignalFromOutsideIsMeantForTheConsoleThread) {
  for (const int number : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT})
    EXPECT_EXIT(SendToTheOtherThread(number), ExitedWithCode(0), "") << number;
}

void AskToEndThroughTheOtherThread() {
  const FaultGuard guard;
  const auto keyboard = KeyboardWith("");
  SleepingThread other;
  SetBlocked(SIGTERM, true);
  SendFromOutside(SIGTERM);
  const bool terminated = KeyboardIsTerminated(*keyboard);
  other.Join();
  LeaveWhen(terminated);
}

TEST(PosixFaultsDeathTest, ARequestToEndMayReachAnyThread) {
  EXPECT_EXIT(AskToEndThroughTheOtherThread(), ExitedWithCode(0), "");
}

void RaiseOnTheOtherThread() {
  const FaultGuard guard;
  bool caught_own = false;
  std::thread other([&] { caught_own = !CallGuarded([] { raise(SIGSEGV); }); });
  other.join();
  LeaveWhen(caught_own);
}

TEST(PosixFaultsDeathTest, ASignalThatAThreadSendsItselfIsItsOwnFault) {
  EXPECT_EXIT(RaiseOnTheOtherThread(), ExitedWithCode(0), "");
}

void HangAfterAFault() {
  const FaultGuard guard;
  EndProcessAfter(0);
  while (true) {
    pause();
  }
}

TEST(PosixFaultsDeathTest, AnEmergencySaveThatHangsIsEnded) {
  EXPECT_EXIT(HangAfterAFault(), ExitedWithCode(1), "");
}

void EndBeforeTheDeadline() {
  EndProcessAfter(1000);
  LeaveWhen(true);
}

TEST(PosixFaultsDeathTest, AProcessThatEndsInTimeIsNotHarmed) {
  EXPECT_EXIT(EndBeforeTheDeadline(), ExitedWithCode(0), "");
}

TEST(PosixKeyboardDeathTest, TheEndOfTheInputStays) {
  EXPECT_EXIT(
      {
        const FaultGuard guard;
        close(STDIN_FILENO);
        const auto keyboard = OpenKeyboard();
        LeaveWhen(keyboard->Get() == -1 && keyboard->Get() == -1);
      },
      ExitedWithCode(0), "");
}

}  // namespace
}  // namespace tarvendo
