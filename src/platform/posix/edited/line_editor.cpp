// Lines are edited by libedit. It is C: nothing may be thrown through it, so what its callbacks
// meet is kept until it has returned. It knows characters by the locale, of which the program has
// none; so the user's is this thread's own while libedit works.
#include "platform/posix/line_editor.h"

#include <histedit.h>
#include <langinfo.h>
#include <locale.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <exception>
#include <iterator>
#include <utility>
#include <vector>

#include "platform/posix/candidates.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/screen.h"

namespace tarvendo {
namespace {

constexpr int kRemembered = 1000;  ///< lines to go back to

/// The user's characters; where he has told nothing of them, those that terminals have today.
class UsersLocale {
 public:
  UsersLocale() : locale_(newlocale(LC_CTYPE_MASK, "", nullptr)) {
    const bool is_told =
        locale_ != nullptr && std::strcmp(nl_langinfo_l(CODESET, locale_), "ANSI_X3.4-1968") != 0;
    if (is_told) return;
    const locale_t usual = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (usual == nullptr) return;
    if (locale_ != nullptr) freelocale(locale_);
    locale_ = usual;
  }
  ~UsersLocale() {
    if (locale_ != nullptr) freelocale(locale_);
  }
  UsersLocale(const UsersLocale&) = delete;
  UsersLocale& operator=(const UsersLocale&) = delete;

  locale_t Get() const { return locale_; }

 private:
  locale_t locale_;
};

/// The calling thread's characters are those of `locale` as long as this lives.
class InLocale {
 public:
  explicit InLocale(const UsersLocale& locale) : before_(uselocale(locale.Get())) {}
  ~InLocale() { uselocale(before_); }
  InLocale(const InLocale&) = delete;
  InLocale& operator=(const InLocale&) = delete;

 private:
  locale_t before_;
};

std::wstring Wide(const std::string& text) {
  const std::size_t size = std::mbstowcs(nullptr, text.c_str(), 0);
  if (size == static_cast<std::size_t>(-1)) return {text.begin(), text.end()};
  std::wstring wide(size, L'\0');
  std::mbstowcs(wide.data(), text.c_str(), size);
  return wide;
}

/// Columns, in the way in which libedit shows what cannot be printed: "^A", "\U+00AD".
int WidthOf(wchar_t character) {
  if (character == L'\t') return kTabWidth;
  if (character < L' ' || character == L'\x7f') return 2;
  const int width = wcwidth(character);
  if (width >= 0) return width;
  return character > L'\xffff' ? 8 : 7;
}

void AppendWidths(std::vector<int>& widths, const wchar_t* from, const wchar_t* to) {
  std::transform(from, to, std::back_inserter(widths), WidthOf);
}

/// The earlier lines.
class Memory {
 public:
  Memory() : history_(history_init()) {
    HistEvent event;
    history(history_, &event, H_SETSIZE, kRemembered);
    history(history_, &event, H_SETUNIQUE, 1);
  }
  ~Memory() { history_end(history_); }
  Memory(const Memory&) = delete;
  Memory& operator=(const Memory&) = delete;

  void Add(const std::string& line) {
    HistEvent event;
    history(history_, &event, H_ENTER, line.c_str());
  }
  History* Get() { return history_; }

 private:
  History* history_;
};

class LibeditEditor : public LineEditor {
 public:
  explicit LibeditEditor(EditorCalls calls) : calls_(std::move(calls)) {
    const InLocale in_locale(locale_);
    editor_ = el_init("tarvendo", stdin, stdout, stderr);
    if (editor_ == nullptr) return;
    el_set(editor_, EL_CLIENTDATA, this);
    el_set(editor_, EL_PROMPT, PromptOf);
    el_set(editor_, EL_GETCFN, GetKey);
    el_set(editor_, EL_EDITOR, "emacs");
    BindKeys();
    el_source(editor_, nullptr);  // The user's own ~/.editrc.
  }
  ~LibeditEditor() override {
    if (editor_ != nullptr) el_end(editor_);
  }
  LibeditEditor(const LibeditEditor&) = delete;
  LibeditEditor& operator=(const LibeditEditor&) = delete;

