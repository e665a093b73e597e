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
#include "runner/adoption.h"
#include "tourney/game_list.h"
#include "tourney/round_robin.h"
#include "tourney/shared_tourney.h"
#include "tourney/tourney_file.h"

namespace tarvendo {
namespace {

/// The rest of a raw line from its second word on, trailing white space cut.
std::string NextWords(const std::string& line) {
  const auto start = SkipWord(line, 0);
  std::string rest = start ? line.substr(*start) : std::string();
  TrimRight(rest);
  return rest;
}

}  // namespace

void DoView(WaitingCommandContext& context) {
  std::string line;
  {
    const Hold hold = context.shared.Take();
    Processes& processes = context.host.processes;
    const TourneySettings& settings = hold->Settings();
    line = processes.ShellWords({settings.winboard_path}) + " /ncp /td 0 " +
           processes.ShellWords({settings.pgn_file});
  }
  if (TheLog != nullptr) TheLog->RunShellCommand(line);
}

void DoReset(CommandContext& context) {
  // What cannot be taken back is saved before.
  context.file.AutoSave(context.tourney);
  context.brackets.Clear();
  DeleteReasonFiles(context.tourney, context.host.files);
  context.tourney.Reset();
  Print("Tourney reseted.\n");
}

void DoLoad(CommandContext& context) {
  const bool loaded = context.file.Load(context.tourney, context.args.Word(1));
  if (loaded) {
    context.brackets.Clear();
    SpoolRunningAgain(context.tourney, context.host.files, context.running);
  }
  context.must_save = loaded;
  Print(loaded ? "Tourney loaded.\n" : "Loading tourney failed!\n");
}

void DoSave(CommandContext& context) {
  const bool saved = context.file.Save(context.tourney, context.args.Word(1));
  Print(saved ? "Tourney saved.\n" : "Saving tourney failed!\n");
}

void DoHousekeep(CommandContext& context) {
  if (TheLog != nullptr) TheLog->Housekeep(ToInt(context.args.Word(1)));
}

void DoHelp(CommandContext& context) {
  Help(context.line, context.host.files, context.program_directory);
}

void DoCreateRRGames(CommandContext& context) {
  if (context.tourney.IsSwiss()) {
    Print("This command has only effect on Round robin tourneys.\n");
    Print("Try Pair instead.\n");
    return;
  }
  context.file.AutoSave(context.tourney);
  CreateRRGames(context.tourney, context.host.files);
}

void DoChangeDirectory(CommandContext& context) {
  // Whether it worked is seen by what the next command finds.
  context.host.files.ChangeDirectory(NextWords(context.line));
}

}  // namespace tarvendo
