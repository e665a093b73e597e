#include "console/command_table.h"

#include <array>

#include "base/text.h"
#include "console/handlers.h"

namespace tarvendo {
namespace {

constexpr std::array kCommands = {
    Command{"view", nullptr, DoView},
    Command{"reset", DoReset},
    Command{"pair", DoPair},
    Command{"createb", DoCreateBrackets},
    Command{"showb", DoShowBrackets},
    Command{"unspool", DoUnspool},
    Command{"run", DoRun},
    Command{"stop", DoStop},
    Command{"gam", DoGame},
    Command{"pla", DoPlayer},
    Command{"load", DoLoad},
    Command{"save", DoSave},
    Command{"read", DoReadPlayers},
    Command{"wri", DoWritePlayers},
    Command{"avai", DoAvailable},
    Command{"adda", DoAddAllPlayers},
    Command{"addg", DoAddGroup},
    Command{"hou", DoHousekeep},
    Command{"replay", DoReplay},
    Command{"createp", nullptr, DoCreatePlayer},
    Command{"delp", DoDeletePlayer},
    Command{"deletep", DoDeletePlayer},
    Command{"add", DoAddPlayer},
    Command{"remp", DoRemovePlayer},
    Command{"removep", DoRemovePlayer},
    Command{"forf", DoForfeitPlayer},
    Command{"remg", DoRemoveGames},
    Command{"removeg", DoRemoveGames},
    Command{"resp", DoRespool},
    Command{"showp", DoShowPlayers},
    Command{"geta", DoGetAllResults},
    Command{"showg", DoShowGames},
    Command{"spo", DoSpool},
    Command{"set", DoSet},
    Command{"get", DoGet},
    Command{"tab", DoTable},
    Command{"tex", DoTextTable},
    Command{"h", DoHelp},
    Command{"createrr", DoCreateRRGames},
    Command{"q"},
    Command{"cd ", DoChangeDirectory},
};

}  // namespace

std::span<const Command> Commands() {
  return kCommands;
}

const Command* FindCommand(const std::string& line) {
  for (const Command& command : kCommands) {
    if (BeginsWithNoCase(line, command.prefix)) return &command;
  }
  return nullptr;
}

bool IsQuit(const std::string& line) {
  const Command* command = FindCommand(line);
  return command != nullptr && command->run == nullptr && command->run_waiting == nullptr;
}

}  // namespace tarvendo
