#include "console/name_list.h"

#include <string>

#include "base/log.h"
#include "base/text.h"

namespace tarvendo {

void PrintNameList(std::span<const char* const> names) {
  std::string text = "What do you want?\nCurrently available are:\n";
  bool left = true;
  for (const char* name : names) {
    text += Format("  %-15s", name) + (left ? "\t" : "\n");
    left = !left;
  }
  PrintText(text);
}

}  // namespace tarvendo
