#include "platform/files.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "platform/line_ends.h"
#include "platform/windows/directory.h"
#include "platform/windows/file_lock.h"
#include "platform/windows/handle.h"

#undef RemoveDirectory  // The host's header gives this name to another function.

namespace tarvendo {
namespace {

/// The path for a system call. A name with a NUL byte in it names nothing, as an empty one does:
/// what stands before the NUL is another file.
std::string CallPath(const std::string& path) {
  return path.find('\0') == std::string::npos ? path : std::string();
}

class BufferedFile : public OutputFile {
 public:
  explicit BufferedFile(Handle file) : file_(std::make_unique<Handle>(std::move(file))) {}
  ~BufferedFile() override { WriteBuffer(); }
  BufferedFile(const BufferedFile&) = delete;
  BufferedFile& operator=(const BufferedFile&) = delete;

  bool Write(std::string_view text) override {
    buffer_ += WithCrLf(text);
    return buffer_.size() < kEnough ? Keep(file_ != nullptr) : Flush();
  }

  bool Flush() override { return WriteBuffer(); }

  bool Sync() override {
    // What has no place on a disk has nothing to be flushed.
    return Flush() &&
           Keep(FlushFileBuffers(file_->Get()) != 0 || GetFileType(file_->Get()) != FILE_TYPE_DISK);
  }

  std::int64_t Size() override {
    LARGE_INTEGER size{};
    if (!Flush() || GetFileSizeEx(file_->Get(), &size) == 0) return 0;
    return size.QuadPart;
  }

  bool Close() override {
    WriteBuffer();
    if (file_ == nullptr) Keep(false);
    file_.reset();
    return taken_;
  }

 private:
  static constexpr std::size_t kEnough = 65536;

  bool WriteBuffer() {
    const bool written = file_ != nullptr && WriteAll(file_->Get(), buffer_);
    buffer_.clear();
    return Keep(written);
  }

  /// Keeps the first failure for Close: what was lost once stays lost.
  bool Keep(bool succeeded) {
    taken_ = taken_ && succeeded;
    return taken_;
  }

