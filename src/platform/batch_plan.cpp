#include "platform/batch_plan.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/letters.h"

namespace tarvendo {
namespace {

/// A word with its quotes taken off. A word that had quotes is never a keyword, so a program that
/// is called "del" can still be started.
struct Word {
  std::string text;
  bool was_quoted = false;
};

using Words = std::vector<Word>;

bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}

bool IsQuote(char c) {
  return c == '"' || c == '\'';
}

bool IsKeyword(const Word& word, std::string_view keyword) {
  if (word.was_quoted || word.text.size() != keyword.size()) return false;
  for (std::size_t i = 0; i < keyword.size(); ++i) {
    if (ToLowerLetter(word.text[i]) != keyword[i]) return false;
  }
  return true;
}

std::string_view WithoutEcho(std::string_view line) {
  std::size_t start = 0;
  while (start < line.size() && IsBlank(line[start])) {
    ++start;
  }
  if (start < line.size() && line[start] == '@') ++start;
  return line.substr(start);
}

Words SplitWords(std::string_view line) {
  Words words;
  char open_quote = '\0';
  bool in_word = false;
  for (const char c : line) {
    if (open_quote == '\0' && IsBlank(c)) {
      in_word = false;
      continue;
    }
    if (!in_word) {
      words.emplace_back();
      in_word = true;
    }
    if (open_quote == '\0' && IsQuote(c)) {
      open_quote = c;
      words.back().was_quoted = true;
    } else if (open_quote != '\0' && c == open_quote) {
      open_quote = '\0';
    } else {
      words.back().text += c;
    }
  }
  return words;
}

/// Takes the `if`s at `next` off the line. False when one of them is not complete.
bool TakeConditions(const Words& words, std::size_t& next, BatchStep& step) {
  while (next < words.size() && IsKeyword(words[next], "if")) {
    ++next;
    const bool negated = next < words.size() && IsKeyword(words[next], "not");
    if (negated) ++next;
    if (next + 1 >= words.size() || !IsKeyword(words[next], "exist")) return false;
    step.conditions.push_back({!negated, words[next + 1].text});
    next += 2;
  }
  return next < words.size();
}

std::optional<BatchStep> ParseLine(std::string_view line) {
  const Words words = SplitWords(WithoutEcho(line));
  BatchStep step;
  std::size_t next = 0;
  if (!TakeConditions(words, next, step) || IsKeyword(words[next], "rem")) return std::nullopt;
  step.is_delete = IsKeyword(words[next], "del");
  if (step.is_delete) {
    ++next;
    // With more words than one nobody can say what was to be deleted, so nothing is.
    if (next + 1 != words.size()) return std::nullopt;
  }
  for (; next < words.size(); ++next) {
    step.words.push_back(words[next].text);
  }
  return step;
}

std::string_view WithoutCarriageReturn(std::string_view line) {
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  return line;
}

}  // namespace

std::vector<BatchStep> ParseBatch(const std::string& text) {
  std::vector<BatchStep> steps;
  std::string_view rest = text;
  while (!rest.empty()) {
    const std::size_t end = rest.find('\n');
    std::optional<BatchStep> step = ParseLine(WithoutCarriageReturn(rest.substr(0, end)));
    if (step) steps.push_back(std::move(*step));
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  }
  return steps;
}

}  // namespace tarvendo
