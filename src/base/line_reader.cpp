#include "base/line_reader.h"

#include <algorithm>

namespace tarvendo {

std::optional<std::string> LineReader::Read(std::size_t size) {
  const std::string_view rest = text_.substr(position_);
  const std::size_t feed = rest.substr(0, size).find('\n');
  const std::size_t length =
      feed == std::string_view::npos ? std::min(size, rest.size()) : feed + 1;
  // Like fgets, a read that fills its buffer has not yet looked behind it.
  if (feed == std::string_view::npos && rest.size() < size) at_end_ = true;
  if (length == 0) return std::nullopt;
  is_first_piece_ = position_ == 0 || text_[position_ - 1] == '\n';
  position_ += length;
  const std::string_view piece = rest.substr(0, length);
  return std::string(piece.substr(0, std::min(piece.find('\0'), length)));
}

int LineReader::ReadByte() {
  if (position_ >= text_.size()) {
    at_end_ = true;
    return -1;
  }
  return static_cast<unsigned char>(text_[position_++]);
}

std::string WithoutLineFeed(std::string line) {
  if (!line.empty() && line.back() == '\n') line.pop_back();
  return line;
}

}  // namespace tarvendo
