#include "base/bounded_read.h"

#include "platform/files.h"
#include "platform/line_ends.h"

namespace tarvendo {

BoundedText ReadUpTo(FileSystem& files, const std::string& path, std::size_t limit) {
  BoundedText read;
  read.text = files.ReadPart(path, 0, limit + 1);
  if (!read.text) return read;
  if (read.text->size() > limit) return {std::nullopt, true};
  FoldLineEnds(*read.text);
  return read;
}

std::string TooLongMessage(const std::string& path, std::size_t limit) {
  constexpr std::size_t kMegabyte = std::size_t{1} << 20U;
  return "The file '" + path + "' has more than " + std::to_string(limit / kMegabyte) +
         " megabytes, so it is not read.\n";
}

}  // namespace tarvendo
