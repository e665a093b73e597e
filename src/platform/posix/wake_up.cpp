#include "platform/posix/wake_up.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>

namespace tarvendo {

WakeUp::WakeUp() : event_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

void WakeUp::Wake() const {
  const std::uint64_t one = 1;
  // It can fail only when the counter is full, and then the thread is awake already.
  while (write(event_.Get(), &one, sizeof(one)) < 0 && errno == EINTR) {
  }
}

void WakeUp::Drain() const {
  std::uint64_t count = 0;
  while (read(event_.Get(), &count, sizeof(count)) < 0 && errno == EINTR) {
  }
}

}  // namespace tarvendo
