#pragma once

#include <string>

#include "platform/host.h"

namespace tarvendo {

class BracketList;
class CommandArgs;
class LineInput;
class PlayerDatabase;
class RunningGames;
class SharedTourney;
class Tourney;
class TourneyFile;

/// What a command works on that holds the tourney from start to end. Made by the interpreter for
/// one line.
struct CommandContext {
  const std::string& line;  ///< as it was read, without leading blanks, with its line feed
  const CommandArgs& args;
  PlayerDatabase& players;
  Host& host;
  const std::string& program_directory;  ///< with its separator
  Tourney& tourney;
  TourneyFile& file;
  BracketList& brackets;
  const RunningGames& running;
  bool must_save = false;  ///< set by a command after which AutoSave saves, whatever has changed
};

/// What a command works on that waits for the user or for another program: it takes the tourney
/// where it must.
struct WaitingCommandContext {
  const CommandArgs& args;
  LineInput& input;
  PlayerDatabase& players;
  Host& host;
  SharedTourney& shared;
};

}  // namespace tarvendo
