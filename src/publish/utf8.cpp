#include "publish/utf8.h"

#include <algorithm>
#include <cstddef>

namespace tarvendo {
namespace {

constexpr const char* kReplacement = "\xEF\xBF\xBD";

/// How many bytes the character at the front has; 0 when there is none in UTF-8.
std::size_t LengthOfFirst(std::string_view text) {
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned char first = byte(0);
  if (first < 0x80) return 1;
  const std::size_t length = first < 0xC2   ? 0
                             : first < 0xE0 ? 2
                             : first < 0xF0 ? 3
                             : first < 0xF5 ? 4
                                            : 0;
  if (length == 0 || text.size() < length) return 0;
  for (std::size_t at = 1; at < length; ++at) {
    if ((byte(at) & 0xC0U) != 0x80U) return 0;
  }
  const bool is_overlong = (first == 0xE0 && byte(1) < 0xA0) || (first == 0xF0 && byte(1) < 0x90);
  const bool is_none = (first == 0xED && byte(1) > 0x9F) || (first == 0xF4 && byte(1) > 0x8F);
  return is_overlong || is_none ? 0 : length;
}

bool IsControl(std::string_view character) {
  const auto first = static_cast<unsigned char>(character[0]);
  if (first < 0x20) return first != '\n' && first != '\t';
  if (first == 0x7F) return true;
  return first == 0xC2 && static_cast<unsigned char>(character[1]) < 0xA0;
}

std::string FromLatin1(std::string_view text) {
  std::string converted;
  for (const char c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (code < 0x80) {
      converted += c;
    } else {
      converted += static_cast<char>(0xC0U | (code >> 6U));
      converted += static_cast<char>(0x80U | (code & 0x3FU));
    }
  }
  return converted;
}

bool IsPlainAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7F; });
}

}  // namespace

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = LengthOfFirst(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

std::string ToUtf8(std::string_view text) {
  if (IsPlainAscii(text)) return std::string(text);
  const std::string whole = IsUtf8(text) ? std::string(text) : FromLatin1(text);
  std::string clean;
  std::string_view rest = whole;
  while (!rest.empty()) {
    const std::string_view character = rest.substr(0, LengthOfFirst(rest));
    clean += IsControl(character) ? std::string_view(kReplacement) : character;
    rest.remove_prefix(character.size());
  }
  return clean;
}

}  // namespace tarvendo
