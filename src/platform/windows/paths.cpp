#include "platform/paths.h"

#include <windows.h>

#include <vector>

namespace tarvendo {

std::string HostPath(std::string path) {
  return path;
}

bool IsBareName(const std::string& name) {
  return LastSeparator(name) == std::string::npos;
}

std::size_t LastSeparator(const std::string& path) {
  return path.rfind('\\');
}

std::string ExecutablePath() {
  std::vector<char> buffer(MAX_PATH);
  DWORD length = 0;
  while ((length = GetModuleFileNameA(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()))) ==
         buffer.size()) {
    buffer.resize(buffer.size() * 2);  // A name that fills the buffer may have been cut.
  }
  return {buffer.data(), length};
}

std::string ExecutableDirectory() {
  const std::string path = ExecutablePath();
  const std::size_t separator = LastSeparator(path);
  return separator == std::string::npos ? ".\\" : path.substr(0, separator + 1);
}

}  // namespace tarvendo
