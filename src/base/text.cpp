#include "base/text.h"

#include <algorithm>
#include <cstdio>
#include <limits>

#include "platform/letters.h"

namespace tarvendo {
namespace {

constexpr std::string_view kTrimmed = " \t\n";
constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";

/// `value` with one more decimal digit, stopping at the largest 64-bit number.
long long AppendDigit(long long value, int digit) {
  constexpr long long kMax = std::numeric_limits<long long>::max();
  return value > (kMax - digit) / 10 ? kMax : value * 10 + digit;
}

}  // namespace

std::string Format(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  std::string text = FormatList(format, arguments);
  va_end(arguments);
  return text;
}

std::string FormatList(const char* format, va_list arguments) {
  va_list again;
  va_copy(again, arguments);
  const int size = std::vsnprintf(nullptr, 0, format, again);
  va_end(again);
  std::string text(size < 0 ? 0 : static_cast<std::size_t>(size), '\0');
  // The terminating NUL lands on the string's own.
  std::vsnprintf(text.data(), text.size() + 1, format, arguments);
  return text;
}

bool BeginsWithNoCase(std::string_view text, std::string_view prefix) {
  return text.size() >= prefix.size() && EqualsNoCase(text.substr(0, prefix.size()), prefix);
}

bool EqualsNoCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return ToLowerLetter(x) == ToLowerLetter(y); });
}

void TrimRight(std::string& text) {
  if (text.empty()) return;
  if (text.front() == '\n') {
    text.clear();
    return;
  }
  const std::size_t last = text.find_last_not_of(kTrimmed);
  text.resize(last == std::string::npos ? 1 : last + 1);
}

void TrimBothSides(std::string& text) {
  const std::size_t first = text.find_first_not_of(kTrimmed);
  if (first == std::string::npos) {
    text.clear();
    return;
  }
  text.resize(text.find_last_not_of(kTrimmed) + 1);
  text.erase(0, first);
}

std::vector<std::string> SplitAtWhiteSpace(std::string_view text) {
  std::vector<std::string> words;
  Scanner scanner(text);
  for (std::string word = scanner.ReadWord(); !word.empty(); word = scanner.ReadWord()) {
    words.push_back(word);
  }
  return words;
}

int ToInt(std::string_view text) {
  long long value = 0;
  Scanner(text).ReadNumber(value);
  return static_cast<int>(std::clamp<long long>(value, std::numeric_limits<int>::min(),
                                                std::numeric_limits<int>::max()));
}

bool IsAllDigits(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), IsDigit);
}

bool Scanner::ReadNumber(long long& value) {
  std::string_view text = rest_;
  text.remove_prefix(std::min(text.find_first_not_of(kWhiteSpace), text.size()));
  const bool negative = !text.empty() && text.front() == '-';
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
  if (text.empty() || !IsDigit(text.front())) return false;
  long long number = 0;
  for (; !text.empty() && IsDigit(text.front()); text.remove_prefix(1)) {
    number = AppendDigit(number, text.front() - '0');
  }
  value = negative ? -number : number;
  rest_ = text;
  return true;
}

bool Scanner::ReadCharacter(char c) {
  if (rest_.empty() || rest_.front() != c) return false;
  rest_.remove_prefix(1);
  return true;
}

std::string Scanner::ReadWord() {
  rest_.remove_prefix(std::min(rest_.find_first_not_of(kWhiteSpace), rest_.size()));
  const std::size_t end = std::min(rest_.find_first_of(kWhiteSpace), rest_.size());
  std::string word(rest_.substr(0, end));
  rest_.remove_prefix(end);
  return word;
}

}  // namespace tarvendo
