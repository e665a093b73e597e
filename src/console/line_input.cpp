#include "console/line_input.h"

#include "base/line_reader.h"
#include "platform/input.h"

namespace tarvendo {

std::optional<std::string> LineInput::Read() {
  std::string piece;
  while (piece.size() < kConsoleLine && !piece.ends_with('\n')) {
    const int byte = stream_.Get();
    if (byte < 0) {
      at_end_ = true;
      break;
    }
    piece += static_cast<char>(byte);
  }
  if (piece.empty()) return std::nullopt;
  return piece.substr(0, piece.find('\0'));
}

}  // namespace tarvendo
