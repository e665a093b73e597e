#pragma once

#include <algorithm>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include "platform/files.h"
#include "platform/processes.h"

namespace tarvendo {

/// Processes for the tests: nothing is run, everything is written down, and the test's handlers
/// play the part of the programs. Handlers are called on the thread that starts the program.
class ScriptedProcesses : public Processes {
 public:
  /// One line that was handed to the command processor.
  struct ShellCall {
    std::string line;
    std::string output;  ///< the file for its output, "" = the program's own
  };

  /// Shell output goes to files of `files`.
  explicit ScriptedProcesses(FileSystem& files) : files_(files) {}

  /// Gives what a shell command prints. Without it commands print nothing.
  std::function<std::string(const std::string& line)> on_shell;

  /// Does what a started batch file does; false when it cannot be started. Without it every batch
  /// file starts and does nothing.
  std::function<bool(const std::string& path)> on_batch;

  /// What RunShell says. With kNoOutputFile the file is not made, with kNotStarted it stays empty.
  ShellOutcome shell_outcome = ShellOutcome::kRan;

  /// What AnyBatchRunning says.
  bool batch_running = false;

  ShellOutcome RunShell(const std::string& line, const std::string& output) override {
    Note(shell_calls_, ShellCall{line, output});
    const bool starts = shell_outcome != ShellOutcome::kNotStarted;
    if (output.empty()) {
      if (starts) Printed(line);
      return starts ? ShellOutcome::kRan : shell_outcome;
    }
    if (shell_outcome == ShellOutcome::kNoOutputFile) return shell_outcome;
    const auto file = files_.Create(output);
    if (!file) return ShellOutcome::kNoOutputFile;
    if (starts) file->Write(Printed(line));
    file->Close();
    return shell_outcome;
  }

  bool StartBatch(const std::string& path) override {
    Note(batches_, path);
    return !on_batch || on_batch(path);
  }

  bool AnyBatchRunning() override { return batch_running; }

  /// Each word in single quotes, `\` read as `/`, a blank between two.
  std::string ShellWords(const std::vector<std::string>& words) override {
    std::string line;
    for (std::string word : words) {
      std::replace(word.begin(), word.end(), '\\', '/');
      line += (line.empty() ? "'" : " '") + word + "'";
    }
    return line;
  }

  /// Everything that was run, in order.
  std::vector<ShellCall> ShellCalls() { return Copy(shell_calls_); }
  std::vector<std::string> Batches() { return Copy(batches_); }

 private:
  std::string Printed(const std::string& line) { return on_shell ? on_shell(line) : std::string(); }

  template <typename T>
  void Note(std::vector<T>& list, T entry) {
    const std::lock_guard guard(mutex_);
    list.push_back(std::move(entry));
  }

  template <typename T>
  std::vector<T> Copy(const std::vector<T>& list) {
    const std::lock_guard guard(mutex_);
    return list;
  }

  FileSystem& files_;
  std::mutex mutex_;
  std::vector<ShellCall> shell_calls_;
  std::vector<std::string> batches_;
};

}  // namespace tarvendo
