#pragma once

#include <string>

namespace tarvendo {

/// Owns a handle of the operating system and closes it; null when there is none.
class Handle {
 public:
  /// Takes either of the two values that the host's calls give for "none".
  explicit Handle(void* handle = nullptr);
  ~Handle();
  Handle(Handle&& other) noexcept;
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  Handle& operator=(Handle&&) = delete;

  bool IsOpen() const { return handle_ != nullptr; }
  void* Get() const { return handle_; }

 private:
  void* handle_;
};

/// Opens a file for reading, not passed on to child processes, while others may write, rename or
/// delete it. Not open when that is not possible or a directory has that name.
Handle OpenToRead(const std::string& path);

/// Writes all the bytes. False when they cannot all be written.
bool WriteAll(void* handle, const std::string& bytes);

}  // namespace tarvendo
