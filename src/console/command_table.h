#pragma once

#include <string>

namespace tarvendo {

struct CommandContext;

/// Who holds the tourney's lock while a command runs.
enum class Locking {
  kWhole,     ///< the command holds it from start to end
  kByItself,  ///< the command waits for the user or for another program: it takes the lock where it
              ///< must
};

/// One entry of the command table.
struct Command {
  const char* prefix;  ///< how the line begins, in any case
  void (*run)(CommandContext& context);
  Locking locking = Locking::kWhole;
};

/// The first entry whose prefix the line begins with; null for a line that is no command of the
/// program. The order of the table settles every overlap ("geta" is tried before "get").
const Command* FindCommand(const std::string& line);

/// Whether the line leaves the loop pass: a word that begins with "q", unless an earlier entry
/// takes it.
bool IsQuit(const std::string& line);

}  // namespace tarvendo
