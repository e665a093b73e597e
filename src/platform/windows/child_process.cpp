#include "platform/windows/child_process.h"

#include <windows.h>

#include <mutex>
#include <utility>

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

struct Wishes {
  DWORD flags = 0;
  HANDLE handed_on = nullptr;
  HANDLE job = nullptr;
};

Handle Start(std::string command_line, const ChildStreams& streams, const Wishes& wishes) {
  // A child gets every handle that can be had at its start, so only one is started at a time.
  static std::mutex one_at_a_time;
  const std::lock_guard<std::mutex> lock(one_at_a_time);
  const Handle input = Inheritable(Given(streams.input, STD_INPUT_HANDLE));
  const Handle output = Inheritable(Given(streams.output, STD_OUTPUT_HANDLE));
  const Handle error = Inheritable(GetStdHandle(STD_ERROR_HANDLE));
  const Handle handed_on = wishes.handed_on == nullptr ? Handle() : Inheritable(wishes.handed_on);
  if (wishes.handed_on != nullptr && !handed_on.IsOpen()) return Handle();
  STARTUPINFOA startup{};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = input.Get();
  startup.hStdOutput = output.Get();
  startup.hStdError = error.Get();
  PROCESS_INFORMATION process{};
  if (CreateProcessA(nullptr, command_line.data(), nullptr, nullptr, TRUE,
                     wishes.flags | CREATE_SUSPENDED, nullptr, nullptr, &startup, &process) == 0) {
    return Handle();
  }
  // It fails where this program is in a job itself and the host is too old for one within another.
  if (wishes.job != nullptr) AssignProcessToJobObject(wishes.job, process.hProcess);
  ResumeThread(process.hThread);
  CloseHandle(process.hThread);
  return Handle(process.hProcess);
}

}  // namespace

Handle StartChild(std::string command_line, const ChildStreams& streams) {
  return Start(std::move(command_line), streams, {});
}

Handle StartChildAlone(std::string command_line, const ChildStreams& streams, void* handed_on,
                       void* job) {
  return Start(std::move(command_line), streams, {CREATE_NEW_PROCESS_GROUP, handed_on, job});
}

}  // namespace tarvendo
