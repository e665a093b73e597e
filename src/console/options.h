#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "console/word_form.h"

namespace tarvendo {

class CommandArgs;

/// One option of a command: how its word begins (any case), and whether a value follows it.
struct OptionForm {
  std::string_view prefix;
  bool takes_value;
  bool whole_word = false;     ///< the word must be the prefix, not only begin with it
  std::string_view name = {};  ///< the whole word; empty when it is the prefix
  Operand value = Operand::kNothing;
  std::string_view choices = {};  ///< the words for its value, a comma between two
};

/// An option that stands on the line.
struct GivenOption {
  bool Is(const OptionForm& other) const { return form->prefix == other.prefix; }

  const OptionForm* form;
  std::string value;  ///< the word behind it, unless that begins with "-"; empty when there is none
  std::string rest;   ///< everything behind it up to the next word that begins with "-"
};

/// The words of a line, sorted. A word that begins with "-" is an option, never a value.
struct GivenOptions {
  std::vector<GivenOption> options;  ///< in the order of the line
  std::vector<std::string> others;   ///< the words that are neither options nor their values

  bool Has(const OptionForm& form) const { return Find(form) != nullptr; }

  /// The last option of that form; null when it is not given.
  const GivenOption* Find(const OptionForm& form) const;

  /// The value of the last option of that form as a decimal number; 0 when there is none.
  int Number(const OptionForm& form) const;
};

/// Sorts the words behind the command. Nothing, with "I just don't know what you mean by '%s'.\n"
/// for the first such word, when one begins with "-" and is no option of the command.
/// The forms live as long as what is returned.
std::optional<GivenOptions> ReadOptions(const CommandArgs& args, std::span<const OptionForm> forms);

/// The options as words that can be offered.
std::vector<WordForm> WordsOf(std::span<const OptionForm> forms);

}  // namespace tarvendo
