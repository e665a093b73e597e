#include "platform/processes.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <mutex>
#include <optional>

#include "platform/faults.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/posix/batch_child.h"
#include "platform/posix/child_setup.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/termination.h"

namespace tarvendo {
namespace {

/// Whether the child has ended; it is reaped then.
bool HasEnded(pid_t child) {
  int status = 0;
  pid_t ended = 0;
  do {
    ended = waitpid(child, &status, WNOHANG);
  } while (ended < 0 && errno == EINTR);
  return ended != 0;  // Its end, or an error: there is no such child any more.
}

/// Waits for the end of a command. No call of the host waits for a child and for the wish to end at
/// the same time, so the child is looked at again and again, the less often the longer it runs.
void AwaitCommand(pid_t child) {
  int milliseconds = 1;
  while (!HasEnded(child)) {
    pollfd termination{TerminationDescriptor(), POLLIN, 0};
    poll(&termination, 1, milliseconds);
    if (TerminationRequested()) throw Terminated("asked to end while a command is running");
    milliseconds = std::min(milliseconds + (milliseconds + 7) / 8, 50);
  }
}

/// The command processor that the user has set for batch files, if any.
std::string BatchProcessor() {
  const char* const name = std::getenv("COMSPEC");
  return name == nullptr ? "" : name;
}

std::string SearchPath() {
  const char* const path = std::getenv("PATH");
  return path == nullptr ? "/usr/local/bin:/usr/bin:/bin" : path;
}

std::optional<pid_t> SpawnBatchProcessor(std::string processor, const std::string& path) {
  ChildSetup setup;
  setup.ReadNothing();
  setup.LeaveProcessGroup();
  std::string option = "/c";
  std::string file = HostPath(path);
  const std::array<char*, 4> arguments = {processor.data(), option.data(), file.data(), nullptr};
  return setup.Spawn(arguments.data());
}

std::optional<pid_t> ForkBatch(const BatchChild& batch) {
  const Descriptor nothing = OpenToRead("/dev/null");
  const SignalsHeldBack held_back;
  const pid_t child = fork();
  if (child < 0) return std::nullopt;
  if (child == 0) {
    setpgid(0, 0);
    dup2(nothing.Get(), STDIN_FILENO);
    ResetChildSignals();
    held_back.Release();
    batch.Run();
  }
  return child;
}

std::string Quoted(const std::string& word) {
  std::string quoted = "'";
  for (const char c : word) {
    quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  }
  return quoted + "'";
}

class PosixProcesses : public Processes {
 public:
  ShellOutcome RunShell(const std::string& line, const std::string& output) override {
    if (TerminationRequested()) throw Terminated("asked to end before a command was run");
    ChildSetup setup;
    const Descriptor file(output.empty() ? -1 : OpenOutput(output));
    if (!output.empty() && !file.IsOpen()) return ShellOutcome::kNoOutputFile;
    if (file.IsOpen()) setup.WriteTo(file.Get());
    std::array<std::string, 4> words = {"/bin/sh", "-c", "--", line};
    const std::array<char*, 5> arguments = {words[0].data(), words[1].data(), words[2].data(),
                                            words[3].data(), nullptr};
    const std::optional<pid_t> child = setup.Spawn(arguments.data());
    if (!child) return ShellOutcome::kNotStarted;
    AwaitCommand(*child);
    return ShellOutcome::kRan;
  }

  bool StartBatch(const std::string& path) override {
    const std::lock_guard<std::mutex> lock(mutex_);
    Reap();
    const std::optional<std::string> text = MakeFileSystem()->ReadText(path);
    if (!text) return false;
    const std::string processor = BatchProcessor();
    if (!processor.empty()) return Remember(SpawnBatchProcessor(processor, path));
    const BatchChild batch(ParseBatch(*text), ExecutableDirectory(), SearchPath());
    return batch.IsEmpty() || Remember(ForkBatch(batch));
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
      line += Quoted(HostPath(word));
    }
    return line;
  }

 private:
  static int OpenOutput(const std::string& path) {
    return open(HostPath(path).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  }

  bool Remember(std::optional<pid_t> child) {
    if (child) running_.push_back(*child);
    return child.has_value();
  }

  void Reap() {
    running_.erase(std::remove_if(running_.begin(), running_.end(), HasEnded), running_.end());
  }

  std::mutex mutex_;
  std::vector<pid_t> running_;
};

}  // namespace

std::unique_ptr<Processes> MakeProcesses() {
  return std::make_unique<PosixProcesses>();
}

void PrepareChildEnvironment() {
  // A file that got the number of a closed standard stream would receive the console's text.
  while (true) {
    const int descriptor = open("/dev/null", O_RDWR);
    if (descriptor > STDERR_FILENO) close(descriptor);
    if (descriptor < 0 || descriptor > STDERR_FILENO) break;
  }
  const std::string directory = ExecutableDirectory();
  const std::string path = SearchPath() + ":" + directory.substr(0, directory.size() - 1);
  setenv("PATH", path.c_str(), 1);
}

}  // namespace tarvendo
