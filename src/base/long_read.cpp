#include "base/long_read.h"

#include <algorithm>

#include "platform/faults.h"
#include "platform/files.h"
#include "platform/line_ends.h"

namespace tarvendo {
namespace {

constexpr std::size_t kReadAtOnce = std::size_t{1} << 24U;

/// At most `most` bytes of the file; nothing when it cannot be read.
std::optional<std::string> ReadInParts(FileSystem& files, const std::string& path,
                                       std::size_t most) {
  std::string text;
  while (text.size() < most) {
    EndWhenAsked();
    const std::size_t wanted = std::min(kReadAtOnce, most - text.size());
    const auto part = files.ReadPart(path, text.size(), wanted);
    if (!part) return std::nullopt;
    text += *part;
    if (part->size() < wanted) break;
  }
  return text;
}

}  // namespace

BoundedText ReadLongFile(FileSystem& files, const std::string& path, std::size_t limit) {
  const auto stamp = files.Stamp(path);
  BoundedText read{ReadInParts(files, path, limit + 1)};
  // Somebody has replaced the file meanwhile, and parts of two files make none. Nobody does that
  // again so soon, so now it is read in one piece.
  if (read.text && read.text->size() > kReadAtOnce && files.Stamp(path) != stamp) {
    return ReadUpTo(files, path, limit);
  }
  if (!read.text) return read;
  if (read.text->size() > limit) return {std::nullopt, true};
  EndWhenAsked();
  FoldLineEnds(*read.text);
  return read;
}

}  // namespace tarvendo
