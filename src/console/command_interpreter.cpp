#include "console/command_interpreter.h"

#include "base/log.h"
#include "base/word_skip.h"
#include "console/banner.h"
#include "console/command_args.h"
#include "console/command_context.h"
#include "console/command_table.h"
#include "console/line_input.h"
#include "platform/faults.h"
#include "platform/terminal.h"
#include "runner/tourney_room.h"

namespace tarvendo {
namespace {

/// The line from its first word on, when it begins with white space. The way to the next word leads
/// over a blank, so what stands behind a leading tab up to the first blank is not seen.
std::string WithoutLeadingBlanks(const std::string& line) {
  if (!line.starts_with(' ') && !line.starts_with('\t')) return line;
  const auto start = SkipWord(line, 0);
  return start ? line.substr(*start) : std::string();
}

/// Runs a command; with AutoSave on, saves the tourney when it has changed or the command asks for
/// it.
void RunAndSave(const Command& command, CommandContext& context) {
  const Tourney& tourney = context.tourney;
  const bool was_on = tourney.Settings().auto_save != 0;
  const std::uint64_t version = tourney.Version();
  command.run(context);
  const bool has_changed = tourney.Version() != version;
  if (context.must_save || !was_on || has_changed) context.file.AutoSave(context.tourney);
}

}  // namespace

void CommandInterpreter::RunCommandLoop(LineInput& input, bool with_banner) {
  CommandArgs args;
  if (with_banner) PrintText(Banner());
  while (true) {
    if (TerminationRequested()) throw Terminated("asked to end between two lines");
    if (input.IsKeyboard()) PrintText(std::string("\n") + kPrompt);
    const auto read = input.Read();
    if (read && TheLog != nullptr) TheLog->Echo(*read);
    if (input.AtEnd() || !read) return;
    const std::string line = WithoutLeadingBlanks(*read);
    if (line.empty() || line.front() == '\n') continue;
    if (!RunLine(line, args, input)) break;
  }
  const Hold hold = tools_.room.shared.Take();
  tools_.room.file.With(hold).AutoSave(*hold);
}

bool CommandInterpreter::RunLine(const std::string& line, CommandArgs& args, LineInput& input) {
  const Command* command = FindCommand(line);
  if (command != nullptr && command->Quits()) return false;
  args.Fill(line);
  if (command == nullptr) {
    // The runner goes on while another program works, or waits for the user.
    if (TheLog != nullptr) TheLog->RunShellCommand(line);
  } else if (command->run_waiting != nullptr) {
    WaitingCommandContext context{args, input, tools_.players, tools_.room.host,
                                  tools_.room.shared};
    command->run_waiting(context);
  } else {
    const bool by_pages = command->is_for_reading && input.IsKeyboard() && tools_.terminal;
    if (by_pages) tools_.terminal->BeginPage();
    RunHolding(*command, line, args);
    if (by_pages) tools_.terminal->ShowPage();
  }
  return true;
}

void CommandInterpreter::RunHolding(const Command& command, const std::string& line,
                                    const CommandArgs& args) {
  TourneyRoom& room = tools_.room;
  const Hold hold = room.shared.Take();
  CommandContext context{line,
                         args,
                         tools_.players,
                         room.host,
                         tools_.program_directory,
                         *hold,
                         room.file.With(hold),
                         room.brackets.With(hold),
                         room.running.With(hold)};
  RunAndSave(command, context);
}

}  // namespace tarvendo
