#include "console/command_interpreter.h"

#include <mutex>
#include <optional>

#include "base/log.h"
#include "base/word_skip.h"
#include "console/command_args.h"
#include "console/command_context.h"
#include "console/command_table.h"
#include "console/line_input.h"
#include "platform/faults.h"
#include "runner/next_game.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

/// The line from its first word on, when it begins with white space. The way to the next word leads
/// over a blank, so what stands behind a leading tab up to the first blank is not seen.
std::string WithoutLeadingBlanks(const std::string& line) {
  if (!line.starts_with(' ') && !line.starts_with('\t')) return line;
  const auto start = SkipWord(line, 0);
  return start ? line.substr(*start) : std::string();
}

bool IsAutoSaveOn(const Tourney& tourney) {
  return tourney.settings.auto_save != 0;
}

/// Runs a command; with AutoSave on, saves the tourney when it has changed or the command asks for
/// it.
void RunAndSave(const Command& command, CommandContext& context) {
  Tourney& tourney = context.tourney;
  std::optional<std::string> before;
  if (IsAutoSaveOn(tourney)) before = tourney.ContentText();
  command.run(context);
  if (!IsAutoSaveOn(tourney)) return;
  if (context.must_save || !before || *before != tourney.ContentText()) AutoSave(tourney);
}

}  // namespace

void PrintUnknownWord(const std::string& word) {
  PrintText("I just don't know what you mean by '" + word + "'.\n");
}

void CommandInterpreter::RunCommandLoop(LineInput& input, bool with_banner) {
  CommandArgs args;
  if (with_banner) PrintText(Banner());
  while (true) {
    if (TerminationRequested()) throw Terminated("asked to end between two lines");
    if (input.IsKeyboard()) Print("\n> ");
    const auto read = input.Read();
    if (read && TheLog != nullptr) TheLog->Echo(*read);
    if (input.AtEnd() || !read) return;
    const std::string line = WithoutLeadingBlanks(*read);
    if (line.empty() || line.front() == '\n') continue;
    if (!RunLine(line, args, input)) break;
  }
  const std::lock_guard lock(tourney_.Lock());
  if (IsAutoSaveOn(tourney_)) AutoSave(tourney_);
}

bool CommandInterpreter::RunLine(const std::string& line, CommandArgs& args, LineInput& input) {
  if (IsQuit(line)) return false;
  args.Fill(line);
  CommandContext context{line, args, input, tourney_, players_, brackets_};
  const Command* command = FindCommand(line);
  if (command == nullptr) {
    // The runner goes on while another program works, or waits for the user.
    if (TheLog != nullptr) TheLog->RunShellCommand(line);
  } else if (command->locking == Locking::kByItself) {
    command->run(context);
  } else {
    const std::lock_guard lock(tourney_.Lock());
    RunAndSave(*command, context);
  }
  return true;
}

}  // namespace tarvendo
