#include <windows.h>

#include "command_words.h"

namespace stub {
namespace {

bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}

std::vector<std::string> SplitWords(const std::string& line) {
  std::vector<std::string> words;
  char open_quote = '\0';
  bool in_word = false;
  for (const char c : line) {
    if (open_quote == '\0' && IsBlank(c)) {
      in_word = false;
      continue;
    }
    if (!in_word) words.emplace_back();
    in_word = true;
    if (open_quote == '\0' && (c == '"' || c == '\'')) {
      open_quote = c;
    } else if (c == open_quote) {
      open_quote = '\0';
    } else {
      words.back() += c;
    }
  }
  return words;
}

}  // namespace

/// The C library has its own ideas about quotes, so the line is taken as it came.
std::vector<std::string> CommandWords(int /*count*/, char** /*words*/) {
  std::vector<std::string> words = SplitWords(GetCommandLineA());
  if (!words.empty()) words.erase(words.begin());
  return words;
}

void LeaveConsole() {
  FreeConsole();
}

std::string HostName(std::string name) {
  return name;
}

}  // namespace stub
