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

int StatusOf(const std::string& word) {
  return MeaningOf(kStatusMeanings, word);
}

int ResultOf(const std::string& word) {
  return MeaningOf(kResultMeanings, word);
}

int NumberIn(const std::string& word) {
  return ToInt(word);
}

/// An option that narrows the selection: what its value is put into, and how that is read.
struct Criterion {
  OptionForm form;
  int GameFilter::*field;
  int (*read)(const std::string& value);
};

constexpr Operand kNoOperand = Operand::kNothing;
constexpr OptionForm kWhole{"-all", false};

constexpr std::array<Criterion, 7> kCriteria = {{
    {{"-pla", true, false, "-player"}, &GameFilter::player, NumberIn},
    {{"-whi", true, false, "-white"}, &GameFilter::white, NumberIn},
    {{"-bla", true, false, "-black"}, &GameFilter::black, NumberIn},
    {{"-ro", true, false, "-round"}, &GameFilter::round, NumberIn},
    {{"-sub", true, false, "-subround"}, &GameFilter::sub_round, NumberIn},
    {{"-sta", true, false, "-status", kNoOperand, "not,spooled,ready"},
     &GameFilter::status,
     StatusOf},
    {{"-res", true, false, "-result", kNoOperand, "white,black,draw,unknown"},
     &GameFilter::result,
     ResultOf},
}};

const std::vector<OptionForm>& SelectionOptions() {
  static const std::vector<OptionForm> kForms = [] {
    std::vector<OptionForm> forms = {kWhole};
    for (const Criterion& criterion : kCriteria)
      forms.push_back(criterion.form);
    return forms;
  }();
  return kForms;
}

/// The criterion of an option; null for "-all", which has none.
const Criterion* CriterionOf(const GivenOption& option) {
  const auto is_it = [&](const Criterion& criterion) { return option.Is(criterion.form); };
  const auto found = std::find_if(kCriteria.begin(), kCriteria.end(), is_it);
  return found == kCriteria.end() ? nullptr : &*found;
}

/// Puts the option's value into the filter; 0, which would match everything, is no usable value.
bool Apply(const GivenOption& option, GameFilter& filter) {
  const Criterion* criterion = CriterionOf(option);
  if (criterion == nullptr) return filter.all = true;
  return (filter.*criterion->field = criterion->read(option.value)) != 0;
}

/// "both": the selection by colour (the later one, when both are there) becomes one by player.
void WidenToBothColours(const GivenOptions& given, GameFilter& filter) {
  for (const GivenOption& option : given.options) {
    const Criterion* criterion = CriterionOf(option);
    if (criterion == nullptr) continue;
    if (criterion->field == &GameFilter::white || criterion->field == &GameFilter::black) {
      filter.player = ToInt(option.value);
    }
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
