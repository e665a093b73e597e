#pragma once

#include <string>

namespace tarvendo {

/// What the console answers to a word that it does not know. Tests of commands use this, so that
/// the text stands in one place.
inline std::string Unknown(const std::string& word) {
  return "I just don't know what you mean by '" + word + "'.\n";
}

}  // namespace tarvendo
