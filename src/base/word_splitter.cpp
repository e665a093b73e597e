#include "base/word_splitter.h"

#include <algorithm>

namespace tarvendo {
namespace {

constexpr std::string_view kBlanks = " \t\n\v\f\r";

/// Where the word that begins with an opening quote ends: behind the closing one, or npos.
std::size_t EndOfQuotedWord(std::string_view text) {
  const std::size_t closing = text.find(text.front(), 1);
  return closing == std::string_view::npos ? closing : closing + 1;
}

}  // namespace

std::vector<std::string> SplitWords(std::string_view text, const SplitRules& rules) {
  const std::string between = std::string(kBlanks) + rules.separators;
  std::vector<std::string> words;
  text.remove_prefix(std::min(text.find_first_not_of(between), text.size()));
  while (!text.empty()) {
    const bool quoted = rules.quotes.find(text.front()) != std::string::npos;
    const std::size_t end = quoted ? EndOfQuotedWord(text) : text.find_first_of(between);
    words.emplace_back(text.substr(0, end));
    if (quoted && end == std::string_view::npos) words.back() += text.front();
    text.remove_prefix(std::min(end, text.size()));
    text.remove_prefix(std::min(text.find_first_not_of(between), text.size()));
  }
  return words;
}

std::string WithoutQuotes(const std::string& word) {
  const bool quoted = word.size() >= 2 && word.front() == word.back() &&
                      (word.front() == '"' || word.front() == '\'');
  return quoted ? word.substr(1, word.size() - 2) : word;
}

}  // namespace tarvendo
