#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fakes/memory_file_system.h"

namespace tarvendo {

/// Thrown in place of the file operation at which the power goes.
struct PowerCut {};

/// The files of a machine whose power goes at the n-th operation that changes a file: that one and
/// every later one throws, and what was changed before lies in `disk`. A write that is cut gets
/// half of its text there.
class MortalFileSystem : public FileSystem {
 public:
  /// `operations` is how many of them are done before; a negative number is never reached.
  MortalFileSystem(MemoryFileSystem& disk, int operations) : disk_(disk), left_(operations) {}

  std::optional<std::string> ReadText(const std::string& path) override {
    return disk_.ReadText(path);
  }
  std::optional<std::string> ReadPart(const std::string& path, std::uint64_t offset,
                                      std::size_t most) override {
    return disk_.ReadPart(path, offset, most);
  }
  std::unique_ptr<OutputFile> Create(const std::string& path) override {
    Spend();
    return Mortal(disk_.Create(path));
  }
  NewFileAttempt CreateNew(const std::string& path, const std::string& model) override {
    Spend();
    NewFileAttempt attempt = disk_.CreateNew(path, model);
    attempt.file = Mortal(std::move(attempt.file));
    return attempt;
  }
  std::unique_ptr<OutputFile> Append(const std::string& path) override {
    Spend();
    return Mortal(disk_.Append(path));
  }
  bool Exists(const std::string& path) override { return disk_.Exists(path); }
  bool IsReadable(const std::string& path) override { return disk_.IsReadable(path); }
  bool IsPlainFile(const std::string& path) override { return disk_.IsPlainFile(path); }
  std::string FollowLinks(const std::string& path) override { return disk_.FollowLinks(path); }
  bool Remove(const std::string& path) override {
    Spend();
    return disk_.Remove(path);
  }
  bool Rename(const std::string& from, const std::string& to) override {
    Spend();
    return disk_.Rename(from, to);
  }
  bool RenameDurably(const std::string& from, const std::string& to) override {
    if (!Rename(from, to)) return false;
    return SyncName(to);
  }
  bool SyncName(const std::string& path) override {
    Spend();
    return disk_.SyncName(path);
  }
  LockAttempt Lock(const std::string& path) override {
    if (!disk_.Has(path)) Spend();
    LockAttempt attempt = disk_.Lock(path);
    if (attempt.file) attempt.file = std::make_unique<Locked>(*this, std::move(attempt.file));
    return attempt;
  }
  bool IsLocked(const std::string& path) override { return disk_.IsLocked(path); }
  std::vector<std::string> PathsWithPrefix(const std::string& prefix) override {
    return disk_.PathsWithPrefix(prefix);
  }
  std::optional<FileStamp> Stamp(const std::string& path) override { return disk_.Stamp(path); }
  bool CutTo(const std::string& path, std::uint64_t size) override {
    Spend();
    return disk_.CutTo(path, size);
  }
  bool MakeDirectory(const std::string& path) override {
    Spend();
    return disk_.MakeDirectory(path);
  }
  bool RemoveDirectory(const std::string& path) override {
    Spend();
    return disk_.RemoveDirectory(path);
  }
  bool ChangeDirectory(const std::string& path) override { return disk_.ChangeDirectory(path); }
  std::string FullPath(const std::string& path) override { return disk_.FullPath(path); }

 private:
  class Stream : public OutputFile {
   public:
    Stream(MortalFileSystem& owner, std::unique_ptr<OutputFile> file)
        : owner_(owner), file_(std::move(file)) {}
    bool Write(std::string_view text) override {
      if (owner_.left_ == 0) file_->Write(text.substr(0, text.size() / 2));
      owner_.Spend();
      return file_->Write(text);
    }
    bool Flush() override { return file_->Flush(); }
    bool Sync() override {
      owner_.Spend();
      return file_->Sync();
    }
    std::int64_t Size() override { return file_->Size(); }
    bool Close() override {
      owner_.Spend();
      return file_->Close();
    }

   private:
    MortalFileSystem& owner_;
    std::unique_ptr<OutputFile> file_;
  };

  class Locked : public LockedFile {
   public:
    Locked(MortalFileSystem& owner, std::unique_ptr<LockedFile> file)
        : owner_(owner), file_(std::move(file)) {}
    bool Replace(std::string_view text) override {
      if (owner_.left_ == 0) file_->Replace(text.substr(0, text.size() / 2));
      owner_.Spend();
      return file_->Replace(text);
    }
    std::intptr_t HostHandle() const override { return file_->HostHandle(); }

   private:
    MortalFileSystem& owner_;
    std::unique_ptr<LockedFile> file_;
  };

  std::unique_ptr<OutputFile> Mortal(std::unique_ptr<OutputFile> file) {
    if (!file) return nullptr;
    return std::make_unique<Stream>(*this, std::move(file));
  }

  void Spend() {
    if (left_ == 0) throw PowerCut();
    if (left_ > 0) --left_;
  }

  MemoryFileSystem& disk_;
  int left_;
};

}  // namespace tarvendo
