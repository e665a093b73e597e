#include "platform/processes.h"

#include <windows.h>

#include <array>
#include <cstdlib>
#include <utility>

#include "platform/faults.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/windows/batch_watch.h"
#include "platform/windows/child_process.h"
#include "platform/windows/command_line.h"
#include "platform/windows/handle.h"
#include "platform/windows/termination.h"

namespace tarvendo {
namespace {

std::string CommandProcessor() {
  const char* const name = std::getenv("COMSPEC");
  if (name != nullptr && *name != '\0') return name;
  std::array<char, MAX_PATH> directory{};
  GetSystemDirectoryA(directory.data(), static_cast<UINT>(directory.size()));
  return std::string(directory.data()) + "\\cmd.exe";
}

std::string PathOfChildren() {
  std::string path(GetEnvironmentVariableA("PATH", nullptr, 0), '\0');
  path.resize(GetEnvironmentVariableA("PATH", path.data(), static_cast<DWORD>(path.size())));
  return path;
}

Handle OpenOutput(const std::string& path) {
  return Handle(CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                            nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
}

void AwaitCommand(const Handle& child) {
  const std::array<HANDLE, 2> ends = {child.Get(), TerminationEvent()};
  WaitForMultipleObjects(2, ends.data(), FALSE, INFINITE);
  if (TerminationRequested()) throw Terminated("asked to end while a command is running");
}

class WindowsProcesses : public Processes {
 public:
  ShellOutcome RunShell(const std::string& line, const std::string& output) override {
    if (TerminationRequested()) throw Terminated("asked to end before a command was run");
    const Handle file = output.empty() ? Handle() : OpenOutput(output);
    if (!output.empty() && !file.IsOpen()) return ShellOutcome::kNoOutputFile;
    const Handle child =
        StartChild(ProcessorCommandLine(CommandProcessor(), line), {nullptr, file.Get()});
    if (!child.IsOpen()) return ShellOutcome::kNotStarted;
    AwaitCommand(child);
    return ShellOutcome::kRan;
  }

  std::optional<BatchId> StartBatch(const std::string& path, const LockedFile* lock) override {
    if (!OpenToRead(path).IsOpen()) return std::nullopt;
    const Handle nothing = OpenToRead("NUL");
    const std::string line = ProcessorCommandLine(CommandProcessor(), QuotedWord(path));
    void* const handed_on = lock == nullptr ? nullptr : reinterpret_cast<void*>(lock->HostHandle());
    Handle job(CreateJobObjectA(nullptr, nullptr));
    Handle child = StartChildAlone(line, {nothing.Get(), nullptr}, handed_on, job.Get());
    if (!child.IsOpen()) return std::nullopt;
    return batches_.Add(std::move(child), std::move(job));
  }

  std::optional<BatchId> StartShell(const std::string& /*line*/, const std::string& /*output*/,
                                    const LockedFile* /*lock*/) override {
    return std::nullopt;
  }

  std::optional<BatchId> StartSteps(const std::vector<BatchStep>& /*steps*/) override {
    return std::nullopt;
  }

  bool IsRunning(BatchId batch) override { return batches_.IsRunning(batch); }

  void EndBatch(BatchId batch) override { batches_.End(batch); }

  void EndHolders(const std::string& /*lock_path*/) override {}

  void SetEndListener(std::function<void()> on_end) override {
    batches_.SetListener(std::move(on_end));
  }

  std::string ShellWords(const std::vector<std::string>& words) override {
    std::string line;
    for (const std::string& word : words) {
      if (!line.empty()) line += ' ';
      line += QuotedWord(word);
    }
    return line;
  }

 private:
  BatchWatch batches_;
};

}  // namespace

std::unique_ptr<Processes> MakeProcesses() {
  return std::make_unique<WindowsProcesses>();
}

bool KnowsSchedulers() {
  return false;
}

void PrepareChildEnvironment() {
  // A standard stream that is closed is none here: nothing else gets its place.
  const std::string path = PathOfChildren();
  const std::string directory = ExecutableDirectory();
  SetEnvironmentVariableA("PATH",
                          path.empty() ? directory.c_str() : (path + ";" + directory).c_str());
}

}  // namespace tarvendo
