#pragma once

#include <span>
#include <string>

#include "console/word_form.h"

namespace tarvendo {

struct CommandContext;
struct WaitingCommandContext;

/// One entry of the command table. At most one of the two functions is there; the quit word has
/// neither.
struct Command {
  const char* prefix;  ///< how the line begins, in any case
  const char* name;    ///< the whole word; null for a second beginning of the same command

  /// Runs while the tourney is held from start to end.
  void (*run)(CommandContext& context) = nullptr;

  /// Waits for the user or for another program, and takes the tourney where it must.
  void (*run_waiting)(WaitingCommandContext& context) = nullptr;

  CommandWords expects = {};

  bool is_for_reading = false;  ///< prints a long text, which a user reads a page at a time

  /// Whether it ends the loop pass: the quit word.
  bool Quits() const { return run == nullptr && run_waiting == nullptr; }
};

/// The whole table, in its order.
std::span<const Command> Commands();

/// The first entry whose prefix the line begins with; null for a line that is no command of the
/// program. The order of the table settles every overlap ("geta" is tried before "get").
const Command* FindCommand(const std::string& line);

}  // namespace tarvendo
