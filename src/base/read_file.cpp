#include "base/read_file.h"

#include "base/log.h"
#include "platform/files.h"
#include "platform/line_ends.h"

namespace tarvendo {

std::optional<std::string> ReadFile(FileSystem& files, const std::string& path, std::size_t limit) {
  constexpr std::size_t kMegabyte = std::size_t{1} << 20U;
  std::optional<std::string> text = files.ReadPart(path, 0, limit + 1);
  if (!text) return text;
  if (text->size() > limit) {
    PrintText("The file '" + path + "' has more than " + std::to_string(limit / kMegabyte) +
              " megabytes, so it is not read.\n");
    return std::nullopt;
  }
  FoldLineEnds(*text);
  return text;
}

}  // namespace tarvendo
