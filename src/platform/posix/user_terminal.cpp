#include "platform/posix/user_terminal.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

#include "platform/faults.h"
#include "platform/folding_input.h"
#include "platform/posix/ctrl_c.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/pager.h"
#include "platform/posix/screen.h"
#include "platform/posix/termination.h"

namespace tarvendo {
namespace {

/// The lines of the keyboard, a piece at a time.
class TerminalKeyboard : public FoldingInput {
 public:
  explicit TerminalKeyboard(UserTerminal& terminal) : terminal_(terminal) {}
  ~TerminalKeyboard() override { terminal_.CloseKeyboard(); }
  TerminalKeyboard(const TerminalKeyboard&) = delete;
  TerminalKeyboard& operator=(const TerminalKeyboard&) = delete;

 protected:
  std::size_t Fill(char* to, std::size_t room) override {
    if (left_.empty()) left_ = terminal_.ReadLine().value_or("");
    const std::size_t count = std::min(room, left_.size());
    std::memcpy(to, left_.data(), count);
    left_.erase(0, count);
    return count;
  }

 private:
  UserTerminal& terminal_;
  std::string left_;
};

/// Unlocks as long as it lives.
class Unlocked {
 public:
  explicit Unlocked(std::unique_lock<std::recursive_mutex>& lock) : lock_(lock) { lock_.unlock(); }
  ~Unlocked() { lock_.lock(); }
  Unlocked(const Unlocked&) = delete;
  Unlocked& operator=(const Unlocked&) = delete;

 private:
  std::unique_lock<std::recursive_mutex>& lock_;
};

/// Tells whose lock the reader's is, as long as it lives.
class Reader {
 public:
  Reader(std::unique_lock<std::recursive_mutex>*& place,
         std::unique_lock<std::recursive_mutex>& lock)
      : place_(place) {
    place_ = &lock;
  }
  ~Reader() { place_ = nullptr; }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

 private:
  std::unique_lock<std::recursive_mutex>*& place_;
};

/// Sets a switch as long as it lives.
class SwitchedOn {
 public:
  explicit SwitchedOn(bool& flag) : flag_(flag) { flag_ = true; }
  ~SwitchedOn() { flag_ = false; }
  SwitchedOn(const SwitchedOn&) = delete;
  SwitchedOn& operator=(const SwitchedOn&) = delete;

