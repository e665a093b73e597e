#include "platform/terminal.h"

#include "platform/plain_terminal.h"

namespace tarvendo {

// The system's own console lets the user edit a line and go back to earlier ones.
std::unique_ptr<Terminal> MakeTerminal() {
  return std::make_unique<PlainTerminal>();
}

// Nobody completes a line here, so nobody asks.
std::vector<std::string> NamesInDirectory(const std::string& /*directory*/) {
  return {};
}

std::string StateDirectory() {
  return "";
}

}  // namespace tarvendo
