#include "runner/directory_lock.h"

#include <utility>

namespace tarvendo {

std::string DirectoryLock::FileIn(const std::string& files_path) {
  return files_path + "runner.lock";
}

bool DirectoryLock::Holds(const std::string& files_path) const {
  return !path_.empty() && path_ == files_.FullPath(FileIn(files_path));
}

bool DirectoryLock::Take(const std::string& files_path) {
  Release();
  LockAttempt attempt = files_.Lock(FileIn(files_path));
  if (attempt.is_held) return false;
  path_ = files_.FullPath(FileIn(files_path));
  file_ = std::move(attempt.file);
  return true;
}

void DirectoryLock::Release() {
  // The file is deleted while it is locked: nobody takes a lock on a file that has lost its name
  // (platform/files.h). A host that deletes no open file needs it the other way round; there a file
  // that somebody else has opened meanwhile cannot be deleted.
  const bool is_removed = file_ && files_.Remove(path_);
  const bool was_held = file_ != nullptr;
  file_.reset();
  if (was_held && !is_removed) files_.Remove(path_);
  path_.clear();
}

}  // namespace tarvendo
