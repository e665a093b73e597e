#include "runner/pgn_count.h"

#include <algorithm>
#include <array>

#include "platform/letters.h"

namespace tarvendo {
namespace {

constexpr std::string_view kBlanks = " \t\r\n\v\f";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kEndsWord = " \t\r\n\v\f{};()[]";

bool IsResult(std::string_view word) {
  constexpr std::array<std::string_view, 4> kResults = {"1-0", "0-1", "1/2-1/2", "*"};
  return std::find(kResults.begin(), kResults.end(), word) != kResults.end();
}

/// Goes through the text once.
class PgnCounter {
 public:
  explicit PgnCounter(std::string_view text) : text_(text) {
    if (text_.starts_with(kByteOrderMark)) place_ = kByteOrderMark.size();
  }

  PgnCount Count() {
    while (place_ < text_.size() && count_.bad_line == 0)
      TakeNext();
    if (depth_ > 0 && count_.bad_line == 0) Fail(variation_line_, "a variation that does not end");
    return count_;
  }

 private:
  enum class In { kNothing, kTags, kMoves, kEnd };

  void TakeNext() {
    const char c = text_[place_];
    if (kBlanks.find(c) != std::string_view::npos) {
      Pass(place_ + 1);
    } else if (c == '%' && IsAtLineStart()) {
      Fail(line_, "a remark behind a '%', which WinBoard does not know");
    } else if (c == ';') {
      Pass(std::min(text_.find('\n', place_), text_.size()));
    } else if (c == '{') {
      TakeComment();
    } else if (c == '(' || c == ')') {
      TakeBracket(c);
    } else if (depth_ > 0) {
      Pass(place_ + 1);
    } else if (c == '[') {
      TakeTag();
    } else if (c == ']' || c == '}') {
      Fail(line_, "a bracket that nothing has opened");
    } else {
      TakeWord();
    }
  }

  bool IsAtLineStart() const { return place_ == 0 || text_[place_ - 1] == '\n'; }

  /// Goes on to that place.
  void Pass(std::size_t place) {
    line_ += static_cast<int>(std::count(text_.begin() + static_cast<std::ptrdiff_t>(place_),
                                         text_.begin() + static_cast<std::ptrdiff_t>(place), '\n'));
    place_ = place;
  }

  void TakeComment() {
    const std::size_t end = text_.find('}', place_);
    if (end == std::string_view::npos) return Fail(line_, "a comment that does not end");
    Pass(end + 1);
  }

  void TakeBracket(char c) {
    if (depth_ == 0 && (c == ')' || in_ != In::kMoves)) {
      return Fail(line_, "a bracket where there is none to be");
    }
    if (depth_ == 0) variation_line_ = line_;
    depth_ += c == '(' ? 1 : -1;
    Pass(place_ + 1);
  }

  void TakeTag() {
    std::size_t end = place_ + 1;
    if (end == text_.size() || !IsLetter(text_[end])) return Fail(line_, "no tag");
    bool is_quoted = false;
    while (end < text_.size() && text_[end] != '\n' && (is_quoted || text_[end] != ']')) {
      if (text_[end] == '"') is_quoted = !is_quoted;
      const bool escapes = is_quoted && text_[end] == '\\' && text_.substr(end + 1, 1) != "\n";
      end += escapes ? 2 : 1;
    }
    if (end >= text_.size() || text_[end] == '\n') return Fail(line_, "a tag that does not end");
    if (in_ != In::kTags) ++count_.games;
    in_ = In::kTags;
    Pass(end + 1);
  }

  void TakeWord() {
    const std::size_t end = std::min(text_.find_first_of(kEndsWord, place_), text_.size());
    const std::string_view word = text_.substr(place_, end - place_);
    if (in_ == In::kNothing || in_ == In::kEnd) return Fail(line_, "a game without tags");
    in_ = IsResult(word) ? In::kEnd : In::kMoves;
    Pass(end);
  }

  void Fail(int line, const char* why) {
    count_.bad_line = line;
    count_.why = why;
  }

  std::string_view text_;
  std::size_t place_ = 0;
  int line_ = 1;
  int depth_ = 0;  ///< of the variations
  int variation_line_ = 0;
  In in_ = In::kNothing;
  PgnCount count_;
};

}  // namespace

PgnCount CountPgnGames(std::string_view text) {
  return PgnCounter(text).Count();
}

}  // namespace tarvendo
