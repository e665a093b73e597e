#include "publish/pgn_facts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "base/text.h"
#include "platform/letters.h"

namespace tarvendo {
namespace {

bool IsSpace(char c) {
  return c == ' ' || c == '\n' || c == '\r' || c == '\t';
}

/// Seconds of "2.5", "2.5s", "1:03" or "0:01:03"; nothing for anything else.
std::optional<double> TimeIn(std::string_view word) {
  if (word.ends_with('s')) word.remove_suffix(1);
  double seconds = 0;
  double part = 0;
  double decimal = 0;  // what the next digit behind a point counts; 0 before a point
  bool has_digit = false;
  for (const char c : word) {
    if (IsDigit(c)) {
      part = decimal > 0 ? part + decimal * (c - '0') : part * 10 + (c - '0');
      decimal /= 10;
      has_digit = true;
    } else if (c == '.' && decimal == 0 && has_digit) {
      decimal = 0.1;
    } else if (c == ':' && decimal == 0 && has_digit) {
      seconds = (seconds + part) * 60;
      part = 0;
    } else {
      return std::nullopt;
    }
  }
  if (!has_digit || seconds + part > 1e8) return std::nullopt;
  return seconds + part;
}

/// Reads a game from its first byte to its last.
class GameReader {
 public:
  explicit GameReader(std::string_view text) : text_(text) {}

  PgnFacts Read() {
    while (at_ < text_.size()) {
      const char c = text_[at_];
      if (c == '[' && (at_ == 0 || text_[at_ - 1] == '\n')) {
        ReadTag();
      } else if (c == '{') {
        ReadComment(Through('}'));
      } else if (c == ';') {
        ReadComment(Through('\n'));
      } else if (c == '(') {
        SkipVariation();
      } else if (IsSpace(c)) {
        ++at_;
      } else {
        ReadWord();
      }
    }
    if (!facts_.seconds && has_times_) {
      facts_.seconds = static_cast<int>(std::lround(seconds_of_moves_));
    }
    return std::move(facts_);
  }

 private:
  /// What stands between here and the next such character (or the end), and steps behind it.
  std::string_view Through(char end) {
    const std::size_t found = std::min(text_.find(end, at_), text_.size());
    const std::string_view inner = text_.substr(at_ + 1, found - std::min(found, at_ + 1));
    at_ = std::min(found + 1, text_.size());
    return inner;
  }

  void ReadTag() {
    const std::string_view line = Through('\n');
    const std::size_t quote = line.find('"');
    const std::size_t end = line.rfind('"');
    if (quote == std::string_view::npos || end <= quote) return;
    const std::string value(line.substr(quote + 1, end - quote - 1));
    if (line.starts_with("Number ")) facts_.number = ToInt(value);
    if (line.starts_with("White ")) facts_.white = value;
    if (line.starts_with("Black ")) facts_.black = value;
    if (line.starts_with("Termination ")) facts_.termination = value;
    if (line.starts_with("GameDuration ")) {
      const auto seconds = TimeIn(value);
      if (seconds) facts_.seconds = static_cast<int>(std::lround(*seconds));
    }
  }

  void ReadComment(std::string_view comment) {
    while (!comment.empty() && IsSpace(comment.front()))
      comment.remove_prefix(1);
    while (!comment.empty() && IsSpace(comment.back()))
      comment.remove_suffix(1);
    if (comment.empty()) return;
    if (TakeTime(comment)) return;
    facts_.ending = comment;
    std::replace(facts_.ending.begin(), facts_.ending.end(), '\n', ' ');
    std::erase(facts_.ending, '\r');
  }

  /// Whether the comment is what an engine thought of its move; its time is taken.
  bool TakeTime(std::string_view comment) {
    std::optional<double> seconds;
    const bool is_command = comment.starts_with("[%");
    const bool is_thought =
        comment.find('/') != std::string_view::npos &&
        (IsDigit(comment[0]) || comment[0] == '+' || comment[0] == '-' || comment[0] == '(');
    if (!is_command && !is_thought) return false;
    if (is_command) {
      const std::size_t at = comment.find("%emt ");
      if (at == std::string_view::npos) return true;
      const std::string_view value = comment.substr(at + 5);
      seconds = TimeIn(value.substr(0, value.find_first_of(" ]")));
    } else {
      const std::size_t blank = comment.rfind(' ');
      if (blank != std::string_view::npos) seconds = TimeIn(comment.substr(blank + 1));
    }
    if (seconds) seconds_of_moves_ += *seconds;
    has_times_ = has_times_ || seconds.has_value();
    return true;
  }