  /// Whether the terminal lets the cursor be moved about as Erase does it.
  bool Works() {
    const auto is_known = [&](const char* capability) {
      char* sequence = nullptr;
      const bool told = el_get(editor_, EL_GETTC, capability, &sequence, nullptr) == 0;
      return told && sequence != nullptr && sequence[0] == '\x1b';
    };
    return editor_ != nullptr && is_known("up") && is_known("cd");
  }

  std::optional<std::string> Read(const LineWish& wish) override {
    const InLocale in_locale(locale_);
    wish_ = wish;
    trouble_ = nullptr;
    state_ = {};
    is_given_up_ = false;
    el_set(editor_, EL_HIST, history, (wish.is_command ? commands_ : answers_).Get());
    MoveToBegin(PlaceOf(Wide(wish.prompt)));
    int count = 0;
    const char* const line = el_gets(editor_, &count);
    std::fflush(stdout);
    if (trouble_ != nullptr) std::rethrow_exception(trouble_);
    if (line != nullptr && count > 0) return std::string(line, static_cast<std::size_t>(count));
    if (!is_given_up_) WriteAll(STDOUT_FILENO, "\n");
    return std::nullopt;
  }

  void Remember(const std::string& line) override {
    const InLocale in_locale(locale_);
    if (std::mbstowcs(nullptr, line.c_str(), 0) != static_cast<std::size_t>(-1)) {
      commands_.Add(line);
    }
  }

  void Erase() override {
    const InLocale in_locale(locale_);
    MoveToBegin(PlaceInLine(&LineInfoW::cursor));
    WriteAll(STDOUT_FILENO, "\x1b[J");
  }

  void Redraw() override {
    const InLocale in_locale(locale_);
    el_set(editor_, EL_REFRESH);
    std::fflush(stdout);
  }

  void Resize() override {
    Erase();
    const InLocale in_locale(locale_);
    el_resize(editor_);
    Redraw();
  }

  void LetGo() override {
    MoveBelow();
    el_set(editor_, EL_PREP_TERM, 0);
  }

  void TakeAgain() override {
    el_set(editor_, EL_PREP_TERM, 1);
    WriteAll(STDOUT_FILENO, "\r");
    Redraw();
  }

 private:
  static LibeditEditor& Of(EditLine* editor) {
    void* self = nullptr;
    el_get(editor, EL_CLIENTDATA, &self);
    return *static_cast<LibeditEditor*>(self);
  }

  static char* PromptOf(EditLine* editor) { return Of(editor).wish_.prompt.data(); }
  static int GetKey(EditLine* editor, wchar_t* key) { return Of(editor).NextKey(*key); }
  static unsigned char OnTab(EditLine* editor, int /*key*/) { return Of(editor).Complete(); }

  void Bind(const char* key, const char* function) {
    el_set(editor_, EL_BIND, key, function, nullptr);
  }

  /// Tab, what keyboards send for keys that terminals do not tell of, and what other programs that
  /// edit lines do.
  void BindKeys() {
    el_set(editor_, EL_ADDFN, "complete-word", "Completes the word", OnTab);
    constexpr std::array<std::pair<const char*, const char*>, 13> kKeys = {{
        {"^I", "complete-word"},
        {"^R", "em-inc-search-prev"},
        {"^W", "ed-delete-prev-word"},
        {"\\e[1~", "ed-move-to-beg"},
        {"\\e[H", "ed-move-to-beg"},
        {"\\eOH", "ed-move-to-beg"},
        {"\\e[4~", "ed-move-to-end"},
        {"\\e[F", "ed-move-to-end"},
        {"\\eOF", "ed-move-to-end"},
        {"\\e[3~", "ed-delete-next-char"},
        {"\\e[1;5C", "em-next-word"},
        {"\\e[1;5D", "ed-prev-word"},
        {"^L", "ed-clear-screen"},
    }};
    for (const auto& [key, function] : kKeys)
      Bind(key, function);
  }

