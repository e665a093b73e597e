#pragma once

#include <algorithm>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/processes.h"

namespace tarvendo {

/// The real processes; it also knows which batch files were started. May be used from any thread.
class QuickProcesses : public Processes {
 public:
  explicit QuickProcesses(Processes& processes) : processes_(processes) {}

  /// Whether a batch file that was started still runs.
  bool IsAnyRunning() {
    const std::lock_guard<std::mutex> guard(mutex_);
    const auto has_ended = [&](BatchId batch) { return !processes_.IsRunning(batch); };
    started_.erase(std::remove_if(started_.begin(), started_.end(), has_ended), started_.end());
    return !started_.empty();
  }

  ShellOutcome RunShell(const std::string& line, const std::string& output) override {
    return processes_.RunShell(line, output);
  }
  std::optional<BatchId> StartBatch(const std::string& path, const LockedFile* lock) override {
    const std::lock_guard<std::mutex> guard(mutex_);
    const std::optional<BatchId> batch = processes_.StartBatch(path, lock);
    if (batch) started_.push_back(*batch);
    return batch;
  }
  std::optional<BatchId> StartShell(const std::string& line, const std::string& output,
                                    const LockedFile* lock) override {
    return processes_.StartShell(line, output, lock);
  }
  std::optional<BatchId> StartSteps(const std::vector<BatchStep>& steps) override {
    return processes_.StartSteps(steps);
  }
  bool IsRunning(BatchId batch) override { return processes_.IsRunning(batch); }
  void EndBatch(BatchId batch) override { processes_.EndBatch(batch); }
  void EndHolders(const std::string& lock_path) override { processes_.EndHolders(lock_path); }
  void SetEndListener(std::function<void()> on_end) override {
    processes_.SetEndListener(std::move(on_end));
  }
  std::string ShellWords(const std::vector<std::string>& words) override {
    return processes_.ShellWords(words);
  }

 private:
  Processes& processes_;
  std::mutex mutex_;
  std::vector<BatchId> started_;
};

}  // namespace tarvendo
