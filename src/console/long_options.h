#pragma once

#include <span>
#include <string>
#include <variant>

#include "console/start_up.h"

namespace tarvendo {

/// A whole number from 1 to `largest`.
struct NumberValue {
  int StartUp::*field;
  int largest;
  int largest_on_cluster = 0;  ///< in place of `largest` where --cluster is given; 0: the same
};

/// Any text but an empty one.
struct TextValue {
  std::string StartUp::*field;
};

/// A file or directory, meant from the directory in which the program is started.
struct PathValue {
  std::string StartUp::*field;
};

/// A long option of the command line: its word and what it sets. The one with the `bool` takes no
/// value.
struct LongOption {
  const char* word;        ///< with its two dashes
  const char* value_name;  ///< what --help calls the value; empty when there is none
  std::variant<bool StartUp::*, NumberValue, TextValue, PathValue> target;
  const char* help;  ///< what it does, a line of at most 56 bytes without a line feed
};

/// All of them, in the order in which --help tells them.
std::span<const LongOption> LongOptions();

/// The option that a word of two dashes was most likely meant to be: the one for which the fewest
/// letters have to be changed, added or removed (Levenshtein 1966), the first of several. Nearest
/// of all is an option that the word begins, or that begins the word.
const LongOption& NearestLongOption(const std::string& word);

/// What --help prints: how the program is started, the options, examples.
std::string CommandLineHelp();

}  // namespace tarvendo
