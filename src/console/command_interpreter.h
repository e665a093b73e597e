#pragma once

#include <string>
#include <utility>

namespace tarvendo {

/// What stands in front of a line at the keyboard, behind an empty line.
inline constexpr const char* kPrompt = "> ";

struct Command;
class CommandArgs;
class LineInput;
class PlayerDatabase;
class Terminal;
struct TourneyRoom;

/// What the commands work on. All of it outlives the interpreter.
struct CommandTools {
  TourneyRoom& room;
  PlayerDatabase& players;
  std::string program_directory;  ///< with its separator; the help lies there
  Terminal* terminal = nullptr;   ///< shows long texts a page at a time; null: nobody does
};

/// Reads lines and does what they say, on the console thread.
class CommandInterpreter {
 public:
  explicit CommandInterpreter(CommandTools tools) : tools_(std::move(tools)) {}

  /// One loop pass: reads and runs lines until the input ends (nothing is saved then) or a word
  /// begins with "q" (the tourney is saved when AutoSave is on). A last line without line feed is
  /// not run. Prints the banner first when asked to, and a prompt before each line of the keyboard.
  void RunCommandLoop(LineInput& input, bool with_banner);

 private:
  /// Runs a command that holds the tourney.
  void RunHolding(const Command& command, const std::string& line, const CommandArgs& args);

  /// Runs one line, which is not empty and has no blanks in front. False for a quit word.
  bool RunLine(const std::string& line, CommandArgs& args, LineInput& input);

  CommandTools tools_;
};

}  // namespace tarvendo
