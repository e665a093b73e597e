#include <array>

#include "base/text.h"
#include "console/command_args.h"
#include "console/command_context.h"
#include "console/handlers.h"
#include "console/options.h"
#include "console/unknown_word.h"
#include "runner/collect.h"
#include "runner/spool.h"
#include "tourney/participants.h"

namespace tarvendo {
namespace {

constexpr OptionForm kOfRound{"-ro", true, false, "-round"};
constexpr OptionForm kOfPlayer{"-pla", true, false, "-player", Operand::kParticipant};
constexpr OptionForm kEveryGame{"-all", false};

constexpr std::array kSpoolOptions = {kOfRound, kOfPlayer, kEveryGame};

void SpoolRoundOf(Tourney& tourney, FileSystem& files, const std::string& value) {
  if (!value.empty() && !IsAllDigits(value)) return PrintUnknownWord(value);
  SpoolRound(tourney, files, ToInt(value));
}

void SpoolGamesOf(Tourney& tourney, FileSystem& files, const std::string& option,
                  const std::string& participant) {
  if (participant.empty()) return PrintUnknownWord(option);
  const int number = FindPlayer(tourney, participant);
  if (number != 0) SpoolPlayer(tourney, files, number);
}

/// `word` is the option as it was typed.
void SpoolByOption(Tourney& tourney, FileSystem& files, const GivenOption& option,
                   const std::string& word) {
  if (option.Is(kOfRound)) {
    SpoolRoundOf(tourney, files, option.value);
  } else if (option.Is(kOfPlayer)) {
    SpoolGamesOf(tourney, files, word, option.rest);
  } else {
    SpoolAll(tourney, files);
  }
}

}  // namespace

std::vector<WordForm> SpoolWords() {
  return WordsOf(kSpoolOptions);
}

void DoSpool(CommandContext& context) {
  const auto given = ReadOptions(context.args, kSpoolOptions);
  if (!given) return;
  FileSystem& files = context.host.files;
  const std::string first = context.args.Word(1);
  if (!given->options.empty() && first.starts_with("-")) {
    SpoolByOption(context.tourney, files, given->options.front(), first);
  } else if (first.empty()) {
    Spool(context.tourney, files, 0);
  } else if (IsAllDigits(first)) {
    Spool(context.tourney, files, ToInt(first));
  } else {
    PrintUnknownWord(first);
  }
}

void DoUnspool(CommandContext& context) {
  Unspool(context.tourney, context.host.files, context.file, context.running);
}

void DoRespool(CommandContext& context) {
  RespoolAll(context.tourney, context.host.files, context.file, context.running);
}

void DoReplay(CommandContext& context) {
  ReplayUnfinished(context.tourney, context.host.files);
}

void DoGetAllResults(CommandContext& context) {
  CollectAll(context.tourney, context.host.files, context.file, context.running);
}

}  // namespace tarvendo
