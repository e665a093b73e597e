#include "platform/line_ends.h"

#include <cstddef>

namespace tarvendo {

void FoldLineEnds(std::string& text) {
  std::size_t kept = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool before_line_feed = i + 1 < text.size() && text[i + 1] == '\n';
    if (text[i] != '\r' || !before_line_feed) text[kept++] = text[i];
  }
  text.resize(kept);
}

std::string WithCrLf(std::string_view text) {
  std::string result;
  result.reserve(text.size() + text.size() / 16);
  for (const char c : text) {
    if (c == '\n') result += '\r';
    result += c;
  }
  return result;
}

}  // namespace tarvendo
