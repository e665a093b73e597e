#include "platform/windows/directory.h"

#include <windows.h>

#include <algorithm>
#include <cstring>

namespace tarvendo {
namespace {

/// The host also finds names by their short forms, which are others.
bool IsWanted(const WIN32_FIND_DATAA& found, const std::string& beginning) {
  const char* const name = static_cast<const char*>(found.cFileName);
  return (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0 &&
         _strnicmp(name, beginning.c_str(), beginning.size()) == 0;
}

}  // namespace

std::vector<std::string> HostPathsWithPrefix(const std::string& prefix) {
  constexpr const char* kNeverInNames = "*?<>\"|";
  const bool has_nul = prefix.find('\0') != std::string::npos;
  if (has_nul || prefix.find_first_of(kNeverInNames) != std::string::npos) return {};
  const std::size_t separator = prefix.find_last_of("\\/:");
  const std::size_t name_at = separator == std::string::npos ? 0 : separator + 1;
  const std::string beginning = prefix.substr(name_at);
  WIN32_FIND_DATAA found{};
  const HANDLE search = FindFirstFileA((prefix + "*").c_str(), &found);
  std::vector<std::string> paths;
  if (search == INVALID_HANDLE_VALUE) return paths;
  do {
    if (!IsWanted(found, beginning)) continue;
    paths.push_back(prefix.substr(0, name_at) + static_cast<const char*>(found.cFileName));
  } while (FindNextFileA(search, &found) != 0);
  FindClose(search);
  std::sort(paths.begin(), paths.end());
  return paths;
}

}  // namespace tarvendo
