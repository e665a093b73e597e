#include "platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "platform/line_ends.h"
#include "platform/paths.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/directory.h"
#include "platform/posix/file_lock.h"
#include "platform/posix/full_path.h"
#include "platform/posix/new_file.h"
#include "platform/posix/stdio_file.h"

namespace tarvendo {
namespace {

/// The path for a system call. A name with a NUL byte in it names nothing, as an empty one does:
/// what stands before the NUL is another file.
std::string CallPath(const std::string& path) {
  return path.find('\0') == std::string::npos ? HostPath(path) : std::string();
}

constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();

/// Reads to the end, but no more than `most` bytes.
std::optional<std::string> ReadOn(int descriptor, std::size_t most) {
  std::string text;
  std::array<char, 65536> buffer;
  while (text.size() < most) {
    const ssize_t count =
        read(descriptor, buffer.data(), std::min(buffer.size(), most - text.size()));
    if (count == 0) break;
    if (count > 0) {
      text.append(buffer.data(), static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      return std::nullopt;
    }
  }
  return text;
}

class PosixFileSystem : public FileSystem {
 public:
  std::optional<std::string> ReadText(const std::string& path) override {
    const Descriptor file = OpenToRead(CallPath(path));
    if (!file.IsOpen()) return std::nullopt;
    std::optional<std::string> text = ReadOn(file.Get(), kNoLimit);
    if (text) FoldLineEnds(*text);
    return text;
  }

  std::optional<std::string> ReadPart(const std::string& path, std::uint64_t offset,
                                      std::size_t most) override {
    const Descriptor file = OpenToRead(CallPath(path));
    if (!file.IsOpen()) return std::nullopt;
    if (offset > static_cast<std::uint64_t>(std::numeric_limits<off_t>::max())) return "";
    if (lseek(file.Get(), static_cast<off_t>(offset), SEEK_SET) < 0) return std::nullopt;
    return ReadOn(file.Get(), most);
  }

  std::unique_ptr<OutputFile> Create(const std::string& path) override {
    return OpenStdioFile(CallPath(path), "we");
  }

  NewFileAttempt CreateNew(const std::string& path, const std::string& model) override {
    return MakeNewFile(CallPath(path), CallPath(model));
  }

  std::unique_ptr<OutputFile> Append(const std::string& path) override {
    return OpenStdioFile(CallPath(path), "ae");
  }

  bool Exists(const std::string& path) override {
    struct stat status {};
    return lstat(CallPath(path).c_str(), &status) == 0;
  }

  bool IsReadable(const std::string& path) override {
    struct stat status {};
    const std::string name = CallPath(path);
    return access(name.c_str(), R_OK) == 0 && stat(name.c_str(), &status) == 0 &&
           !S_ISDIR(status.st_mode);
  }

  bool IsPlainFile(const std::string& path) override {
    struct stat status {};
    return lstat(CallPath(path).c_str(), &status) == 0 && S_ISREG(status.st_mode);
  }

  std::string FollowLinks(const std::string& path) override {
    struct stat status {};
    const std::string name = CallPath(path);
    if (lstat(name.c_str(), &status) != 0 || !S_ISLNK(status.st_mode)) return path;
    const std::unique_ptr<char, void (*)(void*)> target(realpath(name.c_str(), nullptr), std::free);
    // A backslash in it would be read as a separator and lead to another file.
    if (!target || std::strchr(target.get(), '\\') != nullptr) return path;
    return target.get();
  }

  bool Remove(const std::string& path) override { return unlink(CallPath(path).c_str()) == 0; }

  bool Rename(const std::string& from, const std::string& to) override {
    return rename(CallPath(from).c_str(), CallPath(to).c_str()) == 0;
  }

  bool RenameDurably(const std::string& from, const std::string& to) override {
    return Rename(from, to) && SyncDirectoryOf(CallPath(to));
  }

  bool SyncName(const std::string& path) override { return SyncDirectoryOf(CallPath(path)); }

  LockAttempt Lock(const std::string& path) override { return LockHostFile(CallPath(path)); }

  bool IsLocked(const std::string& path) override { return IsHostFileLocked(CallPath(path)); }

  std::vector<std::string> PathsWithPrefix(const std::string& prefix) override {
    return HostPathsWithPrefix(prefix);
  }

  std::optional<FileStamp> Stamp(const std::string& path) override {
    struct stat status {};
    if (stat(CallPath(path).c_str(), &status) != 0 || S_ISDIR(status.st_mode)) return std::nullopt;
    // A number of a file is unique on its device only.
    const std::uint64_t device = static_cast<std::uint64_t>(status.st_dev) * 0x9E3779B97F4A7C15ULL;
    constexpr std::int64_t kNanoseconds = 1000000000;
    return FileStamp{static_cast<std::uint64_t>(status.st_ino) ^ device, status.st_size,
                     status.st_mtim.tv_sec * kNanoseconds + status.st_mtim.tv_nsec};
  }

  bool CutTo(const std::string& path, std::uint64_t size) override {
    const Descriptor file(open(CallPath(path).c_str(), O_WRONLY | O_CLOEXEC));
    struct stat status {};
    return file.IsOpen() && fstat(file.Get(), &status) == 0 &&
           size <= static_cast<std::uint64_t>(status.st_size) &&
           ftruncate(file.Get(), static_cast<off_t>(size)) == 0 && SyncDescriptor(file.Get());
  }

  bool MakeDirectory(const std::string& path) override {
    struct stat status {};
    const std::string name = CallPath(path);
    if (mkdir(name.c_str(), 0777) == 0) return true;
    return errno == EEXIST && stat(name.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
  }

  bool RemoveDirectory(const std::string& path) override {
    return rmdir(CallPath(path).c_str()) == 0;
  }

  bool ChangeDirectory(const std::string& path) override {
    return chdir(CallPath(path).c_str()) == 0;
  }

  std::string FullPath(const std::string& path) override {
    const std::string name = CallPath(path);
    std::array<char, PATH_MAX> current;
    if (name.empty() || getcwd(current.data(), current.size()) == nullptr) return path;
    return FullHostPath(name, current.data());
  }
};

}  // namespace

std::unique_ptr<FileSystem> MakeFileSystem() {
  return std::make_unique<PosixFileSystem>();
}

}  // namespace tarvendo
