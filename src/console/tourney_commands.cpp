#include <mutex>

#include "base/log.h"
#include "base/text.h"
#include "base/word_skip.h"
#include "console/command_args.h"
#include "console/command_context.h"
#include "console/handlers.h"
#include "console/help.h"
#include "pairing/bracket_list.h"
#include "platform/files.h"
#include "platform/processes.h"
#include "runner/next_game.h"
#include "tourney/game_list.h"
#include "tourney/round_robin.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

/// The save that stands before a command that cannot be taken back.
void SaveBefore(Tourney& tourney) {
  if (tourney.settings.auto_save != 0) AutoSave(tourney);
}

/// The rest of a raw line from its second word on, trailing white space cut.
std::string NextWords(const std::string& line) {
  const auto start = SkipWord(line, 0);
  std::string rest = start ? line.substr(*start) : std::string();
  TrimRight(rest);
  return rest;
}

}  // namespace

void DoView(CommandContext& context) {
  std::string line;
  {
    const std::lock_guard lock(context.tourney.Lock());
    Processes& processes = context.tourney.GetHost().processes;
    const TourneySettings& settings = context.tourney.settings;
    line = processes.ShellWords({settings.winboard_path}) + " /ncp /td 0 " +
           processes.ShellWords({settings.pgn_file});
  }
  if (TheLog != nullptr) TheLog->RunShellCommand(line);
}

void DoReset(CommandContext& context) {
  SaveBefore(context.tourney);
  context.brackets.Clear();
  DeleteErrorFiles(context.tourney);
  Print(context.tourney.Reset() ? "Tourney reseted.\n" : "Tourney reset failed!\n");
}

void DoLoad(CommandContext& context) {
  const bool loaded = context.tourney.Load(context.args.Word(1));
  if (loaded) context.brackets.Clear();
  context.must_save = loaded;
  Print(loaded ? "Tourney loaded.\n" : "Loading tourney failed!\n");
}

void DoSave(CommandContext& context) {
  Print(context.tourney.Save(context.args.Word(1)) ? "Tourney saved.\n"
                                                   : "Saving tourney failed!\n");
}

void DoHousekeep(CommandContext& context) {
  if (TheLog != nullptr) TheLog->Housekeep(ToInt(context.args.Word(1)));
}

void DoHelp(CommandContext& context) {
  Help(context.line, context.tourney.GetHost().files, context.tourney.WorkDir());
}

void DoCreateRRGames(CommandContext& context) {
  if (context.tourney.IsSwiss()) {
    Print("This command has only effect on Round robin tourneys.\n");
    Print("Try Pair instead.\n");
    return;
  }
  SaveBefore(context.tourney);
  CreateRRGames(context.tourney);
}

void DoChangeDirectory(CommandContext& context) {
  // Whether it worked is seen by what the next command finds.
  context.tourney.GetHost().files.ChangeDirectory(NextWords(context.line));
}

}  // namespace tarvendo