  std::unique_ptr<Handle> file_;
  std::string buffer_;
  bool taken_ = true;
};

std::unique_ptr<OutputFile> OpenToWrite(const std::string& path, DWORD access, DWORD disposition) {
  Handle file(CreateFileA(CallPath(path).c_str(), access | FILE_READ_ATTRIBUTES | SYNCHRONIZE,
                          FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, disposition,
                          FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.IsOpen()) return nullptr;
  return std::make_unique<BufferedFile>(std::move(file));
}

constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();

/// Reads to the end, but no more than `most` bytes.
std::optional<std::string> ReadOn(const Handle& file, std::size_t most) {
  std::string text;
  std::array<char, 65536> buffer;
  while (text.size() < most) {
    const auto wanted = static_cast<DWORD>(std::min(buffer.size(), most - text.size()));
    DWORD count = 0;
    if (ReadFile(file.Get(), buffer.data(), wanted, &count, nullptr) == 0) return std::nullopt;
    if (count == 0) break;
    text.append(buffer.data(), count);
  }
  return text;
}

/// The attributes of a file that takes the place of `model`. The access rights are those that the
/// directory gives to its files.
DWORD AttributesLike(const std::string& model) {
  constexpr DWORD kKept =
      FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
  const DWORD attributes = GetFileAttributesA(CallPath(model).c_str());
  const DWORD kept = attributes == INVALID_FILE_ATTRIBUTES ? 0 : attributes & kKept;
  return kept == 0 ? FILE_ATTRIBUTE_NORMAL : kept;
}

/// A file that nobody else can write to or delete as long as it is open.
NewFileAttempt MakeNewFile(const std::string& path, DWORD attributes) {
  Handle file(CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW,
                          attributes, nullptr));
  if (file.IsOpen()) return {std::make_unique<BufferedFile>(std::move(file))};
  const DWORD error = GetLastError();
  const bool is_there = GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
  return {nullptr, !is_there && (error == ERROR_ACCESS_DENIED || error == ERROR_WRITE_PROTECT ||
                                 error == ERROR_FILENAME_EXCED_RANGE)};
}

std::optional<FileStamp> StampOf(const std::string& path) {
  constexpr DWORD kEverybody = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const Handle file(CreateFileA(path.c_str(), FILE_READ_ATTRIBUTES, kEverybody, nullptr,
                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  BY_HANDLE_FILE_INFORMATION about{};
  if (!file.IsOpen() || GetFileInformationByHandle(file.Get(), &about) == 0) return std::nullopt;
  const auto joined = [](std::uint64_t high, std::uint64_t low) { return (high << 32) | low; };
  // A number of a file is unique on its volume only.
  const std::uint64_t volume = about.dwVolumeSerialNumber * 0x9E3779B97F4A7C15ULL;
  const auto written = about.ftLastWriteTime;
  return FileStamp{
      joined(about.nFileIndexHigh, about.nFileIndexLow) ^ volume,
      static_cast<std::int64_t>(joined(about.nFileSizeHigh, about.nFileSizeLow)),
      static_cast<std::int64_t>(joined(written.dwHighDateTime, written.dwLowDateTime))};
}

class WindowsFileSystem : public FileSystem {
 public:
  std::optional<std::string> ReadText(const std::string& path) override {
    const Handle file = OpenToRead(CallPath(path));
    if (!file.IsOpen()) return std::nullopt;
    std::optional<std::string> text = ReadOn(file, kNoLimit);
    if (text) FoldLineEnds(*text);
    return text;
  }

  std::optional<std::string> ReadPart(const std::string& path, std::uint64_t offset,
                                      std::size_t most) override {
    const Handle file = OpenToRead(CallPath(path));
    if (!file.IsOpen()) return std::nullopt;
    if (offset > static_cast<std::uint64_t>(std::numeric_limits<LONGLONG>::max())) return "";
    LARGE_INTEGER position{};
    position.QuadPart = static_cast<LONGLONG>(offset);
    if (SetFilePointerEx(file.Get(), position, nullptr, FILE_BEGIN) == 0) return std::nullopt;
    return ReadOn(file, most);
  }

  std::unique_ptr<OutputFile> Create(const std::string& path) override {
    return OpenToWrite(path, GENERIC_WRITE, CREATE_ALWAYS);
  }

  NewFileAttempt CreateNew(const std::string& path, const std::string& model) override {
    const std::string name = CallPath(path);
    // One that somebody has open is not deleted.
    if (IsPlainFile(path)) DeleteFileA(name.c_str());
    return MakeNewFile(name, AttributesLike(model));
  }

  std::unique_ptr<OutputFile> Append(const std::string& path) override {
    return OpenToWrite(path, FILE_APPEND_DATA, OPEN_ALWAYS);
  }

  bool Exists(const std::string& path) override {
    return GetFileAttributesA(CallPath(path).c_str()) != INVALID_FILE_ATTRIBUTES;
  }

  bool IsReadable(const std::string& path) override { return OpenToRead(CallPath(path)).IsOpen(); }

  bool IsPlainFile(const std::string& path) override {
    constexpr DWORD kOther =
        FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE | FILE_ATTRIBUTE_REPARSE_POINT;
    const std::string name = CallPath(path);
    const DWORD attributes = GetFileAttributesA(name.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & kOther) != 0) return false;
    const Handle file = OpenToRead(name);  // NUL and its kind have attributes as well.
    return !file.IsOpen() || GetFileType(file.Get()) == FILE_TYPE_DISK;
  }

  std::string FollowLinks(const std::string& path) override { return path; }

  bool Remove(const std::string& path) override { return DeleteFileA(CallPath(path).c_str()) != 0; }

  bool Rename(const std::string& from, const std::string& to) override {
    return MoveFileExA(CallPath(from).c_str(), CallPath(to).c_str(), MOVEFILE_REPLACE_EXISTING) !=
           0;
  }

  bool RenameDurably(const std::string& from, const std::string& to) override {
    return MoveFileExA(CallPath(from).c_str(), CallPath(to).c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
  }

  /// The file system keeps its names in a log of its own, and a flushed file has its name there.
  bool SyncName(const std::string& /*path*/) override { return true; }

  LockAttempt Lock(const std::string& path) override { return LockHostFile(CallPath(path)); }

  bool IsLocked(const std::string& path) override { return IsHostFileLocked(CallPath(path)); }

  std::vector<std::string> PathsWithPrefix(const std::string& prefix) override {
    return HostPathsWithPrefix(prefix);
  }

  std::optional<FileStamp> Stamp(const std::string& path) override {
    return StampOf(CallPath(path));
  }

  bool CutTo(const std::string& path, std::uint64_t size) override {
    const Handle file(CreateFileA(CallPath(path).c_str(), GENERIC_WRITE,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER present{};
    LARGE_INTEGER wanted{};
    wanted.QuadPart = static_cast<LONGLONG>(size);
    return file.IsOpen() && GetFileSizeEx(file.Get(), &present) != 0 &&
           size <= static_cast<std::uint64_t>(present.QuadPart) &&
           SetFilePointerEx(file.Get(), wanted, nullptr, FILE_BEGIN) != 0 &&
           SetEndOfFile(file.Get()) != 0 && FlushFileBuffers(file.Get()) != 0;
  }

  bool MakeDirectory(const std::string& path) override {
    const std::string name = CallPath(path);
    if (CreateDirectoryA(name.c_str(), nullptr) != 0) return true;
    if (GetLastError() != ERROR_ALREADY_EXISTS) return false;
    const DWORD attributes = GetFileAttributesA(name.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  }

  bool RemoveDirectory(const std::string& path) override {
    return RemoveDirectoryA(CallPath(path).c_str()) != 0;
  }

  bool ChangeDirectory(const std::string& path) override {
    const std::string name = CallPath(path);
    return !name.empty() && SetCurrentDirectoryA(name.c_str()) != 0;
  }

  std::string FullPath(const std::string& path) override {
    const std::string name = CallPath(path);
    const DWORD room = name.empty() ? 0 : GetFullPathNameA(name.c_str(), 0, nullptr, nullptr);
    if (room == 0) return path;
    std::string full(room, '\0');
    const DWORD length = GetFullPathNameA(name.c_str(), room, full.data(), nullptr);
    if (length == 0 || length >= room) return path;
    full.resize(length);
    return full;
  }
};

}  // namespace

std::unique_ptr<FileSystem> MakeFileSystem() {
  return std::make_unique<WindowsFileSystem>();
}

}  // namespace tarvendo
