#include "platform/posix/directory.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <string_view>

#include "platform/paths.h"

namespace tarvendo {
namespace {

/// Whether the entry can be spoken of by a path: a backslash in its name would be read as a
/// separator.
bool IsWanted(DIR* directory, const char* entry, const std::string& beginning) {
  const std::string_view name = entry;
  if (name.substr(0, beginning.size()) != beginning) return false;
  if (name.find('\\') != std::string_view::npos) return false;
  struct stat status {};
  return fstatat(dirfd(directory), entry, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
         !S_ISDIR(status.st_mode);
}

}  // namespace

std::vector<std::string> HostPathsWithPrefix(const std::string& prefix) {
  if (prefix.find('\0') != std::string::npos) return {};
  const std::size_t separator = LastSeparator(prefix);
  const std::size_t name_at = separator == std::string::npos ? 0 : separator + 1;
  const std::string typed_directory = prefix.substr(0, name_at);
  const std::string name = name_at == 0 ? "." : HostPath(typed_directory);
  const OpenedDirectory directory(opendir(name.c_str()));
  std::vector<std::string> paths;
  while (directory) {
    const dirent* const entry = readdir(directory.get());
    if (entry == nullptr) break;
    const char* const entry_name = static_cast<const char*>(entry->d_name);
    if (IsWanted(directory.get(), entry_name, prefix.substr(name_at))) {
      paths.push_back(typed_directory + entry_name);
    }
  }
  std::sort(paths.begin(), paths.end());
  return paths;
}

}  // namespace tarvendo
