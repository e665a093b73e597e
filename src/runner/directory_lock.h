#pragma once

#include <memory>
#include <string>

#include "platform/files.h"

namespace tarvendo {

/// Keeps two programs from playing one tourney: who plays games in a FilesPath holds the lock of
/// the file runner.lock there, as long as its runner is at work. Used by the runner's thread.
class DirectoryLock {
 public:
  explicit DirectoryLock(FileSystem& files) : files_(files) {}
  ~DirectoryLock() { Release(); }
  DirectoryLock(const DirectoryLock&) = delete;
  DirectoryLock& operator=(const DirectoryLock&) = delete;

  /// Whether it is held for that FilesPath, which is put in front of file names as it is.
  bool Holds(const std::string& files_path) const;

  /// Takes the lock for that FilesPath; one for another FilesPath is given back first. False when
  /// another program holds it. True also where no lock can be made at all, in a directory that is
  /// missing or cannot be written to: nobody else can play there either.
  bool Take(const std::string& files_path);

  void Release();

  /// "runner.lock" behind FilesPath.
  static std::string FileIn(const std::string& files_path);

 private:
  FileSystem& files_;
  std::string path_;  ///< of the lock file; a full path, empty when nothing is held
  std::unique_ptr<LockedFile> file_;
};

}  // namespace tarvendo
