#include "console/banner.h"

#include <cstddef>
#include <string>

namespace tarvendo {
namespace {

constexpr const char* kVersion = "0.32";
constexpr std::size_t kWidth = 38;  ///< between the bars

std::string BoxLine(std::string text) {
  text.resize(kWidth, ' ');
  return "|" + text + "|\n";
}

}  // namespace

std::string Banner() {
  const std::string version = std::string("   version ") + kVersion;
  std::string box = "\n ";
  box.append(kWidth, '_').append("\n");
  for (const char* text :
       {"", "   Tarvendo", "   ========", "", version.c_str(), "   25.09.2001", "",
        "   Author:", "   The Tarvendo project", "", "   Email:", "   tarvendo@example.org", "",
        "   Download:", "   tarvendo.example.org", ""}) {
    box += BoxLine(text);
  }
  return box + "|" + std::string(kWidth, '_') + "|\n\n";
}

std::string VersionLine() {
  return std::string("Tarvendo ") + kVersion + "\n";
}

}  // namespace tarvendo
