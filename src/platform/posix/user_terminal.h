#pragma once

#include <termios.h>

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "platform/posix/history_file.h"
#include "platform/posix/line_editor.h"
#include "platform/terminal.h"

namespace tarvendo {

/// A user at a terminal. The lock is held by whoever writes, and by the thread that reads the
/// keyboard except while it waits for a key: so what is on the screen is always one thread's. It is
/// recursive because a fault may tear the thread that holds it out of everything, and then the
/// same thread still has to write.
class UserTerminal : public Terminal {
 public:
  UserTerminal();
  ~UserTerminal() override;

  void Write(const std::string& text) override;
  void WriteError(const std::string& text) override;
  std::unique_ptr<InputStream> OpenKeyboard(LineHelp help) override;
  void BeginPage() override;
  void ShowPage() override;
  void GiveBack() override;

  /// The next line with its line feed, or what there is of it without an editor; nothing at the end
  /// of the input. Waits; throws Terminated when the process is asked to end.
  std::optional<std::string> ReadLine();

  /// The keyboard is no longer read.
  void CloseKeyboard();

 private:
  /// Who writes while a page is collected or shown.
  struct Page {
    std::thread::id writer;
    std::string text;
    std::string others;  ///< what other threads have written meanwhile
  };

  using Lock = std::unique_lock<std::recursive_mutex>;

  void WriteTo(int descriptor, const std::string& text);
  void Show(int descriptor, const std::string& text);
  std::optional<std::string> ReadEdited();
  std::optional<std::string> ReadPlainly();
  bool WaitForInput();
  KeyWait AwaitKey();
  Completion Complete(const std::string& beginning);

  std::recursive_mutex mutex_;  ///< guards all of it
  termios modes_{};             ///< of the host's terminal, as they were found
  bool error_is_here_;          ///< standard error is a terminal too
  std::string open_line_;       ///< what stands in the console's last line: the prompt
  std::optional<Page> page_;
  LineHelp help_;
  HistoryFile history_{""};
  std::unique_ptr<LineEditor> editor_;  ///< null where lines cannot be edited
  Lock* reader_ = nullptr;              ///< of the thread that reads a line
  bool is_typing_ = false;              ///< that thread waits, and the line is drawn
  bool is_cleared_ = false;             ///< the line was given up for another one
};

}  // namespace tarvendo
