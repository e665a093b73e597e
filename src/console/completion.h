#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/terminal.h"

namespace tarvendo {

/// The names that a line may hold, asked for only where one of them may stand.
struct KnownNames {
  std::function<std::vector<std::string>()> players;       ///< of the database
  std::function<std::vector<std::string>()> participants;  ///< of the tourney
  std::function<std::vector<std::string>()> groups;        ///< each word that players have
  /// What lies in a directory as it was typed (empty: the current one), "/" behind directories.
  std::function<std::vector<std::string>(const std::string& directory)> files;
};

/// What may stand at the end of a line that begins so: commands, and behind them what the command
/// table and the commands' own tables say; files in a line for the host's command processor. What
/// is typed already may be in any case of the letters.
Completion CompleteLine(const std::string& beginning, const KnownNames& names);

}  // namespace tarvendo
