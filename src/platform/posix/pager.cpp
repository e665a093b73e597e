#include "platform/posix/pager.h"

#include <poll.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <optional>
#include <string_view>

#include "platform/faults.h"
#include "platform/posix/child_setup.h"
#include "platform/posix/ctrl_c.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/termination.h"

namespace tarvendo {
namespace {

constexpr int kPromptRows = 2;
constexpr int kLookEvery = 20;  // milliseconds

bool IsInPath(std::string_view program) {
  const char* const path = std::getenv("PATH");
  std::string_view rest = path == nullptr ? "/usr/bin:/bin" : path;
  while (!rest.empty()) {
    const std::size_t end = rest.find(':');
    const std::string file = std::string(rest.substr(0, end)) + "/" + std::string(program);
    if (access(file.c_str(), X_OK) == 0) return true;
    rest = end == std::string_view::npos ? "" : rest.substr(end + 1);
  }
  return false;
}

/// A file in memory: a pager that is left early leaves nobody behind who still writes to it.
Descriptor FileWith(const std::string& text) {
  Descriptor file(memfd_create("tarvendo-page", MFD_CLOEXEC));
  if (file.IsOpen() && WriteAll(file.Get(), text)) lseek(file.Get(), 0, SEEK_SET);
  return file;
}

/// How the child ended, for waitpid's macros.
int AwaitEnd(pid_t child) {
  int status = 0;
  while (true) {
    const pid_t ended = waitpid(child, &status, WNOHANG);
    if (ended != 0 && !(ended < 0 && errno == EINTR)) return status;
    pollfd termination{TerminationDescriptor(), POLLIN, 0};
    poll(&termination, 1, kLookEvery);
    if (!TerminationRequested()) continue;
    kill(child, SIGTERM);
    throw Terminated("asked to end while the pager was running");
  }
}

}  // namespace

std::string UsersPager() {
  const char* const wish = std::getenv("PAGER");
  if (wish != nullptr) return std::string_view(wish) == "cat" ? "" : wish;
  for (const char* const usual : {"less", "more"}) {
    if (IsInPath(usual)) return usual;
  }
  return "";
}

bool IsLongerThanScreen(const std::string& text, int rows, int columns) {
  int needed = kPromptRows;
  int column = 0;
  for (const char c : text) {
    if (c == '\n' || ++column > columns) {
      ++needed;
      column = c == '\n' ? 0 : 1;
    }
  }
  return needed > rows;
}

bool RunPager(const std::string& command, const std::string& text) {
  const Descriptor page = FileWith(text);
  if (!page.IsOpen()) return false;
  const CtrlCMeans for_the_pager(CtrlC::kEndsCommand);
  ChildSetup setup;
  setup.ReadFrom(page.Get());
  std::array<std::string, 3> words = {"/bin/sh", "-c", command};
  const std::array<char*, 4> arguments = {words[0].data(), words[1].data(), words[2].data(),
                                          nullptr};
  const std::optional<pid_t> child = setup.Spawn(arguments.data());
  if (!child) return false;
  const int status = AwaitEnd(*child);
  // The shell's own codes for what it cannot run.
  return !(WIFEXITED(status) && (WEXITSTATUS(status) == 126 || WEXITSTATUS(status) == 127));
}

}  // namespace tarvendo