  /// One character of the user's, 1; 0 at the end of the input or when the line is given up. Bytes
  /// that are no character are passed over.
  int NextKey(wchar_t& key) {
    while (true) {
      const KeyWait wait = trouble_ == nullptr ? calls_.await_key() : KeyWait::kGivenUp;
      if (wait != KeyWait::kKey) return GiveUp(wait == KeyWait::kCleared ? "^C" : "");
      char byte = '\0';
      const ssize_t count = read(STDIN_FILENO, &byte, 1);
      if (count < 0 && (errno == EINTR || errno == EAGAIN)) continue;
      if (count <= 0) return GiveUp("");
      const std::size_t taken = std::mbrtowc(&key, &byte, 1, &state_);
      if (taken == static_cast<std::size_t>(-1)) state_ = {};
      if (taken <= 1) return 1;
    }
  }

  int GiveUp(const char* mark) {
    MoveBelow(mark);
    is_given_up_ = true;
    return 0;
  }

  /// What Tab does.
  unsigned char Complete() {
    if (!wish_.is_command) return CC_ERROR;
    const LineInfo* const line = el_line(editor_);
    const std::string beginning(line->buffer, line->cursor);
    Completion found;
    try {
      found = calls_.complete(beginning);
    } catch (...) {
      trouble_ = std::current_exception();
      return CC_NORM;
    }
    if (found.candidates.empty() || found.start > beginning.size()) return CC_ERROR;
    const std::string typed = beginning.substr(found.start);
    const std::string longer = Extended(found.candidates);
    if (found.candidates.size() == 1 || longer.size() > typed.size()) {
      el_deletestr(editor_, static_cast<int>(Wide(typed).size()));
      return el_insertstr(editor_, longer.c_str()) == 0 ? CC_REFRESH : CC_ERROR;
    }
    MoveBelow();
    WriteAll(STDOUT_FILENO, InColumns(found.candidates, SizeOfScreen().columns));
    Redraw();
    return CC_NORM;
  }

  ScreenPlace PlaceOf(const std::wstring& text) const {
    std::vector<int> widths;
    AppendWidths(widths, text.data(), text.data() + text.size());
    return PlaceBehind(widths, SizeOfScreen().columns);
  }

  /// Where the line that is being typed has its cursor, or its end.
  ScreenPlace PlaceInLine(const wchar_t* LineInfoW::*where) {
    const std::wstring prompt = Wide(wish_.prompt);
    const LineInfoW* const line = el_wline(editor_);
    std::vector<int> widths;
    AppendWidths(widths, prompt.data(), prompt.data() + prompt.size());
    AppendWidths(widths, line->buffer, line->*where);
    return PlaceBehind(widths, SizeOfScreen().columns);
  }

  /// Moves the cursor from there to the beginning of the line.
  static void MoveToBegin(ScreenPlace cursor) {
    std::fflush(stdout);
    std::string up = "\r";
    for (int row = 0; row < cursor.row; ++row)
      up += "\x1b[A";
    WriteAll(STDOUT_FILENO, up);
  }

  /// Moves the cursor to the left edge below the line, which stays where it is, with a mark behind
  /// it.
  void MoveBelow(const std::string& mark = "") {
    std::fflush(stdout);
    const ScreenPlace cursor = PlaceInLine(&LineInfoW::cursor);
    const ScreenPlace end = PlaceInLine(&LineInfoW::lastchar);
    std::string way = "\r" + std::string(static_cast<std::size_t>(end.row - cursor.row), '\n');
    if (end.column > 0) way += "\x1b[" + std::to_string(end.column) + "C";
    WriteAll(STDOUT_FILENO, way + mark + "\n");
  }

  EditorCalls calls_;
  UsersLocale locale_;
  Memory commands_;
  Memory answers_;  ///< stays empty
  EditLine* editor_ = nullptr;
  LineWish wish_;
  std::mbstate_t state_{};
  bool is_given_up_ = false;
  std::exception_ptr trouble_;  ///< what `complete` has thrown
};

}  // namespace

std::unique_ptr<LineEditor> MakeLineEditor(EditorCalls calls) {
  const char* const kind = std::getenv("TERM");
  if (kind == nullptr || *kind == '\0' || std::strcmp(kind, "dumb") == 0) return nullptr;
  auto editor = std::make_unique<LibeditEditor>(std::move(calls));
  if (!editor->Works()) return nullptr;
  return editor;
}

}  // namespace tarvendo
