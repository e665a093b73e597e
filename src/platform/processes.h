#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tarvendo {

struct BatchStep;
class LockedFile;

/// A batch file that this program has started; never used twice.
using BatchId = std::uint64_t;

/// How a command line run by the host's command processor ended.
enum class ShellOutcome {
  kRan,           ///< It ran (whatever it returned) and its output went where it was asked to go.
  kNoOutputFile,  ///< The output file could not be made; nothing was run.
  kNotStarted,    ///< The command processor itself could not be started.
};

/// Starts other programs. May be called from any thread.
class Processes {
 public:
  virtual ~Processes() = default;

  /// Hands the line untouched to the host's command processor and waits for its end. Only the
  /// child's standard output goes to the file `output`; with an empty name it goes where the
  /// program's own goes. Throws Terminated (faults.h) when the process is asked to end meanwhile,
  /// or was before; the command then goes on by itself.
  virtual ShellOutcome RunShell(const std::string& line, const std::string& output) = 0;

  /// Starts a batch file without waiting for it: by the command processor on Windows, and on Linux
  /// by `$COMSPEC /c FILE` or, without COMSPEC, by the batch reader (batch_plan.h). `lock`, when
  /// there is one, is handed to the started process and to what that starts, and to nothing else:
  /// it is held until the last of them and the LockedFile itself are gone. Nothing of this
  /// program's other open files reaches the child. The started process is reaped as soon as it
  /// ends. Nothing when it could not be started.
  virtual std::optional<BatchId> StartBatch(const std::string& path, const LockedFile* lock) = 0;

  /// Starts a command line of the host's command processor without waiting for it. Its standard
  /// output goes to the file `output`, and it reads nothing. `lock` as in StartBatch. What is said
  /// of started batch files below holds for it too. Nothing when it could not be started or the
  /// file cannot be made, and always on Windows.
  virtual std::optional<BatchId> StartShell(const std::string& line, const std::string& output,
                                            const LockedFile* lock) = 0;

  /// Starts the steps of a batch file by the batch reader, whatever COMSPEC says, as StartBatch
  /// does. Nothing when they could not be started, and always on Windows.
  virtual std::optional<BatchId> StartSteps(const std::vector<BatchStep>& steps) = 0;

  /// Whether the process that was started with that id (not those that it has started) still runs.
  virtual bool IsRunning(BatchId batch) = 0;

  /// Ends a started batch file with everything that it has started and that still belongs to it: on
  /// Linux to its process group or to those that hold its lock, on Windows to its job. On Linux all
  /// of them are asked to end, and what is left two seconds later is killed; on Windows they are
  /// ended at once. Does not wait for that.
  virtual void EndBatch(BatchId batch) = 0;

  /// In the same way ends whatever holds the lock of that file, started by an earlier process of
  /// this program. Does nothing on Windows, where nobody is told who holds a file.
  virtual void EndHolders(const std::string& lock_path) = 0;

  /// Has `on_end` called whenever a started batch file has ended and been reaped, on a thread of
  /// the host's: it must be quick and must not call back. An empty function ends that; when this
  /// call returns no older one is under way any more.
  virtual void SetEndListener(std::function<void()> on_end) = 0;

  /// The words as one command line for the host's command processor, each so quoted that it arrives
  /// as one word and nothing in it is run; paths in the host's form (`\` read as `/` on Linux).
  virtual std::string ShellWords(const std::vector<std::string>& words) = 0;
};

std::unique_ptr<Processes> MakeProcesses();

/// Whether the host can hand games to a batch scheduler.
bool KnowsSchedulers();

/// Puts the executable's directory at the end of the search path that child processes get and,
/// where the host needs it, opens the null device for standard streams that are closed. Called
/// once, before any thread is started and any file is opened.
void PrepareChildEnvironment();

}  // namespace tarvendo
