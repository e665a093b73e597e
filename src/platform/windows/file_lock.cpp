// The lock of a file is a handle that lets others read, but neither write nor delete. A process
// that has inherited the handle holds it as well.
#include "platform/windows/file_lock.h"

#include <windows.h>

#include <utility>

#include "platform/line_ends.h"
#include "platform/windows/handle.h"

namespace tarvendo {
namespace {

/// Who looks whether the file is locked, or indexes or scans it, has it open for a moment.
constexpr int kTries = 5;

class WindowsLockedFile : public LockedFile {
 public:
  explicit WindowsLockedFile(Handle file) : file_(std::move(file)) {}

  bool Replace(std::string_view text) override {
    // What was there before is cut off last: a full disk leaves more than nothing.
    LARGE_INTEGER beginning{};
    return SetFilePointerEx(file_.Get(), beginning, nullptr, FILE_BEGIN) != 0 &&
           WriteAll(file_.Get(), WithCrLf(text)) && SetEndOfFile(file_.Get()) != 0;
  }

  std::intptr_t HostHandle() const override { return reinterpret_cast<std::intptr_t>(file_.Get()); }

 private:
  Handle file_;
};

Handle Open(const std::string& path, DWORD access, DWORD sharing, DWORD disposition) {
  return Handle(CreateFileA(path.c_str(), access, sharing, nullptr, disposition,
                            FILE_ATTRIBUTE_NORMAL, nullptr));
}

bool IsFile(const Handle& file) {
  return file.IsOpen() && GetFileType(file.Get()) == FILE_TYPE_DISK;
}

}  // namespace

LockAttempt LockHostFile(const std::string& path) {
  for (int i = 0; i < kTries; ++i) {
    Handle file = Open(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, OPEN_ALWAYS);
    if (IsFile(file)) return {std::make_unique<WindowsLockedFile>(std::move(file)), false};
    if (file.IsOpen() || GetLastError() != ERROR_SHARING_VIOLATION) return {};
    Sleep(1);
  }
  return {nullptr, true};
}

bool IsHostFileLocked(const std::string& path) {
  constexpr DWORD kEverything = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const Handle file = Open(path, GENERIC_WRITE, kEverything, OPEN_EXISTING);
  return !file.IsOpen() && GetLastError() == ERROR_SHARING_VIOLATION;
}

}  // namespace tarvendo
