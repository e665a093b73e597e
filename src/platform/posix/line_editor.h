#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/terminal.h"

namespace tarvendo {

/// What the wait for a key has come to.
enum class KeyWait {
  kKey,      ///< one can be read, or the end of the input
  kCleared,  ///< Ctrl-C: the line is given up
  kGivenUp,  ///< the line is given up for another reason
};

/// What an editor needs of the terminal that it works at.
struct EditorCalls {
  /// Waits for a key; everything is drawn then. Never throws.
  std::function<KeyWait()> await_key;
  /// LineHelp::complete.
  std::function<Completion(const std::string& beginning)> complete;
};

/// One line to be typed.
struct LineWish {
  std::string prompt;       ///< what stands in front of it, on the screen already
  bool is_command = false;  ///< may be completed, and earlier ones are there to go back to
};

/// Lets the user edit lines at the terminal of standard input and output. The thread that reads a
/// line calls Read; while that waits for a key, and at no other time, another thread may call what
/// stands below it, one at a time.
class LineEditor {
 public:
  virtual ~LineEditor() = default;

  /// The next line with its line feed; nothing at the end of the input, or when it was given up:
  /// then it stands on the screen as it was, with the cursor in the line below. What `complete`
  /// throws comes out of here.
  virtual std::optional<std::string> Read(const LineWish& wish) = 0;

  /// Has the user go back to this line, without its line feed, as the latest one.
  virtual void Remember(const std::string& line) = 0;

  /// Takes the line off the screen; the cursor stands where it began.
  virtual void Erase() = 0;

  /// Shows it again, from where the cursor stands, at the left edge.
  virtual void Redraw() = 0;

  /// The window has another size.
  virtual void Resize() = 0;

  /// Gives the host's terminal back to others, and takes it again.
  virtual void LetGo() = 0;
  virtual void TakeAgain() = 0;
};

/// Null when the program was built without one, or the kind of terminal has no way to move about.
std::unique_ptr<LineEditor> MakeLineEditor(EditorCalls calls);

}  // namespace tarvendo
