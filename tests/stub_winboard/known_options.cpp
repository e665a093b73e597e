// The one list of options. WinBoard 4.9 knows many more; here stand, in its own spelling, those
// that the program, the script for XBoard, the documents and the tests use, and no others, so that
// a wrong letter anywhere is found. XBoard knows them by the same names.

#include "known_options.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace stub {
namespace {

/// Options without a value.
constexpr std::array kFlags = {
    // of a batch file
    "ponder", "xponder", "cp", "clock", "thinking", "xlegal", "debug", "xexit", "xpopup",
    "autoflag",
    // of an engine
    "fUCI", "sUCI", "fNoOwnBookUCI", "sNoOwnBookUCI", "reuse", "reuse2",
    // for viewing, and what the script for XBoard adds
    "ncp", "xanimate"};

/// Options with a value: /tc 5, /tc=5 or /tc:5.
constexpr std::array kWithValue = {
    // of a batch file
    "mg", "sgf", "tc", "inc", "mps", "fd", "fcp", "sd", "scp", "debugfile",
    // of an engine
    "fn", "sn", "firstProtocolVersion", "secondProtocolVersion", "variant", "firstOptions",
    "secondOptions", "firstInitString", "secondInitString", "firstTimeOdds", "secondTimeOdds",
    // of all engines, and for openings
    "defaultHashSize", "defaultPathEGTB", "smpCores", "adjudicateLossThreshold",
    "adjudicateDrawMoves", "lgf", "lgi", "lpf", "lpi",
    // for viewing, and what the script for XBoard adds
    "td", "nameOfDebugFile", "soundProgram", "saveSettingsFile", "saveSettingsOnExit",
    "firstComputerString", "secondComputerString"};

template <std::size_t size>
bool Holds(const std::array<const char*, size>& list, std::string_view name) {
  return std::find(list.begin(), list.end(), name) != list.end();
}

bool IsOption(const std::string& word) {
  return !word.empty() && (word.front() == '/' || word.front() == '-');
}

}  // namespace

std::string Refusal(const std::vector<std::string>& words) {
  const bool is_viewing = std::find(words.begin(), words.end(), "/ncp") != words.end();
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string& word = words[i];
    const std::size_t name_end = word.find_first_of("=:");
    const std::string option = word.substr(0, name_end);
    const std::string name = IsOption(word) ? option.substr(1) : "";
    const bool has_value = name_end != std::string::npos;
    if (Holds(kFlags, name) && !has_value) continue;
    if (Holds(kWithValue, name)) {
      if (!has_value && ++i == words.size()) return "No value provided for argument " + option;
      continue;
    }
    if (is_viewing && i + 1 == words.size()) continue;
    return "Unrecognized argument " + option;
  }
  return "";
}

}  // namespace stub
