#pragma once

namespace tarvendo {

/// The small letter of a capital one from A to Z; every other character as it is, whatever the
/// host's language.
constexpr char ToLowerLetter(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace tarvendo
