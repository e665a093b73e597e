#include "platform/posix/full_path.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace tarvendo {
namespace {

std::vector<std::string> Components(const std::string& path) {
  std::vector<std::string> components;
  std::size_t start = 0;
  while (start < path.size()) {
    const std::size_t end = std::min(path.find('/', start), path.size());
    const std::string component = path.substr(start, end - start);
    if (!component.empty() && component != ".") components.push_back(component);
    start = end + 1;
  }
  return components;
}

}  // namespace

std::string FullHostPath(const std::string& path, const std::string& current) {
  const bool is_absolute = !path.empty() && path.front() == '/';
  std::vector<std::string> full;
  if (!is_absolute) full = Components(current);
  std::size_t known = full.size();
  for (const std::string& component : Components(path)) {
    if (component == ".." && full.size() == known && !is_absolute) {
      if (known > 0) {
        full.pop_back();
        --known;
      }
    } else {
      full.push_back(component);
    }
  }
  std::string text;
  for (const std::string& component : full) {
    text += "/" + component;
  }
  const bool ends_in_separator = !path.empty() && path.back() == '/';
  return text.empty() || ends_in_separator ? text + "/" : text;
}

}  // namespace tarvendo
