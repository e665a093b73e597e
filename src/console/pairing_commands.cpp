#include <array>

#include "base/log.h"
#include "base/text.h"
#include "console/command_args.h"
#include "console/command_context.h"
#include "console/handlers.h"
#include "console/options.h"
#include "console/unknown_word.h"
#include "pairing/bracket_list.h"
#include "pairing/swiss_driver.h"
#include "tourney/standings.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

constexpr OptionForm kTime{"-ti", true, false, "-time"};
constexpr OptionForm kSize{"-si", true, false, "-size"};
constexpr OptionForm kDown{"-do", false, false, "-down"};
constexpr OptionForm kUp{"-up", false};

constexpr std::array kPairOptions = {kTime, kSize, kDown, kUp};
constexpr std::array kBracketOptions = {kSize, kDown, kUp};

/// Any option turns the automatic mode off; without a direction both are tried, down first.
PairingRequest RequestOf(const GivenOptions& given) {
  PairingRequest request;
  request.automatic = given.options.empty();
  request.time_limit = given.Number(kTime);
  request.size.half_points = given.Number(kSize);
  const bool has_direction = given.Has(kDown) || given.Has(kUp);
  request.down = !request.automatic && (given.Has(kDown) || !has_direction);
  request.up = !request.automatic && (given.Has(kUp) || !has_direction);
  return request;
}

}  // namespace

std::vector<WordForm> PairWords() {
  return WordsOf(kPairOptions);
}

std::vector<WordForm> BracketWords() {
  return WordsOf(kBracketOptions);
}

void DoPair(CommandContext& context) {
  Tourney& tourney = context.tourney;
  if (!tourney.IsSwiss()) {
    return Print("This command has only effect on swiss tourneys. Try CreateRRGames instead.\n");
  }
  if (tourney.Participants().size() % 2 != 0) {
    return Print("In swiss tourneys total number of players must be even.\n");
  }
  const auto given = ReadOptions(context.args, kPairOptions);
  if (!given) return;
  const std::string first = context.args.Word(1);
  if (IsAllDigits(first)) {
    PairBracket(tourney, context.brackets, ToInt(first));
  } else if (!given->others.empty()) {
    PrintUnknownWord(given->others.front());
  } else {
    PairSwissRound(tourney, context.brackets, RequestOf(*given));
  }
}

void DoCreateBrackets(CommandContext& context) {
  const auto given = ReadOptions(context.args, kBracketOptions);
  if (!given) return;
  UpdateStandingsAndRound(context.tourney);
  const BracketMode mode = given->Has(kUp) ? BracketMode::kPairUp : BracketMode::kPairDown;
  const BracketWidth width = WidthOf(BracketSize{given->Number(kSize)});
  if (!CreateBrackets(context.tourney, context.brackets, width, mode)) {
    return Print("Can't create brackets. Maybe there are still games to be played?\n");
  }
  ShowBrackets(context.tourney, context.brackets);
}

void DoShowBrackets(CommandContext& context) {
  if (context.tourney.IsSwiss()) ShowBrackets(context.tourney, context.brackets);
}

}  // namespace tarvendo
