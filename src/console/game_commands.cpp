#include <array>
#include <string>

#include "base/log.h"
#include "base/text.h"
#include "console/command_args.h"
#include "console/command_context.h"
#include "console/game_options.h"
#include "console/handlers.h"
#include "console/word_form.h"
#include "tourney/game_list.h"
#include "tourney/rounds.h"
#include "tourney/standings.h"
#include "tourney/tourney.h"
#include "tourney/tourney_file.h"

namespace tarvendo {
namespace {

struct ResultWord {
  const char* prefix;
  int result;
  const char* shown;
};

constexpr std::array<ResultWord, 4> kResultWords = {{{"1-", kWhiteWins, "1 - 0"},
                                                     {"1/", kDraw, "1/2 - 1/2"},
                                                     {"0-", kBlackWins, "0 - 1"},
                                                     {"un", kUnknown, "*"}}};

struct StatusWord {
  const char* word;
  int status;
  const char* shown;
};

constexpr std::array<StatusWord, 3> kStatusWords = {
    {{"0", kNothingDone, "NOTHING DONE"}, {"1", kSpooled, "SPOOLED"}, {"2", kReady, "READY"}}};

constexpr const char* kResultChoices =
    "Possible choices:\n1-0     = white win\n1/2-1/2 = draw\n0-1     = black win\n";
constexpr const char* kStatusChoices =
    "Possible choices:\n0 = NOTHING DONE\n1 = SPOOLED\n2 = READY\n";

constexpr WordForm kResult{"result", "res", Operand::kNothing, "1-0,1/2-1/2,0-1,unknown"};
constexpr WordForm kStatus{"status", "sta", Operand::kNothing, "0,1,2"};

/// "game 7. Alpha - Beta", as the messages name a game.
std::string Named(const Game& game) {
  return Format("game %d. %s - %s", game.number, game.white_player.c_str(),
                game.black_player.c_str());
}

void PrintRefusal(const char* what, const std::string& word, const char* choices) {
  const std::string refusal =
      word.empty() ? std::string("You didn't specify ") + what + ".\n"
                   : std::string("I don't understand the ") + what + " '" + word + "'.\n";
  PrintText(refusal + choices);
}

void SetResult(Tourney& tourney, const Game& game, const std::string& word) {
  for (const ResultWord& known : kResultWords) {
    if (!BeginsWithNoCase(word, known.prefix)) continue;
    tourney.Change(game)->result = known.result;
    PrintText("Result of " + Named(game) + " set " + known.shown + ".\n");
    UpdateStandingsAndRound(tourney);
    return;
  }
  PrintRefusal("result", word, kResultChoices);
}

void SetStatus(Tourney& tourney, const Game& game, const std::string& word) {
  for (const StatusWord& known : kStatusWords) {
    if (word != known.word) continue;
    tourney.Change(game)->status = known.status;
    PrintText("Status of " + Named(game) + " set to " + known.shown +
              ".\nYou should also set the result.\n");
    return;
  }
  PrintRefusal("status", word, kStatusChoices);
}

void PrintRoundChange(const Tourney& tourney, int former_round) {
  if (tourney.State().round != former_round) Print("Round set to %d.\n", tourney.State().round);
}

}  // namespace

std::vector<WordForm> GameFields() {
  return {kResult, kStatus};
}

void DoGame(CommandContext& context) {
  const CommandArgs& args = context.args;
  const std::string number = args.Word(1);
  if (number.empty()) return Print("You didn't specify a game.\n");
  if (!IsAllDigits(number)) {
    PrintText("Game number expected, '" + number + "' found.\n");
    return;
  }
  const Game* game = context.tourney.FindGame(ToInt(number));
  if (game == nullptr) return Print("Game number %d does not exist.\n", ToInt(number));
  const std::string command = args.Word(2);
  if (command.empty()) {
    Print("You didn't specify a command for game, so here's it's data:\n");
    PrintText(GameData(*game));
  } else if (BeginsWithNoCase(command, kResult.prefix)) {
    SetResult(context.tourney, *game, args.Word(3));
  } else if (BeginsWithNoCase(command, kStatus.prefix)) {
    SetStatus(context.tourney, *game, args.Word(3));
  } else {
    PrintText("I don't understand the command '" + command + "'.\n");
  }
}

void DoRemoveGames(CommandContext& context) {
  Tourney& tourney = context.tourney;
  context.file.AutoSave(tourney);
  const auto given = ReadGameSelection(context.args);
  if (!given) return;
  if (!given->selects_something || given->has_unusable_option) {
    return Print("No games removed, because you didn't specify one!\n");
  }
  const int former_round = tourney.State().round;
  if (given->filter.number != 0) {
    GameFilter others = given->filter;
    others.number = 0;
    RemoveFirstGame(tourney, context.host.files, given->filter.number, others);
  } else {
    RemoveGames(tourney, context.host.files, given->filter);
  }
  RecomputeCurrentRound(tourney);
  PrintRoundChange(tourney, former_round);
}

void DoShowGames(CommandContext& context) {
  const auto given = ReadGameSelection(context.args);
  if (given) ListGames(context.tourney, given->filter);
}

}  // namespace tarvendo
