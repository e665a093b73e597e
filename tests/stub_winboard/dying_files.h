#pragma once

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/faulty_code.h"
#include "platform/files.h"

namespace tarvendo {

/// Counts the steps that change files, and ends the process without a word at one of them. The log
/// does not count: nothing is ever read from it.
class Countdown {
 public:
  /// Ends the process at the step `last` (1-based); 0 never does.
  explicit Countdown(int last) : left_(last) {}

  /// Whether the step that is about to be made is the last one.
  bool IsLast() { return --left_ == 0; }

  /// As sudden as a power failure: nothing is flushed, nobody is told.
  [[noreturn]] static void Die() { std::_Exit(9); }

 private:
  std::atomic<int> left_;
};

/// A file that may get half of a text.
class DyingFile : public OutputFile {
 public:
  DyingFile(std::unique_ptr<OutputFile> file, Countdown& countdown)
      : file_(std::move(file)), countdown_(countdown) {}

  bool Write(std::string_view text) override {
    if (countdown_.IsLast()) {
      file_->Write(text.substr(0, text.size() / 2));
      file_->Flush();
      Countdown::Die();
    }
    return file_->Write(text);
  }
  bool Flush() override { return file_->Flush(); }
  bool Sync() override {
    if (countdown_.IsLast()) Countdown::Die();
    return file_->Sync();
  }
  std::int64_t Size() override { return file_->Size(); }
  bool Close() override {
    if (countdown_.IsLast()) Countdown::Die();
    return file_->Close();
  }

 private:
  std::unique_ptr<OutputFile> file_;
  Countdown& countdown_;
};

/// A locked file that may get half of a text.
class DyingLockedFile : public LockedFile {
 public:
  DyingLockedFile(std::unique_ptr<LockedFile> file, Countdown& countdown)
      : file_(std::move(file)), countdown_(countdown) {}

  bool Replace(std::string_view text) override {
    if (countdown_.IsLast()) {
      file_->Replace(text.substr(0, text.size() / 2));
      Countdown::Die();
    }
    return file_->Replace(text);
  }
  std::intptr_t HostHandle() const override { return file_->HostHandle(); }

 private:
  std::unique_ptr<LockedFile> file_;
  Countdown& countdown_;
};

/// A file that lies in the directory of a fault cannot be read without it: fault\access\x.txt.
inline void CommitFaultOf(const std::string& path) {
  const auto lies_in = [&](const char* directory) {
    return path.find(directory) != std::string::npos;
  };
  if (lies_in("fault\\access\\")) WriteNowhere();
  if (lies_in("fault\\division\\")) DivideByZero();
  if (lies_in("fault\\instruction\\")) ExecuteNonsense();
  if (lies_in("fault\\stack\\")) Overflow(1);
  if (lies_in("fault\\abort\\")) std::abort();
}

/// The real files, up to the step at which the process ends, or a fault happens.
class DyingFileSystem : public FileSystem {
 public:
  DyingFileSystem(FileSystem& files, int last_step) : files_(files), countdown_(last_step) {}

  std::optional<std::string> ReadText(const std::string& path) override {
    CommitFaultOf(path);
    return files_.ReadText(path);
  }
  std::optional<std::string> ReadPart(const std::string& path, std::uint64_t offset,
                                      std::size_t most) override {
    CommitFaultOf(path);
    return files_.ReadPart(path, offset, most);
  }
  std::unique_ptr<OutputFile> Create(const std::string& path) override {
    if (IsLog(path)) return files_.Create(path);
    Step();
    return Wrapped(files_.Create(path));
  }
  NewFileAttempt CreateNew(const std::string& path, const std::string& model) override {
    Step();
    NewFileAttempt attempt = files_.CreateNew(path, model);
    attempt.file = Wrapped(std::move(attempt.file));
    return attempt;
  }
  std::unique_ptr<OutputFile> Append(const std::string& path) override {
    if (IsLog(path)) return files_.Append(path);
    Step();
    return Wrapped(files_.Append(path));
  }
  bool Exists(const std::string& path) override { return files_.Exists(path); }
  bool IsReadable(const std::string& path) override { return files_.IsReadable(path); }
  bool IsPlainFile(const std::string& path) override { return files_.IsPlainFile(path); }
  std::string FollowLinks(const std::string& path) override { return files_.FollowLinks(path); }
  bool Remove(const std::string& path) override {
    Step();
    return files_.Remove(path);
  }
  bool Rename(const std::string& from, const std::string& to) override {
    Step();
    return files_.Rename(from, to);
  }
  bool RenameDurably(const std::string& from, const std::string& to) override {
    if (!Rename(from, to)) return false;
    return SyncName(to);
  }
  bool SyncName(const std::string& path) override {
    Step();
    return files_.SyncName(path);
  }
  LockAttempt Lock(const std::string& path) override {
    if (!files_.Exists(path)) Step();
    LockAttempt attempt = files_.Lock(path);
    if (attempt.file) {
      attempt.file = std::make_unique<DyingLockedFile>(std::move(attempt.file), countdown_);
    }
    return attempt;
  }
  bool IsLocked(const std::string& path) override { return files_.IsLocked(path); }
  std::vector<std::string> PathsWithPrefix(const std::string& prefix) override {
    return files_.PathsWithPrefix(prefix);
  }
  std::optional<FileStamp> Stamp(const std::string& path) override { return files_.Stamp(path); }
  bool CutTo(const std::string& path, std::uint64_t size) override {
    Step();
    return files_.CutTo(path, size);
  }
  bool MakeDirectory(const std::string& path) override {
    Step();
    return files_.MakeDirectory(path);
  }
  bool RemoveDirectory(const std::string& path) override {
    Step();
    return files_.RemoveDirectory(path);
  }
  bool ChangeDirectory(const std::string& path) override { return files_.ChangeDirectory(path); }
  std::string FullPath(const std::string& path) override { return files_.FullPath(path); }

 private:
  static bool IsLog(const std::string& path) {
    return path.find("Tarvendo.log") != std::string::npos;
  }

  void Step() {
    if (countdown_.IsLast()) Countdown::Die();
  }

  std::unique_ptr<OutputFile> Wrapped(std::unique_ptr<OutputFile> file) {
    if (!file) return nullptr;
    return std::make_unique<DyingFile>(std::move(file), countdown_);
  }

  FileSystem& files_;
  Countdown countdown_;
};

}  // namespace tarvendo