  void SkipVariation() {
    int depth = 0;
    for (; at_ < text_.size(); ++at_) {
      if (text_[at_] == '{') at_ = std::min(text_.find('}', at_), text_.size() - 1);
      if (text_[at_] == '(') ++depth;
      if (text_[at_] == ')' && --depth == 0) break;
    }
    at_ = std::min(at_ + 1, text_.size());
  }

  /// A move number, a move, or the result.
  void ReadWord() {
    const std::size_t end = std::min(text_.find_first_of(" \t\r\n{};()", at_), text_.size());
    std::string_view word = text_.substr(at_, std::max<std::size_t>(end - at_, 1));
    at_ += word.size();
    if (!word.starts_with("0-0")) {
      const std::size_t digits = std::min(word.find_first_not_of("0123456789"), word.size());
      if (digits < word.size() && word[digits] == '.') {
        word.remove_prefix(std::min(word.find_first_not_of('.', digits), word.size()));
      }
    }
    if (word.empty()) return;
    const bool is_move = IsLetter(word[0]) || word.starts_with("0-0") || word.starts_with("O-O");
    if (!is_move) return;
    ++facts_.plies;
    facts_.ending.clear();  // a comment before a move tells of the move, not of the end
  }

  std::string_view text_;
  std::size_t at_ = 0;
  PgnFacts facts_;
  double seconds_of_moves_ = 0;
  bool has_times_ = false;
};

struct KnownEnding {
  std::string_view part;  ///< in small letters
  const char* termination;
};

// The first that fits counts: an adjudicated repetition is an adjudication.
constexpr std::array kKnownEndings = {
    KnownEnding{"adjudicat", "adjudication"},
    KnownEnding{"on time", "time forfeit"},
    KnownEnding{"time forfeit", "time forfeit"},
    KnownEnding{"forfeit due to", "rules infraction"},
    KnownEnding{"illegal", "rules infraction"},
    KnownEnding{"invalid move", "rules infraction"},
    KnownEnding{"false", "rules infraction"},
    KnownEnding{"exited unexpectedly", "abandoned"},
    KnownEnding{"disconnect", "abandoned"},
    KnownEnding{"crash", "abandoned"},
    KnownEnding{"stall", "abandoned"},
    KnownEnding{"mate", "normal"},
    KnownEnding{"resign", "normal"},
    KnownEnding{"draw", "normal"},
    KnownEnding{"repetition", "normal"},
    KnownEnding{"50 move", "normal"},
    KnownEnding{"50-move", "normal"},
    KnownEnding{"insufficient", "normal"},
    KnownEnding{"variant end", "normal"},
};

}  // namespace

PgnFacts ReadPgnGame(std::string_view game) {
  return GameReader(game).Read();
}

std::size_t NextPgnGame(std::string_view text) {
  bool was_tag = text.starts_with('[');
  bool in_comment = false;
  std::size_t line = 0;
  while (true) {
    const std::size_t feed = text.find('\n', line);
    if (feed == std::string_view::npos || feed + 1 >= text.size()) return std::string_view::npos;
    if (!was_tag) {
      for (const char c : text.substr(line, feed - line)) {
        if (c == '{') in_comment = true;
        if (c == '}') in_comment = false;
      }
    }
    line = feed + 1;
    const std::string_view rest = text.substr(line);
    const bool is_tag = rest.starts_with('[') && !in_comment;
    if ((is_tag && !was_tag) || rest.starts_with("[Event \"")) return line;
    // Blank lines stand between the tags and the moves, and behind the moves.
    was_tag = is_tag;
  }
}

std::string TerminationOf(std::string_view ending, bool has_result) {
  if (!has_result) return "unterminated";
  std::string small(ending);
  std::transform(small.begin(), small.end(), small.begin(), ToLowerLetter);
  for (const KnownEnding& known : kKnownEndings) {
    if (small.find(known.part) != std::string::npos) return known.termination;
  }
  return "";
}

}  // namespace tarvendo
