#include "platform/windows/child_process.h"

#include <windows.h>

#include <mutex>

namespace tarvendo {
namespace {

/// A copy of a handle that child processes get.
Handle Inheritable(HANDLE handle) {
  HANDLE copy = nullptr;
  const HANDLE self = GetCurrentProcess();
  if (DuplicateHandle(self, handle, self, &copy, 0, TRUE, DUPLICATE_SAME_ACCESS) == 0) {
    return Handle();
  }
  return Handle(copy);
}

HANDLE Given(void* handle, DWORD standard) {
  return handle != nullptr ? handle : GetStdHandle(standard);
}

}  // namespace

Handle StartChild(std::string command_line, const ChildStreams& streams, bool alone) {
  // A child gets every handle that can be had at its start, so only one is started at a time.
  static std::mutex one_at_a_time;
  const std::lock_guard<std::mutex> lock(one_at_a_time);
  const Handle input = Inheritable(Given(streams.input, STD_INPUT_HANDLE));
  const Handle output = Inheritable(Given(streams.output, STD_OUTPUT_HANDLE));
  const Handle error = Inheritable(GetStdHandle(STD_ERROR_HANDLE));
  STARTUPINFOA startup{};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = input.Get();
  startup.hStdOutput = output.Get();
  startup.hStdError = error.Get();
  const DWORD flags = alone ? CREATE_NEW_PROCESS_GROUP : 0;
  PROCESS_INFORMATION process{};
  if (CreateProcessA(nullptr, command_line.data(), nullptr, nullptr, TRUE, flags, nullptr, nullptr,
                     &startup, &process) == 0) {
    return Handle();
  }
  CloseHandle(process.hThread);
  return Handle(process.hProcess);
}

}  // namespace tarvendo
