#include "platform/terminal.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "platform/paths.h"
#include "platform/plain_terminal.h"
#include "platform/posix/directory.h"
#include "platform/posix/user_terminal.h"

namespace tarvendo {

std::unique_ptr<Terminal> MakeTerminal() {
  const bool is_for_user = isatty(STDIN_FILENO) != 0 && isatty(STDOUT_FILENO) != 0;
  if (!is_for_user) return std::make_unique<PlainTerminal>();
  return std::make_unique<UserTerminal>();
}

std::vector<std::string> NamesInDirectory(const std::string& directory) {
  const std::string name = directory.empty() ? "." : HostPath(directory);
  const OpenedDirectory opened(opendir(name.c_str()));
  std::vector<std::string> names;
  while (opened) {
    const dirent* const entry = readdir(opened.get());
    if (entry == nullptr) break;
    std::string found = static_cast<const char*>(entry->d_name);
    if (found == "." || found == "..") continue;
    struct stat status {};
    const bool is_directory =
        fstatat(dirfd(opened.get()), found.c_str(), &status, 0) == 0 && S_ISDIR(status.st_mode);
    names.push_back(is_directory ? found + "/" : found);
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string StateDirectory() {
  // By the convention for such directories one that is not a full path does not count.
  const char* const told = std::getenv("XDG_STATE_HOME");
  if (told != nullptr && *told == '/') return std::string(told) + "/";
  const char* const home = std::getenv("HOME");
  if (home != nullptr && *home == '/') return std::string(home) + "/.local/state/";
  return "";
}

}  // namespace tarvendo
