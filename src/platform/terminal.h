#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tarvendo {

class InputStream;

/// One word that may stand where the user asks what may.
struct Candidate {
  std::string text;
  bool is_whole = true;  ///< a blank follows; not behind a directory, whose files come next
};

/// What may stand in a line from `start` (a byte of it) up to the place where the user asks.
struct Completion {
  std::size_t start = 0;
  std::vector<Candidate> candidates;  ///< in the order in which they are shown
};

/// What helps the user to type a line.
struct LineHelp {
  /// How the last line of the console stands when a command is asked for ("> "); only such a line
  /// is completed and remembered, not the answer to another question.
  std::string prompt;
  /// Where lines are remembered from one start to the next, a host path; empty: nowhere.
  std::string history_file;
  /// Says what may stand at the end of a line that begins so. Called on the thread that reads the
  /// keyboard, while that holds no lock of the terminal's.
  std::function<Completion(const std::string& beginning)> complete;
};

/// What the user sees and types at. Where input and output are a terminal, it may let him edit and
/// complete the line, remember what he typed, keep messages out of the line that is being typed,
/// and give Ctrl-C another meaning than the program's end; elsewhere it is no more than input.h.
/// Owned by the program's main part, which makes it before any thread but its own.
class Terminal {
 public:
  virtual ~Terminal() = default;

  /// Writes to standard output, whole, and flushes. Any thread. A line that is being typed is taken
  /// off the screen meanwhile and stands behind the text afterwards.
  virtual void Write(const std::string& text) = 0;

  /// The same for standard error.
  virtual void WriteError(const std::string& text) = 0;

  /// Standard input, to be read by the calling thread; one at a time.
  virtual std::unique_ptr<InputStream> OpenKeyboard(LineHelp help) = 0;

  /// From here on what the calling thread writes is collected.
  virtual void BeginPage() = 0;

  /// Ends that, and shows what was collected: by the user's pager when it is longer than the
  /// screen. Waits for the pager, while others' messages wait too; throws Terminated (faults.h)
  /// when the process is asked to end meanwhile. Does nothing when no page was begun.
  virtual void ShowPage() = 0;

  /// Gives the host's terminal back as it was, when a fault has torn the program out of a wait.
  virtual void GiveBack() = 0;
};

/// The terminal of this process.
std::unique_ptr<Terminal> MakeTerminal();

/// What lies in a directory (as it was typed; empty is the current one), with "/" behind the names
/// of directories, in the order of the names. Nothing when it cannot be read.
std::vector<std::string> NamesInDirectory(const std::string& directory);

/// Where the user's programs keep what they remember, with its separator; empty when the host does
/// not say. The directory itself may be missing.
std::string StateDirectory();

}  // namespace tarvendo
