#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvendo {

/// A file open for writing. Text is written in the host's text form: on Windows a line feed becomes
/// CR LF. Destroying it closes the file without reporting anything; call Close to learn the
/// outcome.
class OutputFile {
 public:
  virtual ~OutputFile() = default;

  /// False when the text could not be taken (a full disk, say). Once false, always false.
  virtual bool Write(std::string_view text) = 0;

  /// Hands everything written so far to the operating system.
  virtual bool Flush() = 0;

  /// Hands everything written so far to the operating system and waits until it is on the disk.
  /// True also for what has no place on a disk (a device, a pipe).
  virtual bool Sync() = 0;

  /// Size of the file in bytes, with what has been written so far.
  virtual std::int64_t Size() = 0;

  /// Flushes and closes. True only when every byte since the opening was taken.
  virtual bool Close() = 0;
};

/// A file that is open and whose lock is held: nobody else takes it as long as this object lives or
/// a process lives that the lock was handed to (processes.h). No other process gets it.
class LockedFile {
 public:
  virtual ~LockedFile() = default;

  /// Makes `text` the whole content of the file. False when it could not be written.
  virtual bool Replace(std::string_view text) = 0;

  /// What the host knows the open file by: a descriptor, a handle. For platform/ only.
  virtual std::intptr_t HostHandle() const = 0;
};

/// How an attempt to take a lock has ended.
struct LockAttempt {
  std::unique_ptr<LockedFile> file;  ///< null when it was not taken
  bool is_held = false;  ///< somebody else holds it; otherwise the file cannot be opened
};

/// How an attempt to make a new file has ended.
struct NewFileAttempt {
  std::unique_ptr<OutputFile> file;  ///< null when none was made
  bool is_forbidden = false;  ///< none of that name can be made in the directory, now or later
};

/// What tells two states of a file apart without reading it.
struct FileStamp {
  std::uint64_t identity = 0;  ///< of the file itself: another one after a rename
  std::int64_t size = 0;       ///< bytes
  std::int64_t changed = 0;    ///< when it was last written to, in the host's smallest unit
  friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

/// The files of the host. Paths are taken as they were typed: on Linux `\` is read as `/`.
/// May be called from any thread. Virtual, so that tests can hand in files that fail on purpose.
class FileSystem {
 public:
  virtual ~FileSystem() = default;

  /// The whole text of a file, CR LF folded to LF on every host; nothing when it cannot be opened
  /// and read (missing, a directory, no permission).
  virtual std::optional<std::string> ReadText(const std::string& path) = 0;

  /// The bytes of a file from `offset` (0-based) to its present end, but no more than `most`, as
  /// they are: also for files that another program is still writing. An offset behind the end gives
  /// an empty text, a file that cannot be read nothing.
  virtual std::optional<std::string> ReadPart(const std::string& path, std::uint64_t offset,
                                              std::size_t most) = 0;

  /// Opens for writing, emptying what is there; null when it cannot be opened.
  virtual std::unique_ptr<OutputFile> Create(const std::string& path) = 0;

  /// Makes a file that is to take the place of `model`, and opens it for writing: with the
  /// permissions (and, as far as the host lets us, the owner) of `model`, or those of any new file
  /// when there is no `model`. Its lock is held until it is destroyed (on Windows until it is
  /// closed), and a file of that name whose lock nobody holds is one that was left over and goes.
  /// No file when somebody holds it, or something else of that name is there, which stays as it is.
  virtual NewFileAttempt CreateNew(const std::string& path, const std::string& model) = 0;

  /// Opens for writing at the end, creating the file when missing; null when it cannot be opened.
  virtual std::unique_ptr<OutputFile> Append(const std::string& path) = 0;

  /// Whether anything of that name is there.
  virtual bool Exists(const std::string& path) = 0;

  /// Whether the file can be opened for reading (a directory cannot).
  virtual bool IsReadable(const std::string& path) = 0;

  /// Whether an ordinary file is there: not a directory, a device, a pipe or a symbolic link.
  virtual bool IsPlainFile(const std::string& path) = 0;

  /// The file that a symbolic link leads to in the end; the path as it was when it is no such link
  /// or leads nowhere, and on a host whose links cannot be followed.
  virtual std::string FollowLinks(const std::string& path) = 0;

  /// Deletes a file. False when it was not there or could not be deleted. Never deletes a
  /// directory.
  virtual bool Remove(const std::string& path) = 0;

  /// Renames a file, replacing an existing one in one step.
  virtual bool Rename(const std::string& from, const std::string& to) = 0;

  /// Renames in the same way and waits until the new name is on the disk. False also when it cannot
  /// be said whether it is.
  virtual bool RenameDurably(const std::string& from, const std::string& to) = 0;

  /// Waits until the name of the file, which is there, is on the disk. True on a host that sees to
  /// that by itself.
  virtual bool SyncName(const std::string& path) = 0;

  /// Opens the file (making it when it is missing, but not its directory) and takes its lock,
  /// without waiting. What is in the file stays. On Linux the lock is that of flock: it does not
  /// reach every network directory. On Windows nobody else can write to the file or delete it
  /// meanwhile.
  virtual LockAttempt Lock(const std::string& path) = 0;

  /// Whether somebody holds the file's lock, this program included. False when there is no such
  /// file.
  virtual bool IsLocked(const std::string& path) = 0;

  /// The paths of all files (of any kind but directories) whose path begins with `prefix`, which
  /// may end in the middle of a name: for "/t\g" perhaps "/t\g1.BAT" and "/t\g1.run", in the order
  /// of their names. Nothing when the directory cannot be read.
  virtual std::vector<std::string> PathsWithPrefix(const std::string& prefix) = 0;

  /// Nothing when there is no such file.
  virtual std::optional<FileStamp> Stamp(const std::string& path) = 0;

  /// Cuts a file to its first `size` bytes and waits until that is on the disk. False when it has
  /// fewer, or when that is not possible.
  virtual bool CutTo(const std::string& path, std::uint64_t size) = 0;

  /// Makes a directory; true also when it is there already.
  virtual bool MakeDirectory(const std::string& path) = 0;

  /// Deletes an empty directory. False when it was not there or could not be deleted.
  virtual bool RemoveDirectory(const std::string& path) = 0;

  virtual bool ChangeDirectory(const std::string& path) = 0;

  /// The path made absolute against the current directory; as it was when that is not possible.
  virtual std::string FullPath(const std::string& path) = 0;
};

/// The real files.
std::unique_ptr<FileSystem> MakeFileSystem();

}  // namespace tarvendo
