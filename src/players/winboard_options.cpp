#include "players/winboard_options.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/word_splitter.h"
#include "platform/letters.h"

namespace tarvendo {
namespace {

struct Pair {
  std::string_view white;
  std::string_view black;
};

/// The options of one engine that WinBoard does not call "firstXxx" and "secondXxx".
constexpr std::array<Pair, 13> kPairs = {{
    {"fUCI", "sUCI"},
    {"fUCCI", "sUCCI"},
    {"fUSI", "sUSI"},
    {"fNoOwnBookUCI", "sNoOwnBookUCI"},
    {"fSAN", "sSAN"},
    {"fcp", "scp"},
    {"fd", "sd"},
    {"fn", "sn"},
    {"fh", "sh"},
    {"initString", "secondInitString"},
    {"reuse", "reuse2"},
    {"xreuse", "xreuse2"},
    {"reuseFirst", "reuseSecond"},
}};
constexpr std::string_view kFirst = "first";
constexpr std::string_view kSecond = "second";

/// Whether the name is `prefix` with a name of its own behind it, as firstTimeOdds has.
bool IsPrefixed(std::string_view name, std::string_view prefix) {
  return name.starts_with(prefix) && name.size() > prefix.size() && IsCapital(name[prefix.size()]);
}

bool BeginsOption(const std::string& word) {
  if (word.starts_with('/')) return word.find('/', 1) == std::string::npos;
  const ColourForms forms = FormsOf(word);
  return forms.white != forms.black;
}

/// The options of a text, each with its values, joined with single blanks.
std::vector<std::string> OptionsOf(const std::string& text) {
  std::vector<std::string> options;
  for (const std::string& word : SplitWords(text, {"", "\"'"})) {
    if (options.empty() || BeginsOption(word)) {
      options.push_back(word);
    } else {
      options.back() += " " + word;
    }
  }
  return options;
}

}  // namespace

ColourForms FormsOf(const std::string& word) {
  if (!word.starts_with('/') && !word.starts_with('-')) return {word, word};
  const std::string mark = word.substr(0, 1);
  const std::string_view name = std::string_view(word).substr(1);
  if (IsPrefixed(name, kFirst)) {
    return {word, mark + std::string(kSecond).append(name.substr(kFirst.size()))};
  }
  if (IsPrefixed(name, kSecond)) {
    return {mark + std::string(kFirst).append(name.substr(kSecond.size())), word};
  }
  for (const Pair& pair : kPairs) {
    if (name != pair.white && name != pair.black) continue;
    return {mark + std::string(pair.white), mark + std::string(pair.black)};
  }
  return {word, word};
}

std::string MissingOptions(const std::string& stored, const std::string& added) {
  std::vector<std::string> there = OptionsOf(stored);
  std::string missing;
  for (const std::string& option : OptionsOf(added)) {
    if (std::find(there.begin(), there.end(), option) != there.end()) continue;
    there.push_back(option);
    missing += (missing.empty() ? "" : " ") + option;
  }
  return missing;
}

}  // namespace tarvendo
