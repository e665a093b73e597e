#include "platform/input.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <utility>

#include "platform/faults.h"
#include "platform/folding_input.h"
#include "platform/paths.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/termination.h"

namespace tarvendo {
namespace {

/// A read that fails is an end: a terminal that has gone away does not come back.
std::size_t ReadSome(int descriptor, char* to, std::size_t room) {
  ssize_t count = 0;
  do {
    count = read(descriptor, to, room);
  } while (count < 0 && errno == EINTR);
  return count < 0 ? 0 : static_cast<std::size_t>(count);
}

/// Waits until the source has something to say, its end included.
void AwaitInput(int descriptor) {
  std::array<pollfd, 2> sources{};
  sources[0] = {descriptor, POLLIN, 0};
  sources[1] = {TerminationDescriptor(), POLLIN, 0};
  do {
    sources[0].revents = 0;
    const bool failed = poll(sources.data(), sources.size(), -1) < 0 && errno != EINTR;
    if (TerminationRequested()) throw Terminated("asked to end while waiting for input");
    if (failed) return;  // Then the read itself waits.
  } while (sources[0].revents == 0);
}

class DescriptorInput : public FoldingInput {
 public:
  explicit DescriptorInput(int descriptor) : descriptor_(descriptor) {}

 protected:
  std::size_t Fill(char* to, std::size_t room) override {
    AwaitInput(descriptor_);
    return ReadSome(descriptor_, to, room);
  }

 private:
  int descriptor_;
};

class Script : public DescriptorInput {
 public:
  explicit Script(Descriptor file) : DescriptorInput(file.Get()), file_(std::move(file)) {}

 private:
  Descriptor file_;
};

}  // namespace

std::unique_ptr<InputStream> OpenKeyboard() {
  return std::make_unique<DescriptorInput>(STDIN_FILENO);
}

std::unique_ptr<InputStream> OpenScript(const std::string& path) {
  Descriptor file = OpenToRead(HostPath(path));
  if (!file.IsOpen()) return nullptr;
  return std::make_unique<Script>(std::move(file));
}

void WriteConsole(const std::string& text) {
  WriteAll(STDOUT_FILENO, text);
}

void WriteConsoleError(const std::string& text) {
  WriteAll(STDERR_FILENO, text);
}

int ColumnsOfError() {
  constexpr int kUsual = 80;
  if (isatty(STDERR_FILENO) == 0) return 0;
  winsize size{};
  const bool is_told = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  return is_told ? size.ws_col : kUsual;
}

bool IsOutputTerminal() {
  return isatty(STDOUT_FILENO) != 0;
}

}  // namespace tarvendo
