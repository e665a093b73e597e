#pragma once

#include <cstdarg>
#include <string>
#include <string_view>
#include <vector>

namespace tarvendo {

/// The text of printf with these arguments.
std::string Format(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// The same with the arguments of a caller that has "..." itself.
std::string FormatList(const char* format, va_list arguments) __attribute__((format(printf, 1, 0)));

/// Whether `text` begins with `prefix`, ignoring the case of the letters A to Z only.
bool BeginsWithNoCase(std::string_view text, std::string_view prefix);

/// Whether the two are the same but for the case of the letters A to Z.
bool EqualsNoCase(std::string_view a, std::string_view b);

/// In place: a text that begins with a line feed becomes empty; otherwise trailing blanks, tabs and
/// line feeds are cut, but never the first character.
void TrimRight(std::string& text);

/// In place: cuts blanks, tabs and line feeds at both ends.
void TrimBothSides(std::string& text);

/// The words of a text that white space separates.
std::vector<std::string> SplitAtWhiteSpace(std::string_view text);

/// The decimal number at the start of a text, as the C library's atoi reads it: leading white
/// space, a sign, digits; 0 when there are none. Numbers out of range give the nearest 32-bit
/// number.
int ToInt(std::string_view text);

/// Whether the text is one or more of the digits 0 to 9.
bool IsAllDigits(std::string_view text);

/// Words as scanf reads them, one after the other, from the front of a text. Used by the readers
/// that take a fixed pattern of numbers.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : rest_(text) {}

  /// Reads a decimal number behind white space into `value` (the nearest 64-bit number when it is
  /// out of range). False, and nothing changed, when there is none.
  bool ReadNumber(long long& value);

  /// Reads the character `c` when it comes next.
  bool ReadCharacter(char c);

  /// Reads the next run of characters that are no white space; empty when there is none.
  std::string ReadWord();

 private:
  std::string_view rest_;
};

}  // namespace tarvendo
