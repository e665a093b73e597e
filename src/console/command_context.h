#pragma once

#include <string>

namespace tarvendo {

class BracketList;
class CommandArgs;
class LineInput;
class PlayerDatabase;
class Tourney;

/// What a command works on. Made by the interpreter for one line.
struct CommandContext {
  const std::string& line;  ///< as it was read, without leading blanks, with its line feed
  const CommandArgs& args;
  LineInput& input;
  Tourney& tourney;
  PlayerDatabase& players;
  BracketList& brackets;
  bool must_save = false;  ///< set by a command after which AutoSave saves, whatever has changed
};

/// "I just don't know what you mean by '%s'.\n"
void PrintUnknownWord(const std::string& word);

}  // namespace tarvendo
