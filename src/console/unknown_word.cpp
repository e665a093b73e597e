#include "console/unknown_word.h"

#include "base/log.h"

namespace tarvendo {

void PrintUnknownWord(const std::string& word) {
  PrintText("I just don't know what you mean by '" + word + "'.\n");
}

}  // namespace tarvendo
