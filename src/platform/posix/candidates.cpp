#include "platform/posix/candidates.h"

#include <algorithm>
#include <cstddef>

#include "platform/letters.h"

namespace tarvendo {
namespace {

constexpr std::size_t kMostShown = 200;

/// The byte is not the first of its character.
bool ContinuesCharacter(char byte) {
  return (static_cast<unsigned char>(byte) & 0xc0U) == 0x80U;
}

/// The columns of a text of UTF-8 when each character takes one.
std::size_t LengthOf(const std::string& text) {
  return text.size() -
         static_cast<std::size_t>(std::count_if(text.begin(), text.end(), ContinuesCharacter));
}

}  // namespace

std::string Extended(const std::vector<Candidate>& candidates) {
  const std::string& first = candidates.front().text;
  if (candidates.size() == 1) return first + (candidates.front().is_whole ? " " : "");
  std::size_t common = first.size();
  for (const Candidate& other : candidates) {
    const auto same = [](char one, char two) { return ToLowerLetter(one) == ToLowerLetter(two); };
    const auto end =
        std::mismatch(first.begin(), first.end(), other.text.begin(), other.text.end(), same);
    common = std::min(common, static_cast<std::size_t>(end.first - first.begin()));
  }
  while (common > 0 && common < first.size() && ContinuesCharacter(first[common]))
    --common;
  return first.substr(0, common);
}

std::string InColumns(const std::vector<Candidate>& candidates, int columns) {
  const std::size_t shown = std::min(candidates.size(), kMostShown);
  std::size_t widest = 0;
  for (std::size_t i = 0; i < shown; ++i)
    widest = std::max(widest, LengthOf(candidates[i].text));
  const std::size_t room = static_cast<std::size_t>(std::max(columns, 1)) - 1;
  const std::size_t in_row = std::max<std::size_t>((room + 2) / (widest + 2), 1);
  const std::size_t rows = (shown + in_row - 1) / in_row;
  std::string text;
  for (std::size_t row = 0; row < rows; ++row) {
    for (std::size_t i = row; i < shown; i += rows) {
      const std::string& word = candidates[i].text;
      text += word;
      if (i + rows < shown) text += std::string(widest + 2 - LengthOf(word), ' ');
    }
    text += '\n';
  }
  if (shown < candidates.size()) {
    text += "... and " + std::to_string(candidates.size() - shown) + " more\n";
  }
  return text;
}

}  // namespace tarvendo
