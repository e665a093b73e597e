#include "platform/windows/child_process.h"

#include <windows.h>

#include <cstddef>
#include <mutex>
#include <vector>

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

/// What a process is told at its birth: to which job it belongs.
class BirthList {
 public:
  /// `job` must outlive this object.
  explicit BirthList(const HANDLE& job) {
    SIZE_T size = 0;
    InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
    memory_.resize(size);
    auto* const list = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(memory_.data());
    if (InitializeProcThreadAttributeList(list, 1, 0, &size) == 0) return;
    list_ = list;
    holds_job_ =
        UpdateProcThreadAttribute(list, 0, PROC_THREAD_ATTRIBUTE_JOB_LIST,
                                  const_cast<HANDLE*>(&job), sizeof(job), nullptr, nullptr) != 0;
  }
  ~BirthList() {
    if (list_ != nullptr) DeleteProcThreadAttributeList(list_);
  }
  BirthList(const BirthList&) = delete;
  BirthList& operator=(const BirthList&) = delete;

  /// Null where the host is too old for it.
  LPPROC_THREAD_ATTRIBUTE_LIST Get() const { return holds_job_ ? list_ : nullptr; }

 private:
  std::vector<std::byte> memory_;
  LPPROC_THREAD_ATTRIBUTE_LIST list_ = nullptr;
  bool holds_job_ = false;
};

Handle Create(std::string command_line, DWORD flags, STARTUPINFOEXA startup,
              LPPROC_THREAD_ATTRIBUTE_LIST list) {
  startup.lpAttributeList = list;
  startup.StartupInfo.cb = list == nullptr ? sizeof(startup.StartupInfo) : sizeof(startup);
  if (list != nullptr) flags |= EXTENDED_STARTUPINFO_PRESENT;
  PROCESS_INFORMATION process{};
  if (CreateProcessA(nullptr, command_line.data(), nullptr, nullptr, TRUE, flags, nullptr, nullptr,
                     &startup.StartupInfo, &process) == 0) {
    return Handle();
  }
  CloseHandle(process.hThread);
  return Handle(process.hProcess);
}

/// Whether the processes of the job end when this program does.
void BindToThisProgram(HANDLE job, bool binds) {
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags = binds ? JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE : 0;
  SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof(limits));
}

/// The host makes a process, and lets it run in a second step that this program takes: were it
/// killed between the two, the process would stand still for ever, and so would what was handed on
/// to it. So it ends with this program until it runs.
Handle CreateInJob(const std::string& command_line, const Wishes& wishes,
                   const STARTUPINFOEXA& startup) {
  if (wishes.job == nullptr) return Create(command_line, wishes.flags, startup, nullptr);
  const BirthList list(wishes.job);
  if (list.Get() != nullptr) {
    BindToThisProgram(wishes.job, true);
    Handle process = Create(command_line, wishes.flags, startup, list.Get());
    BindToThisProgram(wishes.job, false);
    if (process.IsOpen()) return process;
  }
  Handle process = Create(command_line, wishes.flags, startup, nullptr);
  // It fails where this program is in a job itself and the host is too old for one within another.
  if (process.IsOpen()) AssignProcessToJobObject(wishes.job, process.Get());
  return process;
}

Handle Start(const std::string& command_line, const ChildStreams& streams, const Wishes& wishes) {
  // A child gets every handle that can be had at its start, so only one is started at a time.
  static std::mutex one_at_a_time;
  const std::lock_guard<std::mutex> lock(one_at_a_time);
  const Handle input = Inheritable(Given(streams.input, STD_INPUT_HANDLE));
  const Handle output = Inheritable(Given(streams.output, STD_OUTPUT_HANDLE));
  const Handle error = Inheritable(GetStdHandle(STD_ERROR_HANDLE));
  const Handle handed_on = wishes.handed_on == nullptr ? Handle() : Inheritable(wishes.handed_on);
  if (wishes.handed_on != nullptr && !handed_on.IsOpen()) return Handle();
  STARTUPINFOEXA startup{};
  startup.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
  startup.StartupInfo.hStdInput = input.Get();
  startup.StartupInfo.hStdOutput = output.Get();
  startup.StartupInfo.hStdError = error.Get();
  return CreateInJob(command_line, wishes, startup);
}

}  // namespace

Handle StartChild(const std::string& command_line, const ChildStreams& streams) {
  return Start(command_line, streams, {});
}

Handle StartChildAlone(const std::string& command_line, const ChildStreams& streams,
                       void* handed_on, void* job) {
  return Start(command_line, streams, {CREATE_NEW_PROCESS_GROUP, handed_on, job});
}

}  // namespace tarvendo
