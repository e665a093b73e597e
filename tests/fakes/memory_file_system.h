#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "fakes/disk_steps.h"
#include "platform/files.h"

namespace tarvendo {

/// What a MemoryFileSystem can be told to fail at.
enum class FileOperation {
  kRead,    ///< ReadText, ReadFrom, ReadPart
  kOpen,    ///< Create, CreateNew, Append
  kWrite,   ///< OutputFile::Write, LockedFile::Replace: half of the text arrives (a full disk)
  kClose,   ///< OutputFile::Close
  kSync,    ///< OutputFile::Sync, SyncName, the second half of RenameDurably
  kRename,  ///< Rename, RenameDurably
  kRemove,  ///< Remove, RemoveDirectory
  kLock,    ///< Lock: the file cannot be opened
  kMakeDirectory,
  kCut,  ///< CutTo
};

/// Files in memory for the tests, from any thread. `\` is read as `/`, "." and ".." are followed,
/// names are case-sensitive; a file can only be made in a directory that is there. The current
/// directory is "/home" at first. Open files, locked ones too, go on as they do on Linux when they
/// are renamed or deleted.
class MemoryFileSystem : public FileSystem {
 public:
  MemoryFileSystem();

  // The FileSystem.
  std::optional<std::string> ReadText(const std::string& path) override;
  std::optional<std::string> ReadPart(const std::string& path, std::uint64_t offset,
                                      std::size_t most) override;
  std::unique_ptr<OutputFile> Create(const std::string& path) override;
  NewFileAttempt CreateNew(const std::string& path, const std::string& model) override;
  std::unique_ptr<OutputFile> Append(const std::string& path) override;
  bool Exists(const std::string& path) override;
  bool IsReadable(const std::string& path) override;
  bool IsPlainFile(const std::string& path) override;
  std::string FollowLinks(const std::string& path) override;
  bool Remove(const std::string& path) override;
  bool Rename(const std::string& from, const std::string& to) override;
  bool RenameDurably(const std::string& from, const std::string& to) override;
  bool SyncName(const std::string& path) override;
  LockAttempt Lock(const std::string& path) override;
  bool IsLocked(const std::string& path) override;
  std::vector<std::string> PathsWithPrefix(const std::string& prefix) override;
  std::optional<FileStamp> Stamp(const std::string& path) override;
  bool CutTo(const std::string& path, std::uint64_t size) override;
  bool MakeDirectory(const std::string& path) override;
  bool RemoveDirectory(const std::string& path) override;
  bool ChangeDirectory(const std::string& path) override;
  std::string FullPath(const std::string& path) override;

  /// A share of a lock of such a file system, as a process gets it: it is held until the LockedFile
  /// and all shares are gone.
  static std::shared_ptr<void> ShareOf(const LockedFile& lock);

  // What a test arranges. None of these counts as an operation or can be made to fail.

  /// Makes a file with these bytes (and the directories on its way), replacing an old one.
  void Put(const std::string& path, const std::string& bytes);

  /// Puts bytes at the end of a file, as another program does, making it when it is missing.
  void PutMore(const std::string& path, const std::string& bytes);

  /// Makes a directory and those on its way.
  void PutDirectory(const std::string& path);

  /// Another process, to which the test gives a name, takes the file's lock (making the file when
  /// it is missing) and holds it until it ends.
  void HoldLock(const std::string& path, const std::string& process);
  void EndProcess(const std::string& process);

  /// The `n`-th operation of that kind from now on (1 is the next) fails, and it alone.
  void FailAt(FileOperation operation, int n);

  /// The `n`-th operation of that kind from now on fails, and every later one, until Mend.
  void FailFrom(FileOperation operation, int n);
  void Mend();

  /// New files that fail to open from now on look as if none of that name could ever be made.
  void FailAsForbidden() { fails_as_forbidden_ = true; }

  /// Every operation of that kind on this path fails, until Allow. A file that may not be opened
  /// may not be made either.
  void Deny(FileOperation operation, const std::string& path);
  void Allow(FileOperation operation, const std::string& path);

  /// The path stands for a device or the like: it is there, but no ordinary file.
  void MakeSpecial(const std::string& path);

  /// Makes a symbolic link that leads to `target`, which need not be there.
  void MakeLink(const std::string& path, const std::string& target);

  // What a test looks at.

  /// The model that CreateNew was given for the file, an absolute path; empty for any other file.
  std::string ModelOf(const std::string& path);

  /// The bytes of a file; "(no such file)" when it is missing, so that a comparison shows it.
  std::string Bytes(const std::string& path);

  /// Whether a file is there.
  bool Has(const std::string& path);

  /// Every file, as an absolute path, in the order of the names.
  std::vector<std::string> FileNames();

  /// The files deleted by Remove, in order, named as they were.
  std::vector<std::string> Removed();

  /// What was done to the files, in order, with absolute paths: "write F", "sync F", "rename F G",
  /// "remove F", "cut F", "sync names of D".
  std::vector<std::string> Changes();

  /// From now on writes everything that is done to the disk into `steps`, beginning with what is
  /// there, as on the disk. Links are not among it. `steps` must live as long as this does.
  void Record(DiskSteps& steps);

  /// The current directory, absolute, without a `/` at its end.
  std::string CurrentDirectory();

  /// How many operations of that kind have been tried since the beginning.
  int Count(FileOperation operation);

 private:
  class Stream;
  class MemoryLock;
  struct File {
    std::string bytes;
    std::string model;
    std::uint64_t identity = 0;
    std::int64_t changed = 0;  ///< counts the changes of all files
    std::weak_ptr<void> lock;  ///< alive while it is held
  };
  struct Fault {
    int done = 0;
    int fails_at = 0;    ///< the value of `done` at which the operation fails, 0 = never
    int fails_from = 0;  ///< likewise, and for good
    std::set<std::string> denied;
  };

  std::string Key(const std::string& path) const;
  /// What the links lead to from there.
  std::string Target(const std::string& key) const;
  bool Fails(FileOperation operation, const std::string& key);
  std::shared_ptr<File> OpenForWriting(const std::string& path);
  std::shared_ptr<File> MakeFile(const std::string& key);
  void Change(File& file);
  void Note(DiskStep step);
  bool IsFilePlace(const std::string& key) const;
  std::shared_ptr<File> Find(const std::string& key) const;
  void MakeParents(const std::string& key);

  std::recursive_mutex mutex_;
  std::map<std::string, std::shared_ptr<File>> files_;
  std::set<std::string> directories_;
  std::set<std::string> special_;
  std::map<std::string, std::string> links_;
  std::map<FileOperation, Fault> faults_;
  std::vector<std::string> removed_;
  std::vector<std::string> record_;
  DiskSteps* steps_ = nullptr;
  bool fails_as_forbidden_ = false;
  std::multimap<std::string, std::shared_ptr<void>> other_holders_;
  std::uint64_t last_identity_ = 0;
  std::int64_t changes_ = 0;
  std::string current_;
};

}  // namespace tarvendo
