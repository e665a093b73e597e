#include "platform/paths.h"

#include <unistd.h>

#include <algorithm>
#include <vector>

namespace tarvendo {

std::string HostPath(std::string path) {
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

bool IsBareName(const std::string& name) {
  return LastSeparator(name) == std::string::npos;
}

std::size_t LastSeparator(const std::string& path) {
  return path.find_last_of("\\/");
}

std::string ExecutablePath() {
  std::vector<char> buffer(256);
  ssize_t length = 0;
  while ((length = readlink("/proc/self/exe", buffer.data(), buffer.size())) ==
         static_cast<ssize_t>(buffer.size())) {
    buffer.resize(buffer.size() * 2);  // A name that fills the buffer may have been cut.
  }
  return {buffer.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0))};
}

std::string ExecutableDirectory() {
  const std::string path = ExecutablePath();
  const std::size_t separator = path.rfind('/');
  return separator == std::string::npos ? "./" : path.substr(0, separator + 1);
}

}  // namespace tarvendo
