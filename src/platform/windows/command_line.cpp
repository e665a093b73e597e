// Two readers take a quoted word apart, each by its own rules. The command processor replaces
// %NAME% first, quotes or not, and then takes a caret as "the next character is an ordinary one",
// outside of quotes only. The program's C library takes a backslash before a quote for an escape.
// So quotes and percent signs stand outside of the quotes, behind a caret:  50"%  becomes
// "50"\^"^%""
#include "platform/windows/command_line.h"

#include <cstddef>
#include <string_view>

#include "platform/letters.h"

namespace tarvendo {
namespace {

bool IsCmd(const std::string& processor) {
  std::string name = processor.substr(processor.find_last_of("\\/:") + 1);
  for (char& c : name)
    c = ToLowerLetter(c);
  return name == "cmd.exe" || name == "cmd";
}

/// The line end of what was typed belongs to no word, but not every processor knows that.
std::string WithoutLineEnd(const std::string& line) {
  return line.substr(0, line.find_last_not_of("\r\n") + 1);
}

}  // namespace

std::string ProcessorCommandLine(const std::string& processor, const std::string& typed) {
  const std::string line = WithoutLineEnd(typed);
  const std::string program = "\"" + processor + "\"";
  return IsCmd(processor) ? program + " /s /c \"" + line + "\"" : program + " /c " + line;
}

std::string QuotedWord(const std::string& word) {
  std::string quoted = "\"";
  std::size_t backslashes = 0;
  for (const char c : word) {
    // Backslashes are doubled only where a quote follows.
    if (c == '"') {
      quoted += std::string(backslashes, '\\') + "\"\\^\"\"";
    } else if (c == '%') {
      quoted += std::string(backslashes, '\\') + "\"^%\"";
    } else {
      quoted += c;
    }
    backslashes = c == '\\' ? backslashes + 1 : 0;
  }
  return quoted + std::string(backslashes, '\\') + "\"";
}

}  // namespace tarvendo
