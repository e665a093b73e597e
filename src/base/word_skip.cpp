#include "base/word_skip.h"

namespace tarvendo {

std::optional<std::size_t> SkipWord(std::string_view line, std::size_t position) {
  if (position >= line.size()) return position;
  const std::size_t blank = line.find(' ', position);
  if (blank == std::string_view::npos) return std::nullopt;
  const std::size_t word = line.find_first_not_of(' ', blank);
  if (word == std::string_view::npos) return std::nullopt;
  return word;
}

}  // namespace tarvendo
