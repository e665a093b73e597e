#include "platform/doorbell.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

#include "platform/faults.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/termination.h"

namespace tarvendo {
namespace {

std::array<int, 2> MakePipe() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
    throw std::system_error(errno, std::generic_category(), "pipe2");
  }
  return ends;
}

/// The span as poll takes it; a shorter one than was asked for where that has no room.
int PollSpan(std::chrono::milliseconds span) {
  if (span == Doorbell::kForEver) return -1;
  constexpr std::chrono::milliseconds::rep kMost = 3600000;
  return static_cast<int>(std::clamp<std::chrono::milliseconds::rep>(span.count(), 0, kMost));
}

class PipeDoorbell : public Doorbell {
 public:
  PipeDoorbell() : PipeDoorbell(MakePipe()) {}

  void Ring() override {
    const char byte = 'R';
    // When the pipe is full, it has been rung often enough.
    while (write(write_end_.Get(), &byte, 1) < 0 && errno == EINTR) {
    }
  }

  void Await(std::chrono::milliseconds span) override {
    std::array<pollfd, 2> sources{};
    sources[0] = {read_end_.Get(), POLLIN, 0};
    sources[1] = {TerminationDescriptor(), POLLIN, 0};
    const int wait = PollSpan(span);
    while (!TerminationRequested() && sources[0].revents == 0) {
      const int found = poll(sources.data(), sources.size(), wait);
      if (found == 0 || (found < 0 && errno != EINTR)) return;
    }
    std::array<char, 64> rings{};
    while (read(read_end_.Get(), rings.data(), rings.size()) > 0) {
    }
  }

 private:
  explicit PipeDoorbell(const std::array<int, 2>& ends) : read_end_(ends[0]), write_end_(ends[1]) {}

  Descriptor read_end_;
  Descriptor write_end_;
};

}  // namespace

std::unique_ptr<Doorbell> MakeDoorbell() {
  return std::make_unique<PipeDoorbell>();
}

}  // namespace tarvendo
