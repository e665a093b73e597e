#pragma once

#include <memory>
#include <string>
#include <vector>

namespace tarvendo {

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
  /// by
  /// `$COMSPEC /c FILE` or, without COMSPEC, by the batch reader (batch_plan.h). The started
  /// process is remembered and reaped. False when it could not be started.
  virtual bool StartBatch(const std::string& path) = 0;

  /// Whether a process started by StartBatch is still running. Reaps those that have ended.
  virtual bool AnyBatchRunning() = 0;

  /// The words as one command line for the host's command processor, each so quoted that it arrives
  /// as one word and nothing in it is run; paths in the host's form (`\` read as `/` on Linux).
  virtual std::string ShellWords(const std::vector<std::string>& words) = 0;
};

std::unique_ptr<Processes> MakeProcesses();

/// Puts the executable's directory at the end of the search path that child processes get and,
/// where the host needs it, opens the null device for standard streams that are closed. Called
/// once, before any thread is started and any file is opened.
void PrepareChildEnvironment();

}  // namespace tarvendo
