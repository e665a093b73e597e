#include "base/text.h"
#include "console/command_args.h"
#include "console/command_context.h"
#include "console/handlers.h"
#include "console/options.h"
#include "runner/collect.h"
#include "runner/spool.h"
#include "tourney/participants.h"

namespace tarvendo {
namespace {

const std::vector<OptionForm>& SpoolOptions() {
  static const std::vector<OptionForm> kForms = {{"-ro", true}, {"-pla", true}, {"-all", false}};
  return kForms;
}

void SpoolRoundOf(Tourney& tourney, const std::string& value) {
  if (!value.empty() && !IsAllDigits(value)) return PrintUnknownWord(value);
  SpoolRound(tourney, ToInt(value));
}

void SpoolGamesOf(Tourney& tourney, const std::string& option, const std::string& participant) {
  if (participant.empty()) return PrintUnknownWord(option);
  const int number = FindPlayer(tourney, participant);
  if (number != 0) SpoolPlayer(tourney, number);
}

/// `word` is the option as it was typed.
void SpoolByOption(Tourney& tourney, const GivenOption& option, const std::string& word) {
  const std::string_view prefix = option.form->prefix;
  if (prefix == "-ro") {
    SpoolRoundOf(tourney, option.value);
  } else if (prefix == "-pla") {
    SpoolGamesOf(tourney, word, option.rest);
  } else {
    SpoolAll(tourney);
  }
}

}  // namespace

void DoSpool(CommandContext& context) {
  const auto given = ReadOptions(context.args, SpoolOptions());
  if (!given) return;
  const std::string first = context.args.Word(1);
  if (!given->options.empty() && first.starts_with("-")) {
    SpoolByOption(context.tourney, given->options.front(), first);
  } else if (first.empty()) {
    Spool(context.tourney, 0);
  } else if (IsAllDigits(first)) {
    Spool(context.tourney, ToInt(first));
  } else {
    PrintUnknownWord(first);
  }
}

void DoUnspool(CommandContext& context) {
  Unspool(context.tourney);
}

void DoRespool(CommandContext& context) {
  RespoolAll(context.tourney);
}

void DoReplay(CommandContext& context) {
  ReplayUnfinished(context.tourney);
}

void DoGetAllResults(CommandContext& context) {
  CollectAll(context.tourney);
}

}  // namespace tarvendo
