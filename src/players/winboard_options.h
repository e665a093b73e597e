#pragma once

#include <string>
#include <vector>

namespace tarvendo {

/// The words of WinBoard's options, quotes included: "/fUCI", "/firstTimeOdds", "2".
using OptionWords = std::vector<std::string>;

/// Two words that tell WinBoard the same, one of its first (White) and one of its second engine.
struct ColourForms {
  std::string white;  ///< "/fUCI"
  std::string black;  ///< "/sUCI"
};

/// The forms that a word has for each colour, with the "/" or "-" that it begins with. A word that
/// is no option of one engine has itself for both: "/variant", "2".
ColourForms FormsOf(const std::string& word);

/// The options of `added` that are not among `stored`, in order, joined with single blanks. An
/// option is one only with the same values: of "/x 1", "/x 2" is missing.
std::string MissingOptions(const std::string& stored, const std::string& added);

}  // namespace tarvendo
