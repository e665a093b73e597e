#include "console/start_up.h"

#include <array>
#include <cstddef>

#include "base/text.h"

namespace tarvendo {
namespace {

constexpr const char* kWaitWord = "--wait";

/// A long option whose value is a number.
struct NumberOption {
  const char* word;
  int StartUp::*field;
  int largest;
};

constexpr std::array kNumberOptions = {
    NumberOption{"--games", &StartUp::games, 512},
    NumberOption{"--patience", &StartUp::patience, 100000},
};

/// The number from 1 to `largest` that the text is; 0 for anything else.
int NumberUpTo(int largest, const std::string& text) {
  const int number = IsAllDigits(text) ? ToInt(text) : 0;
  return number >= 1 && number <= largest ? number : 0;
}

void TakeNumber(StartUp& start, const NumberOption& option, const std::string* value) {
  const int number = value == nullptr ? 0 : NumberUpTo(option.largest, *value);
  start.*option.field = number;
  if (number != 0 || !start.error.empty()) return;
  start.error = std::string(option.word) + " takes a number from 1 to " +
                std::to_string(option.largest) +
                (value == nullptr ? "." : ", not '" + *value + "'.");
}

/// Takes the long option at `place`, and the word behind it when that is its value. False when
/// there is none.
bool TakeLongOption(StartUp& start, const std::vector<std::string>& words, std::size_t& place) {
  const std::string& word = words[place];
  if (word == kWaitWord) {
    start.waits = true;
    return true;
  }
  for (const NumberOption& option : kNumberOptions) {
    const std::string with_value = std::string(option.word) + "=";
    if (word == option.word) {
      const bool has_value = place + 1 < words.size();
      TakeNumber(start, option, has_value ? &words[++place] : nullptr);
      return true;
    }
    if (word.starts_with(with_value)) {
      const std::string value = word.substr(with_value.size());
      TakeNumber(start, option, &value);
      return true;
    }
  }
  return false;
}

}  // namespace

StartUp ReadCommandLine(const std::vector<std::string>& words) {
  StartUp start;
  std::vector<std::string> arguments;
  for (std::size_t place = 0; place < words.size(); ++place) {
    if (!TakeLongOption(start, words, place)) arguments.push_back(words[place]);
  }
  if (arguments.size() == 1) {
    start.script = arguments.front();
    return start;
  }
  for (const std::string& argument : arguments) {
    if (!argument.starts_with("-")) {
      if (start.script.empty()) start.script = argument;
    } else if (argument.size() > 1 && argument[1] == 'c') {
      start.continues = true;
    }
  }
  return start;
}

}  // namespace tarvendo
