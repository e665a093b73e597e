#pragma once

#include <optional>
#include <string>

namespace tarvendo {

class InputStream;

/// The lines of the keyboard or of a script, as the C library's fgets gives them: at most 254
/// characters with the line feed, a longer line in several pieces, nothing of a piece behind a NUL
/// byte. Used by the console thread.
class LineInput {
 public:
  /// `is_keyboard` tells whether somebody wants a prompt.
  LineInput(InputStream& stream, bool is_keyboard) : stream_(stream), is_keyboard_(is_keyboard) {}

  /// The next piece with its line feed; nothing when the input is used up. Waits at the keyboard.
  std::optional<std::string> Read();

  /// Whether a read has met the end of the input: it found nothing, or a last line without line
  /// feed.
  bool AtEnd() const { return at_end_; }

  bool IsKeyboard() const { return is_keyboard_; }

 private:
  InputStream& stream_;
  bool is_keyboard_;
  bool at_end_ = false;
};

}  // namespace tarvendo
