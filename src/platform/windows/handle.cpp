#include "platform/windows/handle.h"

#include <windows.h>

#include <algorithm>
#include <utility>

namespace tarvendo {

Handle::Handle(void* handle) : handle_(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}

Handle::~Handle() {
  if (IsOpen()) CloseHandle(handle_);
}

Handle::Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}

Handle OpenToRead(const std::string& path) {
  return Handle(CreateFileA(path.c_str(), GENERIC_READ,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

bool WriteAll(void* handle, const std::string& bytes) {
  // A console takes no more than some 60,000 bytes at a time.
  constexpr std::size_t kMost = 16384;
  std::size_t written = 0;
  while (written < bytes.size()) {
    const auto room = static_cast<DWORD>(std::min(bytes.size() - written, kMost));
    DWORD count = 0;
    if (WriteFile(handle, bytes.data() + written, room, &count, nullptr) == 0 || count == 0) {
      return false;
    }
    written += count;
  }
  return true;
}

}  // namespace tarvendo
