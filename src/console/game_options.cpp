#include "console/game_options.h"

#include <algorithm>
#include <array>
#include <string>

#include "base/text.h"
#include "console/command_args.h"
#include "console/options.h"
#include "tourney/game.h"

namespace tarvendo {
namespace {

const std::vector<OptionForm>& SelectionOptions() {
  constexpr Operand kNone = Operand::kNothing;
  static const std::vector<OptionForm> kForms = {
      {"-all", false},
      {"-pla", true, false, "-player"},
      {"-whi", true, false, "-white"},
      {"-bla", true, false, "-black"},
      {"-ro", true, false, "-round"},
      {"-sub", true, false, "-subround"},
      {"-sta", true, false, "-status", kNone, "not,spooled,ready"},
      {"-res", true, false, "-result", kNone, "white,black,draw,unknown"}};
  return kForms;
}

struct Meaning {
  const char* prefix;
  int value;
};

constexpr std::array<Meaning, 3> kStatusMeanings = {
    {{"not", kNothingDone}, {"spo", kSpooled}, {"rea", kReady}}};

constexpr std::array<Meaning, 7> kResultMeanings = {{{"1-", kWhiteWins},
                                                     {"w", kWhiteWins},
                                                     {"1/", kDraw},
                                                     {"d", kDraw},
                                                     {"0", kBlackWins},
                                                     {"bl", kBlackWins},
                                                     {"un", kUnknown}}};

/// The value of the first meaning that the word begins with; 0 when there is none.
template <std::size_t N>
int MeaningOf(const std::array<Meaning, N>& meanings, const std::string& word) {
  for (const Meaning& meaning : meanings) {
    if (BeginsWithNoCase(word, meaning.prefix)) return meaning.value;
  }
  return 0;
}

/// Puts the option's value into the filter; 0, which would match everything, is no usable value.
bool Apply(const GivenOption& option, GameFilter& filter) {
  const std::string_view prefix = option.form->prefix;
  if (prefix == "-all") return filter.all = true;
  int& criterion = prefix == "-pla"   ? filter.player
                   : prefix == "-whi" ? filter.white
                   : prefix == "-bla" ? filter.black
                   : prefix == "-ro"  ? filter.round
                   : prefix == "-sub" ? filter.sub_round
                   : prefix == "-sta" ? filter.status
                                      : filter.result;
  if (prefix == "-sta") {
    criterion = MeaningOf(kStatusMeanings, option.value);
  } else if (prefix == "-res") {
    criterion = MeaningOf(kResultMeanings, option.value);
  } else {
    criterion = ToInt(option.value);
  }
  return criterion != 0;
}

/// "both": the selection by colour (the later one, when both are there) becomes one by player.
void WidenToBothColours(const GivenOptions& given, GameFilter& filter) {
  for (const GivenOption& option : given.options) {
    const std::string_view prefix = option.form->prefix;
    if (prefix == "-whi" || prefix == "-bla") filter.player = ToInt(option.value);
  }
  filter.white = 0;
  filter.black = 0;
}

bool HasWord(const GivenOptions& given, const std::string& word) {
  return std::any_of(given.others.begin(), given.others.end(),
                     [&](const std::string& other) { return BeginsWithNoCase(other, word); });
}

}  // namespace

std::vector<WordForm> SelectionWords() {
  std::vector<WordForm> words = WordsOf(SelectionOptions());
  words.push_back({"both", "both"});
  return words;
}

std::optional<GameSelection> ReadGameSelection(const CommandArgs& args) {
  const auto given = ReadOptions(args, SelectionOptions());
  if (!given) return std::nullopt;
  GameSelection selection;
  if (IsAllDigits(args.Word(1))) {
    selection.filter.number = ToInt(args.Word(1));
    selection.selects_something = selection.filter.number != 0;
  }
  for (const GivenOption& option : given->options) {
    if (Apply(option, selection.filter)) {
      selection.selects_something = true;
    } else {
      selection.has_unusable_option = true;
    }
  }
  if (HasWord(*given, "both")) WidenToBothColours(*given, selection.filter);
  return selection;
}

}  // namespace tarvendo
