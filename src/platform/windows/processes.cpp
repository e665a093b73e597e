#include "platform/processes.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <mutex>
#include <utility>

#include "platform/faults.h"
#include "platform/paths.h"
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

bool HasEnded(const std::unique_ptr<Handle>& child) {
  return WaitForSingleObject(child->Get(), 0) != WAIT_TIMEOUT;
}

class WindowsProcesses : public Processes {
 public:
  ShellOutcome RunShell(const std::string& line, const std::string& output) override {
    if (TerminationRequested()) throw Terminated("asked to end before a command was run");
    const Handle file = output.empty() ? Handle() : OpenOutput(output);
    if (!output.empty() && !file.IsOpen()) return ShellOutcome::kNoOutputFile;
    const Handle child =
        StartChild(ProcessorCommandLine(CommandProcessor(), line), {nullptr, file.Get()}, false);
    if (!child.IsOpen()) return ShellOutcome::kNotStarted;
    AwaitCommand(child);
    return ShellOutcome::kRan;
  }

  bool StartBatch(const std::string& path) override {
    const std::lock_guard<std::mutex> lock(mutex_);
    Reap();
    if (!OpenToRead(path).IsOpen()) return false;
    const Handle nothing = OpenToRead("NUL");
    const std::string line = ProcessorCommandLine(CommandProcessor(), QuotedWord(path));
    Handle child = StartChild(line, {nothing.Get(), nullptr}, true);
    if (!child.IsOpen()) return false;
    running_.push_back(std::make_unique<Handle>(std::move(child)));
    return true;
  }

  bool AnyBatchRunning() override {
    const std::lock_guard<std::mutex> lock(mutex_);
    Reap();
    return !running_.empty();
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
  void Reap() {
    running_.erase(std::remove_if(running_.begin(), running_.end(), HasEnded), running_.end());
  }

  std::mutex mutex_;
  std::vector<std::unique_ptr<Handle>> running_;
};

}  // namespace

std::unique_ptr<Processes> MakeProcesses() {
  return std::make_unique<WindowsProcesses>();
}

void PrepareChildEnvironment() {
  // A standard stream that is closed is none here: nothing else gets its place.
  const std::string path = PathOfChildren();
  const std::string directory = ExecutableDirectory();
  SetEnvironmentVariableA("PATH",
                          path.empty() ? directory.c_str() : (path + ";" + directory).c_str());
}

}  // namespace tarvendo
