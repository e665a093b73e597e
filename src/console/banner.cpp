#include <string>

#include "console/command_interpreter.h"

namespace tarvendo {
namespace {

constexpr std::size_t kWidth = 38;  ///< between the bars

std::string BoxLine(std::string text) {
  text.resize(kWidth, ' ');
  return "|" + text + "|\n";
}

}  // namespace

std::string Banner() {
  std::string box = "\n " + std::string(kWidth, '_') + "\n";
  for (const char* text :
       {"", "   Tarvendo", "   ========", "", "   version 0.32", "   25.09.2001", "",
        "   Author:", "   The Tarvendo project", "", "   Email:", "   tarvendo@example.org", "",
        "   Download:", "   tarvendo.example.org", ""}) {
    box += BoxLine(text);
  }
  return box + "|" + std::string(kWidth, '_') + "|\n\n";
}

}  // namespace tarvendo
