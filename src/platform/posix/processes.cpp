#include "platform/processes.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <mutex>
#include <optional>
#include <utility>

#include "platform/faults.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/posix/batch_child.h"
#include "platform/posix/batch_watch.h"
#include "platform/posix/child_end.h"
#include "platform/posix/child_setup.h"
#include "platform/posix/ctrl_c.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/file_lock.h"
#include "platform/posix/termination.h"

namespace tarvendo {
namespace {

/// What is to end with its batch file gets so long to do it by itself.
constexpr std::chrono::milliseconds kGrace{2000};

/// Waits for the end of a command. No call of the host waits for a child and for the wish to end at
/// the same time, so the child is looked at again and again, the less often the longer it runs.
void AwaitCommand(pid_t child) {
  int wait_ms = 1;
  while (!HasEnded(child)) {
    pollfd termination{TerminationDescriptor(), POLLIN, 0};
    poll(&termination, 1, wait_ms);
    if (TerminationRequested()) throw Terminated("asked to end while a command is running");
    wait_ms = std::min(wait_ms + (wait_ms + 7) / 8, 50);
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

/// The descriptor that a child is to get; negative when there is none.
int DescriptorOf(const LockedFile* lock) {
  return lock == nullptr ? -1 : static_cast<int>(lock->HostHandle());
}

std::optional<pid_t> SpawnBatchProcessor(std::string processor, const std::string& path,
                                         const LockedFile* lock) {
  ChildSetup setup;
  setup.ReadNothing();
  setup.LeaveProcessGroup();
  if (lock != nullptr) setup.HandOn(DescriptorOf(lock));
  std::string option = "/c";
  std::string file = HostPath(path);
  const std::array<char*, 4> arguments = {processor.data(), option.data(), file.data(), nullptr};
  return setup.Spawn(arguments.data());
}

/// The two ends of a pipe that is closed when a program is started.
struct Pipe {
  Pipe() {
    if (pipe2(ends.data(), O_CLOEXEC) != 0) ends = {-1, -1};
  }
  ~Pipe() {
    CloseEnd(0);
    CloseEnd(1);
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;

  void CloseEnd(std::size_t which) {
    if (ends.at(which) >= 0) close(ends.at(which));
    ends.at(which) = -1;
  }

  std::array<int, 2> ends{-1, -1};
};

/// Comes back when the other end was closed everywhere.
void AwaitClosing(Pipe& pipe) {
  char nothing = '\0';
  pipe.CloseEnd(1);
  while (read(pipe.ends[0], &nothing, 1) < 0 && errno == EINTR) {
  }
}

/// Returns when the child has nothing of this program's any more but the lock that is for it.
std::optional<pid_t> ForkBatch(const BatchChild& batch, const LockedFile* lock) {
  const Descriptor nothing = OpenToRead("/dev/null");
  const int handed_on = DescriptorOf(lock);
  Pipe closing;
  const SignalsHeldBack held_back;
  const pid_t child = fork();
  if (child < 0) return std::nullopt;
  if (child == 0) {
    setpgid(0, 0);
    dup2(nothing.Get(), STDIN_FILENO);
    ResetChildSignals();
    CloseAllBut(handed_on);
    held_back.Release();
    batch.Run();
  }
  AwaitClosing(closing);
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
    const CtrlCMeans for_the_command(CtrlC::kEndsCommand);
    if (file.IsOpen()) setup.WriteTo(file.Get());
    std::array<std::string, 4> words = {"/bin/sh", "-c", "--", line};
    const std::array<char*, 5> arguments = {words[0].data(), words[1].data(), words[2].data(),
                                            words[3].data(), nullptr};
    const std::optional<pid_t> child = SpawnAlone(setup, arguments.data());
    if (!child) return ShellOutcome::kNotStarted;
    AwaitCommand(*child);
    return ShellOutcome::kRan;
  }

  std::optional<BatchId> StartBatch(const std::string& path, const LockedFile* lock) override {
    const std::optional<std::string> text = MakeFileSystem()->ReadText(path);
    if (!text) return std::nullopt;
    const std::lock_guard<std::mutex> guard(batches_.Starting());
    if (!batches_.Start()) return std::nullopt;
    const std::optional<pid_t> child = StartBatchChild(path, *text, lock);
    if (!child) return std::nullopt;
    return batches_.Add(*child, lock == nullptr ? std::nullopt : std::optional(IdentityOf(*lock)));
  }

  std::optional<BatchId> StartShell(const std::string& line, const std::string& output,
                                    const LockedFile* lock) override {
    const Descriptor file(OpenOutput(output));
    if (!file.IsOpen()) return std::nullopt;
    const std::lock_guard<std::mutex> guard(batches_.Starting());
    if (!batches_.Start()) return std::nullopt;
    const std::optional<pid_t> child = SpawnShell(line, file, lock);
    if (!child) return std::nullopt;
    return batches_.Add(*child, std::nullopt);
  }

  std::optional<BatchId> StartSteps(const std::vector<BatchStep>& steps) override {
    const std::lock_guard<std::mutex> guard(batches_.Starting());
    if (!batches_.Start()) return std::nullopt;
    const std::optional<pid_t> child = ForkSteps(steps, nullptr);
    if (!child) return std::nullopt;
    return batches_.Add(*child, std::nullopt);
  }

  bool IsRunning(BatchId batch) override { return batches_.IsRunning(batch); }

  void EndBatch(BatchId batch) override { batches_.End(batch); }

  void EndHolders(const std::string& lock_path) override {
    const std::optional<FileIdentity> lock = IdentityOfHostFile(HostPath(lock_path));
    const std::lock_guard<std::mutex> guard(batches_.Starting());
    if (lock && batches_.Start()) batches_.EndHolders(*lock);
  }

  void SetEndListener(std::function<void()> on_end) override {
    batches_.SetListener(std::move(on_end));
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
  std::optional<pid_t> SpawnAlone(ChildSetup& setup, char* const* arguments) {
    const std::lock_guard<std::mutex> guard(batches_.Starting());
    return setup.Spawn(arguments);
  }

  static int OpenOutput(const std::string& path) {
    return open(HostPath(path).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  }

  static std::optional<pid_t> StartBatchChild(const std::string& path, const std::string& text,
                                              const LockedFile* lock) {
    const std::string processor = BatchProcessor();
    if (!processor.empty()) return SpawnBatchProcessor(processor, path, lock);
    return ForkSteps(ParseBatch(text), lock);
  }

  static std::optional<pid_t> ForkSteps(const std::vector<BatchStep>& steps,
                                        const LockedFile* lock) {
    return ForkBatch(BatchChild(steps, ExecutableDirectory(), SearchPath()), lock);
  }

  static std::optional<pid_t> SpawnShell(const std::string& line, const Descriptor& output,
                                         const LockedFile* lock) {
    ChildSetup setup;
    setup.ReadNothing();
    setup.WriteTo(output.Get());
    setup.LeaveProcessGroup();
    if (lock != nullptr) setup.HandOn(DescriptorOf(lock));
    std::array<std::string, 4> words = {"/bin/sh", "-c", "--", line};
    const std::array<char*, 5> arguments = {words[0].data(), words[1].data(), words[2].data(),
                                            words[3].data(), nullptr};
    return setup.Spawn(arguments.data());
  }

  BatchWatch batches_{kGrace};
};

}  // namespace

std::unique_ptr<Processes> MakeProcesses() {
  return std::make_unique<PosixProcesses>();
}

bool KnowsSchedulers() {
  return true;
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
