#include "fakes/memory_file_system.h"

#include <algorithm>

#include "platform/line_ends.h"

namespace tarvendo {
namespace {

std::string ParentOf(const std::string& key) {
  const std::size_t slash = key.rfind('/');
  return slash == 0 ? "/" : key.substr(0, slash);
}

}  // namespace

class MemoryFileSystem::Stream : public OutputFile {
 public:
  Stream(MemoryFileSystem& owner, std::string key, std::shared_ptr<File> file)
      : owner_(owner), key_(std::move(key)), file_(std::move(file)) {}

  /// Holds the file's lock from now on.
  void Hold(std::shared_ptr<void> lock) { lock_ = std::move(lock); }

  bool Write(std::string_view text) override {
    const std::lock_guard guard(owner_.mutex_);
    if (owner_.Fails(FileOperation::kWrite, key_)) {
      if (!failed_) file_->bytes += text.substr(0, text.size() / 2);
      failed_ = true;
    }
    if (!failed_) file_->bytes += text;
    owner_.Change(*file_);
    owner_.record_.push_back("write " + key_);
    return !failed_;
  }

  bool Flush() override { return !failed_; }

  bool Sync() override {
    const std::lock_guard guard(owner_.mutex_);
    if (owner_.Fails(FileOperation::kSync, key_)) failed_ = true;
    if (failed_) return false;
    owner_.record_.push_back("sync " + key_);
    owner_.Note({DiskStepKind::kDataSynced, "", "", file_->identity, ""});
    return true;
  }

  std::int64_t Size() override {
    const std::lock_guard guard(owner_.mutex_);
    return static_cast<std::int64_t>(file_->bytes.size());
  }

  bool Close() override {
    const std::lock_guard guard(owner_.mutex_);
    if (owner_.Fails(FileOperation::kClose, key_)) failed_ = true;
    return !failed_;
  }

 private:
  MemoryFileSystem& owner_;
  std::string key_;
  std::shared_ptr<File> file_;
  std::shared_ptr<void> lock_;
  bool failed_ = false;
};

class MemoryFileSystem::MemoryLock : public LockedFile {
 public:
  MemoryLock(MemoryFileSystem& owner, std::string key, std::shared_ptr<File> file)
      : owner_(owner), key_(std::move(key)), file_(std::move(file)), share_(Take(*file_)) {}

  /// Takes the lock of a file that nobody holds.
  static std::shared_ptr<void> Take(File& file) {
    auto share = std::make_shared<int>(0);
    file.lock = share;
    return share;
  }

  bool Replace(std::string_view text) override {
    const std::lock_guard guard(owner_.mutex_);
    const bool fails = owner_.Fails(FileOperation::kWrite, key_);
    file_->bytes = text.substr(0, fails ? text.size() / 2 : text.size());
    owner_.Change(*file_);
    return !fails;
  }

  std::intptr_t HostHandle() const override { return reinterpret_cast<std::intptr_t>(&share_); }

