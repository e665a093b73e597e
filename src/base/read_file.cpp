#include "base/read_file.h"

#include <utility>

#include "base/log.h"

namespace tarvendo {

std::optional<std::string> ReadFile(FileSystem& files, const std::string& path, std::size_t limit) {
  BoundedText read = ReadUpTo(files, path, limit);
  if (read.is_too_long) PrintText(TooLongMessage(path, limit));
  return std::move(read.text);
}

}  // namespace tarvendo
