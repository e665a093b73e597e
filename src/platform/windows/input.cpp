#include "platform/input.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstring>
#include <memory>
#include <utility>

#include "platform/faults.h"
#include "platform/folding_input.h"
#include "platform/line_ends.h"
#include "platform/windows/handle.h"
#include "platform/windows/termination.h"

#undef WriteConsole

namespace tarvendo {
namespace {

/// The place where the reading thread and the console thread meet. Whoever has the turn owns the
/// buffer.
struct Meeting {
  Handle wanted{CreateEventA(nullptr, FALSE, FALSE, nullptr)};
  Handle given{CreateEventA(nullptr, FALSE, FALSE, nullptr)};
  std::atomic<bool> is_over{false};
  std::array<char, 4096> buffer{};
  DWORD count = 0;  ///< how many bytes were given; 0 at the end
};

/// A read that fails is an end. One that is broken off was so by Ctrl-C, of which another thread of
/// the host's tells; when that asks nobody to end, the read is taken up again.
DWORD ReadSome(HANDLE input, char* to, DWORD room) {
  while (true) {
    DWORD count = 0;
    SetLastError(NO_ERROR);
    const bool succeeded = ReadFile(input, to, room, &count, nullptr) != 0;
    if (succeeded && count > 0) return count;
    if (GetLastError() != ERROR_OPERATION_ABORTED) return 0;
    if (WaitForSingleObject(TerminationEvent(), 1000) == WAIT_OBJECT_0) return 0;
  }
}

/// At a console Ctrl-Z is the way to type the end of the input.
DWORD UpToEndKey(HANDLE input, const char* bytes, DWORD count) {
  if (GetFileType(input) != FILE_TYPE_CHAR) return count;
  return static_cast<DWORD>(std::find(bytes, bytes + count, '\x1a') - bytes);
}

DWORD WINAPI ReadKeyboard(void* parameter) {
  const std::unique_ptr<std::shared_ptr<Meeting>> owner(
      static_cast<std::shared_ptr<Meeting>*>(parameter));
  Meeting& meeting = **owner;
  const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
  while (WaitForSingleObject(meeting.wanted.Get(), INFINITE) == WAIT_OBJECT_0 && !meeting.is_over) {
    const auto room = static_cast<DWORD>(meeting.buffer.size());
    const DWORD count = ReadSome(input, meeting.buffer.data(), room);
    meeting.count = UpToEndKey(input, meeting.buffer.data(), count);
    SetEvent(meeting.given.Get());
  }
  return 0;
}

/// No wait of the host's ends both with a key and with the wish to end, so a thread of its own
/// reads, and only when it is asked to: what is not read yet is there for the programs that the
/// user starts.
class Keyboard : public FoldingInput {
 public:
  Keyboard()
      : meeting_(std::make_shared<Meeting>()),
        thread_(CreateThread(nullptr, 0, ReadKeyboard, new std::shared_ptr<Meeting>(meeting_), 0,
                             nullptr)) {}
  Keyboard(const Keyboard&) = delete;
  Keyboard& operator=(const Keyboard&) = delete;

  /// A read that cannot be broken off is left behind with its own share of the meeting; it ends
  /// with the process.
  ~Keyboard() override {
    meeting_->is_over = true;
    SetEvent(meeting_->wanted.Get());
    for (int tries = 0; tries < 10; ++tries) {
      CancelSynchronousIo(thread_.Get());
      if (WaitForSingleObject(thread_.Get(), 20) == WAIT_OBJECT_0) return;
    }
  }

 protected:
  std::size_t Fill(char* to, std::size_t room) override {
    if (!TerminationRequested()) {
      SetEvent(meeting_->wanted.Get());
      const std::array<HANDLE, 2> events = {TerminationEvent(), meeting_->given.Get()};
      WaitForMultipleObjects(2, events.data(), FALSE, INFINITE);
    }
    if (TerminationRequested()) throw Terminated("asked to end while waiting for input");
    const std::size_t count = std::min<std::size_t>(meeting_->count, room);
    std::memcpy(to, meeting_->buffer.data(), count);
    return count;
  }

 private:
  std::shared_ptr<Meeting> meeting_;
  Handle thread_;
};

class Script : public FoldingInput {
 public:
  explicit Script(Handle file) : file_(std::move(file)) {}

 protected:
  std::size_t Fill(char* to, std::size_t room) override {
    if (TerminationRequested()) throw Terminated("asked to end while reading a script");
    return ReadSome(file_.Get(), to, static_cast<DWORD>(room));
  }

 private:
  Handle file_;
};

}  // namespace

std::unique_ptr<InputStream> OpenKeyboard() {
  return std::make_unique<Keyboard>();
}

std::unique_ptr<InputStream> OpenScript(const std::string& path) {
  Handle file = OpenToRead(path);
  if (!file.IsOpen()) return nullptr;
  return std::make_unique<Script>(std::move(file));
}

void WriteConsole(const std::string& text) {
  WriteAll(GetStdHandle(STD_OUTPUT_HANDLE), WithCrLf(text));
}

void WriteConsoleError(const std::string& text) {
  WriteAll(GetStdHandle(STD_ERROR_HANDLE), WithCrLf(text));
}

int ColumnsOfError() {
  CONSOLE_SCREEN_BUFFER_INFO screen{};
  if (GetConsoleScreenBufferInfo(GetStdHandle(STD_ERROR_HANDLE), &screen) == 0) return 0;
  return screen.srWindow.Right - screen.srWindow.Left + 1;
}

bool IsOutputTerminal() {
  CONSOLE_SCREEN_BUFFER_INFO screen{};
  return GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &screen) != 0;
}

}  // namespace tarvendo
