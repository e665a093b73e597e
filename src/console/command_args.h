#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tarvendo {

/// The words of one command line. A loop pass has one and fills it anew for every line. Word 0 is
/// the command; a word that is not there reads as an empty text, never as an error.
class CommandArgs {
 public:
  /// Takes the line (trailing white space cut) and splits it. Words end at any white space, but the
  /// next one is looked for behind a blank: what only a tab separates from a word is lost.
  void Fill(const std::string& line);

  int Count() const { return static_cast<int>(words_.size()); }

  /// Word i, counted from 0.
  std::string Word(int i) const;

  /// The line from word i on, with its blanks; empty when there is no such word.
  std::string RestFrom(int i) const;

  /// Looks for a word whose first `length` characters are those of the prefix, in any case (a
  /// length below 1 stands for the prefix's own): with a negative position in all words, otherwise
  /// in that one. Gives its position, and 0, the command's own, when nothing matches.
  int Find(const std::string& prefix, int position, int length) const;

 private:
  std::string line_;
  std::vector<std::string> words_;
  std::vector<std::size_t> starts_;  ///< where each word begins in the line
};

}  // namespace tarvendo
