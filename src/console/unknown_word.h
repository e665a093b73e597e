#pragma once

#include <string>

namespace tarvendo {

/// "I just don't know what you mean by '%s'.\n"
void PrintUnknownWord(const std::string& word);

}  // namespace tarvendo