 private:
  MemoryFileSystem& owner_;
  std::string key_;
  std::shared_ptr<File> file_;
  std::shared_ptr<void> share_;
};

MemoryFileSystem::MemoryFileSystem() : directories_{"/", "/home"}, current_("/home") {}

std::optional<std::string> MemoryFileSystem::ReadText(const std::string& path) {
  auto text = ReadPart(path, 0, std::string::npos);
  if (text) FoldLineEnds(*text);
  return text;
}

std::optional<std::string> MemoryFileSystem::ReadPart(const std::string& path, std::uint64_t offset,
                                                      std::size_t most) {
  const std::lock_guard guard(mutex_);
  const std::string key = Target(Key(path));
  const auto file = Find(key);
  if (Fails(FileOperation::kRead, key) || !file) return std::nullopt;
  return file->bytes.substr(std::min<std::size_t>(offset, file->bytes.size()), most);
}

std::unique_ptr<OutputFile> MemoryFileSystem::Create(const std::string& path) {
  const std::lock_guard guard(mutex_);
  const auto file = OpenForWriting(path);
  if (!file) return nullptr;
  file->bytes.clear();
  Change(*file);
  return std::make_unique<Stream>(*this, Key(path), file);
}

NewFileAttempt MemoryFileSystem::CreateNew(const std::string& path, const std::string& model) {
  const std::lock_guard guard(mutex_);
  const std::string key = Key(path);
  const auto old = Find(key);
  if (links_.contains(key) || special_.contains(key) || (old && !old->lock.expired())) return {};
  if (Fails(FileOperation::kOpen, key) || path.empty() || !IsFilePlace(key)) {
    return {nullptr, fails_as_forbidden_ || faults_[FileOperation::kOpen].denied.contains(key)};
  }
  files_.erase(key);
  const auto file = MakeFile(key);
  file->model = Key(model);
  auto stream = std::make_unique<Stream>(*this, key, file);
  stream->Hold(MemoryLock::Take(*file));
  return {std::move(stream)};
}

std::unique_ptr<OutputFile> MemoryFileSystem::Append(const std::string& path) {
  const std::lock_guard guard(mutex_);
  const auto file = OpenForWriting(path);
  if (!file) return nullptr;
  return std::make_unique<Stream>(*this, Key(path), file);
}

bool MemoryFileSystem::Exists(const std::string& path) {
  const std::lock_guard guard(mutex_);
  const std::string key = Key(path);
  return directories_.contains(key) || links_.contains(key) || Find(key) != nullptr;
}

bool MemoryFileSystem::IsReadable(const std::string& path) {
  const std::lock_guard guard(mutex_);
  const std::string key = Target(Key(path));
  return Find(key) != nullptr && !faults_[FileOperation::kRead].denied.contains(key);
}

bool MemoryFileSystem::IsPlainFile(const std::string& path) {
  const std::lock_guard guard(mutex_);
  const std::string key = Key(path);
  return Find(key) != nullptr && !special_.contains(key);
}

std::string MemoryFileSystem::FollowLinks(const std::string& path) {
  const std::lock_guard guard(mutex_);
  const std::string target = Target(Key(path));
  return target == Key(path) || !Exists(target) ? path : target;
}

bool MemoryFileSystem::Remove(const std::string& path) {
  const std::lock_guard guard(mutex_);
  const std::string key = Key(path);
  if (Fails(FileOperation::kRemove, key) || files_.erase(key) + links_.erase(key) == 0)
    return false;
  removed_.push_back(path);
  record_.push_back("remove " + key);
  Note({DiskStepKind::kNoName, key, "", 0, ""});
  return true;
}

bool MemoryFileSystem::Rename(const std::string& from, const std::string& to) {
  const std::lock_guard guard(mutex_);
  const std::string old_key = Key(from);
  const std::string new_key = Key(to);
  const auto file = Find(old_key);
  if (Fails(FileOperation::kRename, old_key) || !file) return false;
  if (directories_.contains(new_key) || !directories_.contains(ParentOf(new_key))) return false;
  files_.erase(old_key);
  links_.erase(new_key);
  files_[new_key] = file;
  record_.push_back("rename " + old_key + " " + new_key);
  Note({DiskStepKind::kRename, old_key, new_key, file->identity, ""});
  return true;
}

bool MemoryFileSystem::RenameDurably(const std::string& from, const std::string& to) {
  return Rename(from, to) && SyncName(to);
}

bool MemoryFileSystem::SyncName(const std::string& path) {
  const std::lock_guard guard(mutex_);
  const std::string directory = ParentOf(Key(path));
  if (Fails(FileOperation::kSync, directory) || !directories_.contains(directory)) return false;
  record_.push_back("sync names of " + directory);
  Note({DiskStepKind::kNamesSynced, directory, "", 0, ""});
  return true;
}

LockAttempt MemoryFileSystem::Lock(const std::string& path) {
  const std::lock_guard guard(mutex_);
  const std::string key = Target(Key(path));
  if (Fails(FileOperation::kLock, key) || path.empty() || !IsFilePlace(key)) return {};
  const std::shared_ptr<File> file = MakeFile(key);
  if (!file->lock.expired()) return {nullptr, true};
  return {std::make_unique<MemoryLock>(*this, key, file), false};
}

bool MemoryFileSystem::IsLocked(const std::string& path) {
  const std::lock_guard guard(mutex_);
  const auto file = Find(Target(Key(path)));
  return file && !file->lock.expired();
}

std::vector<std::string> MemoryFileSystem::PathsWithPrefix(const std::string& prefix) {
  const std::lock_guard guard(mutex_);
  const std::size_t separator = prefix.find_last_of("\\/");
  const std::size_t name_at = separator == std::string::npos ? 0 : separator + 1;
  const std::string typed = prefix.substr(0, name_at);
  const std::string directory = Key(typed);
  if (Fails(FileOperation::kRead, directory)) return {};
  const std::string beginning = (directory == "/" ? "" : directory) + "/" + prefix.substr(name_at);
  std::set<std::string> paths;
  const auto look_at = [&](const std::string& key) {
    const bool is_meant = ParentOf(key) == directory && key.starts_with(beginning);
    if (is_meant) paths.insert(typed + key.substr(key.rfind('/') + 1));
  };
  for (const auto& [key, file] : files_)
    look_at(key);
  for (const auto& [key, target] : links_)
    look_at(key);
  return {paths.begin(), paths.end()};
}

std::optional<FileStamp> MemoryFileSystem::Stamp(const std::string& path) {
  const std::lock_guard guard(mutex_);
  const auto file = Find(Target(Key(path)));
  if (!file) return std::nullopt;
  return FileStamp{file->identity, static_cast<std::int64_t>(file->bytes.size()), file->changed};
}

bool MemoryFileSystem::CutTo(const std::string& path, std::uint64_t size) {
  const std::lock_guard guard(mutex_);
  const std::string key = Target(Key(path));
  const auto file = Find(key);
  if (Fails(FileOperation::kCut, key) || !file || size > file->bytes.size()) return false;
  file->bytes.resize(size);
  Change(*file);
  record_.push_back("cut " + key);
  Note({DiskStepKind::kDataSynced, "", "", file->identity, ""});
  return true;
}

bool MemoryFileSystem::MakeDirectory(const std::string& path) {
  const std::lock_guard guard(mutex_);
  const std::string key = Key(path);
  if (Fails(FileOperation::kMakeDirectory, key) || path.empty()) return false;
  if (directories_.contains(key)) return true;
  if (Find(key) || links_.contains(key) || !directories_.contains(ParentOf(key))) return false;
  directories_.insert(key);
  Note({DiskStepKind::kDirectory, key, "", 0, ""});
  return true;
}

bool MemoryFileSystem::RemoveDirectory(const std::string& path) {
  const std::lock_guard guard(mutex_);
  const std::string key = Key(path);
  if (Fails(FileOperation::kRemove, key) || path.empty() || key == "/") return false;
  const auto has_within = [&](const auto& names) {
    const auto next = names.lower_bound(key + "/");
    if (next == names.end()) return false;
    if constexpr (requires { next->first; }) {
      return next->first.starts_with(key + "/");
    } else {
      return next->starts_with(key + "/");
    }
  };
  if (has_within(files_) || has_within(links_) || has_within(directories_)) return false;
  if (directories_.erase(key) == 0) return false;
  Note({DiskStepKind::kNoDirectory, key, "", 0, ""});
  return true;
}

bool MemoryFileSystem::ChangeDirectory(const std::string& path) {
  const std::lock_guard guard(mutex_);
  const std::string key = Key(path);
  if (path.empty() || !directories_.contains(key)) return false;
  current_ = key;
  return true;
}

std::string MemoryFileSystem::FullPath(const std::string& path) {
  const std::lock_guard guard(mutex_);
  return path.empty() ? path : Key(path);
}

void MemoryFileSystem::Put(const std::string& path, const std::string& bytes) {
  const std::lock_guard guard(mutex_);
  const std::string key = Key(path);
  MakeParents(key);
  files_.erase(key);
  const auto file = MakeFile(key);
  file->bytes = bytes;
  Change(*file);
}

void MemoryFileSystem::PutMore(const std::string& path, const std::string& bytes) {
  const std::lock_guard guard(mutex_);
  if (!Has(path)) Put(path, "");
  File& file = *Find(Key(path));
  file.bytes += bytes;
  Change(file);
}

void MemoryFileSystem::HoldLock(const std::string& path, const std::string& process) {
  const std::lock_guard guard(mutex_);
  if (!Has(path)) Put(path, "");
  other_holders_.emplace(process, MemoryLock::Take(*Find(Key(path))));
}

void MemoryFileSystem::EndProcess(const std::string& process) {
  const std::lock_guard guard(mutex_);
  other_holders_.erase(process);
}

void MemoryFileSystem::PutDirectory(const std::string& path) {
  const std::lock_guard guard(mutex_);
  const std::string key = Key(path);
  if (key == "/") return;
  MakeParents(key);
  directories_.insert(key);
}

void MemoryFileSystem::FailAt(FileOperation operation, int n) {
  const std::lock_guard guard(mutex_);
  Fault& fault = faults_[operation];
  fault.fails_at = fault.done + n;
}

void MemoryFileSystem::FailFrom(FileOperation operation, int n) {
  const std::lock_guard guard(mutex_);
  Fault& fault = faults_[operation];
  fault.fails_from = fault.done + n;
}

void MemoryFileSystem::Mend() {
  const std::lock_guard guard(mutex_);
  for (auto& [operation, fault] : faults_)
    fault.fails_at = fault.fails_from = 0;
}

void MemoryFileSystem::Deny(FileOperation operation, const std::string& path) {
  const std::lock_guard guard(mutex_);
  faults_[operation].denied.insert(Key(path));
}

void MemoryFileSystem::Allow(FileOperation operation, const std::string& path) {
  const std::lock_guard guard(mutex_);
  faults_[operation].denied.erase(Key(path));
}

void MemoryFileSystem::MakeSpecial(const std::string& path) {
  const std::lock_guard guard(mutex_);
  if (!Has(path)) Put(path, "");
  special_.insert(Key(path));
}

void MemoryFileSystem::MakeLink(const std::string& path, const std::string& target) {
  const std::lock_guard guard(mutex_);
  links_[Key(path)] = Key(target);
}

std::string MemoryFileSystem::ModelOf(const std::string& path) {
  const std::lock_guard guard(mutex_);
  const auto file = Find(Key(path));
  return file ? file->model : "(no such file)";
}

std::string MemoryFileSystem::Bytes(const std::string& path) {
  const std::lock_guard guard(mutex_);
  const auto file = Find(Target(Key(path)));
  return file ? file->bytes : "(no such file)";
}

bool MemoryFileSystem::Has(const std::string& path) {
  const std::lock_guard guard(mutex_);
  return Find(Key(path)) != nullptr;
}

std::vector<std::string> MemoryFileSystem::FileNames() {
  const std::lock_guard guard(mutex_);
  std::vector<std::string> names;
  for (const auto& [key, file] : files_)
    names.push_back(key);
  return names;
}

std::vector<std::string> MemoryFileSystem::Removed() {
  const std::lock_guard guard(mutex_);
  return removed_;
}

std::vector<std::string> MemoryFileSystem::Changes() {
  const std::lock_guard guard(mutex_);
  return record_;
}

void MemoryFileSystem::Record(DiskSteps& steps) {
  const std::lock_guard guard(mutex_);
  steps_ = &steps;
  for (const std::string& directory : directories_)
    Note({DiskStepKind::kDirectory, directory, "", 0, ""});
  for (const auto& [key, file] : files_) {
    Note({DiskStepKind::kName, key, "", file->identity, ""});
    Note({DiskStepKind::kData, "", "", file->identity, file->bytes});
    Note({DiskStepKind::kDataSynced, "", "", file->identity, ""});
  }
  for (const std::string& directory : directories_)
    Note({DiskStepKind::kNamesSynced, directory, "", 0, ""});
}

std::string MemoryFileSystem::CurrentDirectory() {
  const std::lock_guard guard(mutex_);
  return current_;
}

int MemoryFileSystem::Count(FileOperation operation) {
  const std::lock_guard guard(mutex_);
  return faults_[operation].done;
}

std::shared_ptr<void> MemoryFileSystem::ShareOf(const LockedFile& lock) {
  return *reinterpret_cast<const std::shared_ptr<void>*>(lock.HostHandle());
}

std::string MemoryFileSystem::Key(const std::string& path) const {
  const bool is_whole = !path.empty() && (path.front() == '/' || path.front() == '\\');
  std::string key = is_whole || current_ == "/" ? "" : current_;
  for (std::size_t begin = 0; begin <= path.size();) {
    const std::size_t end = std::min(path.find_first_of("/\\", begin), path.size());
    const std::string_view part = std::string_view(path).substr(begin, end - begin);
    begin = end + 1;
    if (part.empty() || part == ".") continue;
    if (part != "..") {
      key.append("/").append(part);
    } else if (!key.empty()) {
      key.resize(key.rfind('/'));
    }
  }
  return key.empty() ? "/" : key;
}

std::string MemoryFileSystem::Target(const std::string& key) const {
  std::string target = key;
  for (auto link = links_.find(target); link != links_.end(); link = links_.find(target)) {
    target = link->second;
  }
  return target;
}

bool MemoryFileSystem::Fails(FileOperation operation, const std::string& key) {
  Fault& fault = faults_[operation];
  ++fault.done;
  const bool fails_for_good = fault.fails_from > 0 && fault.done >= fault.fails_from;
  return fails_for_good || fault.done == fault.fails_at || fault.denied.contains(key);
}

std::shared_ptr<MemoryFileSystem::File> MemoryFileSystem::OpenForWriting(const std::string& path) {
  const std::string key = Target(Key(path));
  if (Fails(FileOperation::kOpen, key) || path.empty()) return nullptr;
  return IsFilePlace(key) ? MakeFile(key) : nullptr;
}

/// The file of that name, made when it is missing.
std::shared_ptr<MemoryFileSystem::File> MemoryFileSystem::MakeFile(const std::string& key) {
  std::shared_ptr<File>& file = files_[key];
  if (file) return file;
  file = std::make_shared<File>();
  file->identity = ++last_identity_;
  Note({DiskStepKind::kName, key, "", file->identity, ""});
  Change(*file);
  return file;
}

void MemoryFileSystem::Change(File& file) {
  file.changed = ++changes_;
  Note({DiskStepKind::kData, "", "", file.identity, file.bytes});
}

void MemoryFileSystem::Note(DiskStep step) {
  if (steps_ != nullptr) steps_->push_back(std::move(step));
}

bool MemoryFileSystem::IsFilePlace(const std::string& key) const {
  return !directories_.contains(key) && directories_.contains(ParentOf(key));
}

std::shared_ptr<MemoryFileSystem::File> MemoryFileSystem::Find(const std::string& key) const {
  const auto found = files_.find(key);
  return found == files_.end() ? nullptr : found->second;
}

void MemoryFileSystem::MakeParents(const std::string& key) {
  for (std::string parent = ParentOf(key); parent != "/"; parent = ParentOf(parent)) {
    directories_.insert(parent);
  }
}

}  // namespace tarvendo
