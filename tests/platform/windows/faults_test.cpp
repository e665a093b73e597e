#include "platform/faults.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <thread>

#include "platform/faulty_code.h"
#include "platform/input.h"
#include "platform/processes.h"

namespace tarvendo {
namespace {

using testing::ExitedWithCode;

// Whatever is told to a process stays told, so each of these tests is a process of its own.

[[noreturn]] void LeaveWhen(bool as_expected) {
  std::_Exit(as_expected ? 7 : 2);
}

bool KeyboardIsTerminated(InputStream& keyboard) {
  try {
    keyboard.Get();
    return false;
  } catch (const Terminated&) {
    return true;
  }
}

/// Makes a pipe the standard input, into which these bytes have been typed, and returns its other
/// end.
HANDLE Type(const std::string& typed) {
  HANDLE read_end = nullptr;
  HANDLE write_end = nullptr;
  DWORD count = 0;
  if (CreatePipe(&read_end, &write_end, nullptr, 0) == 0) std::_Exit(3);
  WriteFile(write_end, typed.data(), static_cast<DWORD>(typed.size()), &count, nullptr);
  SetStdHandle(STD_INPUT_HANDLE, read_end);
  return write_end;
}

void ReadKeyboardWhileAskedToEnd() {
  const FaultGuard guard;
  Type("a\r\n");
  bool as_expected = false;
  {
    const auto keyboard = OpenKeyboard();
    as_expected = keyboard->Get() == 'a' && keyboard->Get() == '\n';
    std::thread other(RequestTermination);
    as_expected = as_expected && KeyboardIsTerminated(*keyboard);
    other.join();
    as_expected = as_expected && KeyboardIsTerminated(*keyboard) && TerminationRequested();
  }
  LeaveWhen(as_expected);
}

TEST(WindowsFaultsDeathTest, ARequestToEndWakesTheKeyboard) {
  EXPECT_EXIT(ReadKeyboardWhileAskedToEnd(), ExitedWithCode(7), "");
}

/// What the host does when a key is pressed or the window is closed: a thread of its own tells the
/// process.
void TellConsoleEvent(DWORD event) {
  const auto routine =
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernelbase.dll"), "CtrlRoutine"));
  if (routine == nullptr) std::_Exit(3);
  CloseHandle(CreateThread(nullptr, 0, reinterpret_cast<LPTHREAD_START_ROUTINE>(routine),
                           reinterpret_cast<void*>(std::uintptr_t{event}), 0, nullptr));
}

void ReadKeyboardDuring(DWORD event) {
  const FaultGuard guard;
  Type("");
  const auto keyboard = OpenKeyboard();
  TellConsoleEvent(event);
  LeaveWhen(KeyboardIsTerminated(*keyboard));
}

TEST(WindowsFaultsDeathTest, KeysAndTheClosingOfTheWindowWakeTheKeyboard) {
  EXPECT_EXIT(ReadKeyboardDuring(CTRL_C_EVENT), ExitedWithCode(7), "");
  EXPECT_EXIT(ReadKeyboardDuring(CTRL_BREAK_EVENT), ExitedWithCode(7), "");
  EXPECT_EXIT(ReadKeyboardDuring(CTRL_CLOSE_EVENT), ExitedWithCode(7), "");
  EXPECT_EXIT(ReadKeyboardDuring(CTRL_LOGOFF_EVENT), ExitedWithCode(7), "");
  EXPECT_EXIT(ReadKeyboardDuring(CTRL_SHUTDOWN_EVENT), ExitedWithCode(7), "");
}

/// As long as the handler does not return, the host lets the process live.
void SaveAfterTheWindowWasClosed() {
  const FaultGuard guard;
  Type("");
  TellConsoleEvent(CTRL_CLOSE_EVENT);
  KeyboardIsTerminated(*OpenKeyboard());
  Sleep(500);
  LeaveWhen(true);
}

TEST(WindowsFaultsDeathTest, AClosedWindowLeavesTimeToSave) {
  EXPECT_EXIT(SaveAfterTheWindowWasClosed(), ExitedWithCode(7), "");
}

bool WasEndedByTheHost(int exit_code) {
  return exit_code != 2 && exit_code != 3 && exit_code != 7;
}

void PressTwice() {
  const FaultGuard guard;
  Type("");
  TellConsoleEvent(CTRL_C_EVENT);
  if (!KeyboardIsTerminated(*OpenKeyboard())) std::_Exit(2);
  TellConsoleEvent(CTRL_C_EVENT);
  Sleep(INFINITE);
}

TEST(WindowsFaultsDeathTest, ASecondKeyEndsTheProcessAtOnce) {
  EXPECT_EXIT(PressTwice(), WasEndedByTheHost, "");
}

void PressAfterTheGuard() {
  { const FaultGuard guard; }
  TellConsoleEvent(CTRL_C_EVENT);
  Sleep(INFINITE);
}

TEST(WindowsFaultsDeathTest, WithoutAGuardKeysDoWhatTheyDoByDefault) {
  EXPECT_EXIT(PressAfterTheGuard(), WasEndedByTheHost, "");
}

void ReadKeyboardToItsEnd() {
  CloseHandle(Type("ab"));
  const auto keyboard = OpenKeyboard();
  LeaveWhen(keyboard->Get() == 'a' && keyboard->Get() == 'b' && keyboard->Get() == -1 &&
            keyboard->Get() == -1);
}

TEST(WindowsFaultsDeathTest, TheEndOfTheInputStays) {
  EXPECT_EXIT(ReadKeyboardToItsEnd(), ExitedWithCode(7), "");
}

void RunACommandBesideTheKeyboard() {
  Type("mine\r\n");
  const auto keyboard = OpenKeyboard();
  const bool mine = keyboard->Get() == 'm';
  while (keyboard->Get() != '\n') {
  }
  LeaveWhen(mine && MakeProcesses()->RunShell("exit", "") == ShellOutcome::kRan);
}

TEST(WindowsFaultsDeathTest, ACommandIsRunWhileTheKeyboardIsOpen) {
  EXPECT_EXIT(RunACommandBesideTheKeyboard(), ExitedWithCode(7), "");
}

void RunACommandAfterARequest() {
  RequestTermination();
  try {
    MakeProcesses()->RunShell("exit", "");
    LeaveWhen(false);
  } catch (const Terminated&) {
    LeaveWhen(true);
  }
}

TEST(WindowsFaultsDeathTest, NoCommandIsRunAfterARequestToEnd) {
  EXPECT_EXIT(RunACommandAfterARequest(), ExitedWithCode(7), "");
}

void EndARunningCommand() {
  const FaultGuard guard;
  Type("");  // The command waits for input that never comes.
  std::thread other(RequestTermination);
  bool terminated = false;
  try {
    MakeProcesses()->RunShell("set /p x=", "");
  } catch (const Terminated&) {
    terminated = true;
  }
  other.join();
  LeaveWhen(terminated);
}

TEST(WindowsFaultsDeathTest, ARequestToEndDoesNotWaitForACommand) {
  EXPECT_EXIT(EndARunningCommand(), ExitedWithCode(7), "");
}

void HangAfterAFault() {
  const FaultGuard guard;
  EndProcessAfter(0);
  Sleep(INFINITE);
}

TEST(WindowsFaultsDeathTest, AnEmergencySaveThatHangsIsEnded) {
  EXPECT_EXIT(HangAfterAFault(), ExitedWithCode(1), "");
}

void EndBeforeTheDeadline() {
  const FaultGuard guard;
  EndProcessAfter(1000);
  LeaveWhen(true);
}

TEST(WindowsFaultsDeathTest, AProcessThatEndsInTimeIsNotHarmed) {
  EXPECT_EXIT(EndBeforeTheDeadline(), ExitedWithCode(7), "");
}

bool IsAccessViolation(int exit_code) {
  return static_cast<DWORD>(exit_code) == EXCEPTION_ACCESS_VIOLATION;
}

/// Ends the process with the code of its fault, before the host asks a debugger in.
LONG CALLBACK EndWithFault(EXCEPTION_POINTERS* /*exception*/) {
  return EXCEPTION_EXECUTE_HANDLER;
}

void FaultAfterAGuardedCall() {
  SetUnhandledExceptionFilter(EndWithFault);
  const FaultGuard guard;
  CallGuarded([] {});
  WriteNowhere();
}

TEST(WindowsFaultsDeathTest, AFaultOutsideEveryGuardedCallEndsTheProcess) {
  EXPECT_EXIT(FaultAfterAGuardedCall(), IsAccessViolation, "");
}

void AbortBesideAGuardedThread() {
  const FaultGuard guard;
  CallGuarded([] {
    std::thread unguarded([] { std::abort(); });
    unguarded.join();
  });
  LeaveWhen(true);
}

TEST(WindowsFaultsDeathTest, AnAbortOutsideEveryGuardedCallEndsTheProcess) {
  EXPECT_EXIT(AbortBesideAGuardedThread(), ExitedWithCode(3), "");
}

}  // namespace
}  // namespace tarvendo
