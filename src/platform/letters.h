#pragma once

namespace tarvendo {

// What a character is, whatever the host's language: nothing beyond ASCII is a letter or a digit.

constexpr bool IsCapital(char c) {
  return c >= 'A' && c <= 'Z';
}

constexpr bool IsLetter(char c) {
  return IsCapital(c) || (c >= 'a' && c <= 'z');
}

constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

/// The small letter of a capital one; every other character as it is.
constexpr char ToLowerLetter(char c) {
  return IsCapital(c) ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace tarvendo