 private:
  bool& flag_;
};

}  // namespace

UserTerminal::UserTerminal() : error_is_here_(isatty(STDERR_FILENO) != 0) {
  tcgetattr(STDIN_FILENO, &modes_);
}

UserTerminal::~UserTerminal() = default;

void UserTerminal::Write(const std::string& text) {
  WriteTo(STDOUT_FILENO, text);
}

void UserTerminal::WriteError(const std::string& text) {
  WriteTo(STDERR_FILENO, text);
}

void UserTerminal::WriteTo(int descriptor, const std::string& text) {
  const std::lock_guard lock(mutex_);
  if (descriptor == STDERR_FILENO && !error_is_here_) {
    WriteAll(descriptor, text);
  } else if (!page_) {
    Show(descriptor, text);
  } else if (page_->writer == std::this_thread::get_id()) {
    page_->text += text;
  } else {
    page_->others += text;
  }
}

/// A line that is being typed goes out of the way. It comes with its prompt, so one that a message
/// ends with is left out.
void UserTerminal::Show(int descriptor, const std::string& text) {
  if (text.empty()) return;
  if (is_typing_ && editor_ != nullptr) {
    std::string message = text;
    if (message.ends_with("\n" + open_line_)) message.resize(text.size() - open_line_.size());
    if (!message.ends_with('\n')) message += '\n';
    editor_->Erase();
    WriteAll(descriptor, message);
    editor_->Redraw();
    return;
  }
  WriteAll(descriptor, text);
  if (is_typing_) return;
  const std::size_t end = text.rfind('\n');
  if (end != std::string::npos) open_line_.clear();
  open_line_ += end == std::string::npos ? text : text.substr(end + 1);
}

std::unique_ptr<InputStream> UserTerminal::OpenKeyboard(LineHelp help) {
  const std::lock_guard lock(mutex_);
  help_ = std::move(help);
  history_ = HistoryFile(help_.history_file);
  editor_ = MakeLineEditor({[this] { return AwaitKey(); },
                            [this](const std::string& beginning) { return Complete(beginning); }});
  if (editor_ != nullptr) {
    for (const std::string& line : history_.Load())
      editor_->Remember(line);
  }
  FollowKeyRules(true);
  return std::make_unique<TerminalKeyboard>(*this);
}

void UserTerminal::CloseKeyboard() {
  const std::lock_guard lock(mutex_);
  FollowKeyRules(false);
  editor_.reset();
}

std::optional<std::string> UserTerminal::ReadLine() {
  Lock lock(mutex_);
  const Reader reader(reader_, lock);
  const CtrlCMeans at_the_prompt(CtrlC::kClearsLine);
  TakeTerminalEvents();  // Those of the past mean nothing any more.
  std::optional<std::string> line = editor_ != nullptr ? ReadEdited() : ReadPlainly();
  open_line_.clear();
  return line;
}

std::optional<std::string> UserTerminal::ReadEdited() {
  const TerminalSignals signals;
  const bool is_command = open_line_ == help_.prompt;
  std::optional<std::string> line;
  do {
    is_cleared_ = false;
    line = editor_->Read({open_line_, is_command});
    if (TerminationRequested()) throw Terminated("asked to end while waiting for input");
  } while (is_cleared_);
  if (line && is_command) {
    const std::string typed = line->substr(0, line->find('\n'));
    if (!typed.empty()) editor_->Remember(typed);
    history_.Add(typed);
  }
  return line;
}

/// The host has the user edit the line, throws it away at Ctrl-C and hands it over whole.
std::optional<std::string> UserTerminal::ReadPlainly() {
  while (!WaitForInput()) {
    if (TerminationRequested()) throw Terminated("asked to end while waiting for input");
    if (TakeTerminalEvents().ctrl_c) WriteAll(STDOUT_FILENO, "\n" + open_line_);
  }
  std::array<char, 4096> piece{};
  ssize_t count = 0;
  do {
    count = read(STDIN_FILENO, piece.data(), piece.size());
  } while (count < 0 && errno == EINTR);
  if (count <= 0) return std::nullopt;
  return std::string(piece.data(), static_cast<std::size_t>(count));
}

/// Waits until something happens, while other threads may write. Whether something can be read and
/// nothing else has happened.
bool UserTerminal::WaitForInput() {
  std::array<pollfd, 3> sources{};
  sources[0] = {STDIN_FILENO, POLLIN, 0};
  sources[1] = {TerminationDescriptor(), POLLIN, 0};
  sources[2] = {TerminalEventDescriptor(), POLLIN, 0};
  const SwitchedOn typing(is_typing_);
  const Unlocked others_may_write(*reader_);
  const bool failed = poll(sources.data(), sources.size(), -1) < 0 && errno != EINTR;
  if (failed) return !TerminationRequested();  // Then the read itself waits.
  return sources[0].revents != 0 && sources[1].revents == 0 && sources[2].revents == 0;
}

KeyWait UserTerminal::AwaitKey() {
  while (!WaitForInput()) {
    if (TerminationRequested()) return KeyWait::kGivenUp;
    const TerminalEvents events = TakeTerminalEvents();
    if (events.ctrl_c) {
      is_cleared_ = true;
      return KeyWait::kCleared;
    }
    if (events.stop) {
      editor_->LetGo();
      TerminalSignals::StopProcess();
      editor_->TakeAgain();
    }
    if (events.new_size) editor_->Resize();
  }
  return KeyWait::kKey;
}

Completion UserTerminal::Complete(const std::string& beginning) {
  // What may stand there depends on the tourney; who has that may be writing a message.
  const SwitchedOn typing(is_typing_);
  const Unlocked others_may_write(*reader_);
  return help_.complete ? help_.complete(beginning) : Completion();
}

void UserTerminal::BeginPage() {
  const std::lock_guard lock(mutex_);
  page_ = Page{std::this_thread::get_id(), "", ""};
}

void UserTerminal::ShowPage() {
  Lock lock(mutex_);
  if (!page_) return;
  const std::string text = std::exchange(page_->text, "");
  const ScreenSize screen = SizeOfScreen();
  const bool is_long = IsLongerThanScreen(text, screen.rows, screen.columns);
  const std::string pager = is_long ? UsersPager() : "";
  bool is_shown = false;
  if (!pager.empty()) {
    const Unlocked others_may_write(lock);
    is_shown = RunPager(pager, text);
  }
  const std::string others = page_->others;
  page_.reset();
  if (!is_shown) Show(STDOUT_FILENO, text);
  Show(STDOUT_FILENO, others);
}

void UserTerminal::GiveBack() {
  const std::lock_guard lock(mutex_);
  FollowKeyRules(false);
  // Only where a line was being read: in the background this call would stop the process.
  if (reader_ != nullptr) tcsetattr(STDIN_FILENO, TCSADRAIN, &modes_);
  if (is_typing_) WriteAll(STDOUT_FILENO, "\n");
  is_typing_ = false;
  reader_ = nullptr;
  const std::optional<Page> page = std::exchange(page_, std::nullopt);
  if (page) Show(STDOUT_FILENO, page->text + page->others);
}

}  // namespace tarvendo
