#pragma once

#include <string>

namespace tarvendo {

/// Owns a file descriptor and closes it; negative when there is none.
class Descriptor {
 public:
  explicit Descriptor(int descriptor = -1) : descriptor_(descriptor) {}
  ~Descriptor();
  Descriptor(Descriptor&& other) noexcept;
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  Descriptor& operator=(Descriptor&&) = delete;

  bool IsOpen() const { return descriptor_ >= 0; }
  int Get() const { return descriptor_; }

  /// Gives it out of hand, without closing it.
  void Release() { descriptor_ = -1; }

 private:
  int descriptor_;
};

/// Opens a host path for reading, not passed on to child processes. Not open when that is not
/// possible or a directory has that name.
Descriptor OpenToRead(const std::string& host_path);

/// Waits until what was written is on the disk. True also for what has no place on one.
bool SyncDescriptor(int descriptor);

/// Writes all the bytes, waiting where the other side is slow. False when they cannot all be
/// written.
bool WriteAll(int descriptor, const std::string& bytes);

}  // namespace tarvendo
