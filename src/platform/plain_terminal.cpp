#include "platform/plain_terminal.h"

#include "platform/input.h"

namespace tarvendo {

void PlainTerminal::Write(const std::string& text) {
  WriteConsole(text);
}

void PlainTerminal::WriteError(const std::string& text) {
  WriteConsoleError(text);
}

std::unique_ptr<InputStream> PlainTerminal::OpenKeyboard(LineHelp /*help*/) {
  return tarvendo::OpenKeyboard();
}

}  // namespace tarvendo
