#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "fakes/memory_file_system.h"
#include "platform/batch_plan.h"
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
  /// file starts and does nothing. It has its id already (LastBatch), and may be ended.
  std::function<bool(const std::string& path)> on_batch;

  /// Does what a line that is started aside (StartShell) does: its output, and whether it has ended
  /// by then; nothing when it cannot be started. Without it nothing can be.
  struct AsideAnswer {
    std::string output;
    bool has_ended = true;
  };
  std::function<std::optional<AsideAnswer>(const std::string& line)> on_aside;

  /// Does what the steps of a batch file do; false when they cannot be started.
  std::function<bool(const std::vector<BatchStep>& steps)> on_steps;

  /// What RunShell says. With kNoOutputFile the file is not made, with kNotStarted it stays empty.
  ShellOutcome shell_outcome = ShellOutcome::kRan;

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

  /// The ids are 1, 2, 3 and so on. What is started runs until the test ends it, and keeps a share
  /// of the lock that it was handed, which must be one of a MemoryFileSystem.
  std::optional<BatchId> StartBatch(const std::string& path, const LockedFile* lock) override {
    BatchId id = 0;
    {
      const std::lock_guard guard(mutex_);
      batches_.push_back(path);
      id = ++last_batch_;
      running_.insert(id);
      if (lock != nullptr) locks_[id] = MemoryFileSystem::ShareOf(*lock);
    }
    if (!on_batch || on_batch(path)) return id;
    const std::lock_guard guard(mutex_);
    running_.erase(id);
    locks_.erase(id);
    return std::nullopt;
  }

  /// Written down with RunShell's lines. Runs until the test ends it, unless its answer says that
  /// it has ended.
  std::optional<BatchId> StartShell(const std::string& line, const std::string& output,
                                    const LockedFile* lock) override {
    Note(shell_calls_, ShellCall{line, output});
    const BatchId id = BeginAnother(lock);
    const auto answer = on_aside ? on_aside(line) : std::nullopt;
    const auto file = answer ? files_.Create(output) : nullptr;
    if (file) {
      file->Write(answer->output);
      file->Close();
    }
    if (file && !answer->has_ended) return id;
    const std::lock_guard guard(mutex_);
    running_.erase(id);
    locks_.erase(id);
    return file ? std::optional(id) : std::nullopt;
  }

  /// They run until the test ends them.
  std::optional<BatchId> StartSteps(const std::vector<BatchStep>& steps) override {
    const BatchId id = BeginAnother(nullptr);
    if (on_steps && on_steps(steps)) return id;
    const std::lock_guard guard(mutex_);
    running_.erase(id);
    return std::nullopt;
  }

  bool IsRunning(BatchId batch) override {
    const std::lock_guard guard(mutex_);
    return running_.contains(batch);
  }

  /// Written down, and done at once.
  void EndBatch(BatchId batch) override {
    Note(ended_batches_, batch);
    EndOf(batch);
  }

  /// Written down only.
  void EndHolders(const std::string& lock_path) override { Note(ended_holders_, lock_path); }

  void SetEndListener(std::function<void()> on_end) override {
    const std::lock_guard guard(telling_);
    listener_ = std::move(on_end);
  }

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

  /// The id of the last batch file that was to be started; 0 before the first.
  BatchId LastBatch() {
    const std::lock_guard guard(mutex_);
    return last_batch_;
  }

  /// What EndHolders was called for, in order.
  std::vector<std::string> EndedHolders() { return Copy(ended_holders_); }

  /// What EndBatch was called for, in order.
  std::vector<BatchId> EndedBatches() { return Copy(ended_batches_); }

  // What a test lets happen. The listener is called on the test's thread.

  /// The started process ends, with everything that it has started.
  void EndOf(BatchId batch) {
    LetGo(batch);
    LeaderEnds(batch);
  }

  /// The started process ends, but something that it has started goes on, with its share of the
  /// lock, until EndOf.
  void LeaderEnds(BatchId batch) {
    {
      const std::lock_guard guard(mutex_);
      if (running_.erase(batch) == 0) return;
    }
    const std::lock_guard guard(telling_);
    if (listener_) listener_();
  }

 private:
  BatchId BeginAnother(const LockedFile* lock) {
    const std::lock_guard guard(mutex_);
    const BatchId id = ++last_batch_;
    running_.insert(id);
    if (lock != nullptr) locks_[id] = MemoryFileSystem::ShareOf(*lock);
    return id;
  }

  void LetGo(BatchId batch) {
    const std::lock_guard guard(mutex_);
    locks_.erase(batch);
  }

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
  std::vector<BatchId> ended_batches_;
  std::vector<std::string> ended_holders_;
  BatchId last_batch_ = 0;
  std::set<BatchId> running_;
  std::map<BatchId, std::shared_ptr<void>> locks_;
  std::mutex telling_;
  std::function<void()> listener_;  ///< guarded by telling_
};

}  // namespace tarvendo
