#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvendo {

/// How a text is cut into words.
struct SplitRules {
  /// Characters that stand between words, besides white space.
  std::string separators;
  /// Characters that hold a word together which begins with one of them, up to the next such one.
  std::string quotes;
};

/// The words of a text, from left to right. A quoted word keeps its quotes and ends behind the
/// closing one; a quote left open is closed at the end of the text. A quote in the middle of a word
/// is an ordinary character, so that O'Brien is one word.
///
/// With the separators "=;" and the quote `"`, the text `"my engine" /fd="c:\a b"` has the words
/// `"my engine"`, `/fd` and `"c:\a b"`.
std::vector<std::string> SplitWords(std::string_view text, const SplitRules& rules);

/// `word` without the quotes of SplitWords around it; as it is when it does not begin and end with
/// the same one of the two, the double and the single quote.
std::string WithoutQuotes(const std::string& word);

}  // namespace tarvendo
