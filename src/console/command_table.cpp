#include "console/command_table.h"

#include <array>

#include "base/text.h"
#include "console/handlers.h"

namespace tarvendo {
namespace {

using enum Operand;

constexpr CommandWords kGameSelection{kNothing, SelectionWords};
constexpr CommandWords kTableForms{kFile, TableWords};

constexpr std::array kCommands = {
    Command{"view", "View", nullptr, DoView},
    Command{"reset", "Reset", DoReset},
    Command{"pair", "Pair", DoPair, nullptr, {kNothing, PairWords}},
    Command{"createb", "CreateBrackets", DoCreateBrackets, nullptr, {kNothing, BracketWords}},
    Command{"showb", "ShowBrackets", DoShowBrackets},
    Command{"unspool", "UnSpool", DoUnspool},
    Command{"run", "Run", DoRun, nullptr, {kNothing, SwitchWords}},
    Command{"stop", "Stop", DoStop, nullptr, {kNothing, SwitchWords}},
    Command{"gam", "Game", DoGame, nullptr, {kNothing, GameFields, true}},
    Command{"pla", "Player", DoPlayer, nullptr, {kNothing, PlayerFields, true}},
    Command{"load", "Load", DoLoad, nullptr, {kFile}},
    Command{"save", "Save", DoSave, nullptr, {kFile}},
    Command{"read", "ReadPlayers", DoReadPlayers, nullptr, {kFile}},
    Command{"wri", "WritePlayers", DoWritePlayers, nullptr, {kFile}},
    Command{"avai", "Available", DoAvailable, nullptr, {kPlayer, AvailableWords}},
    Command{"adda", "AddAllPlayers", DoAddAllPlayers},
    Command{"addg", "AddGroup", DoAddGroup, nullptr, {kGroup}},
    Command{"hou", "Housekeep", DoHousekeep},
    Command{"replay", "Replay", DoReplay},
    Command{"createp", "CreatePlayer", nullptr, DoCreatePlayer},
    Command{"delp", nullptr, DoDeletePlayer, nullptr, {kPlayer}},
    Command{"deletep", "DeletePlayer", DoDeletePlayer, nullptr, {kPlayer}},
    Command{"add", "AddPlayer", DoAddPlayer, nullptr, {kPlayer}},
    Command{"remp", nullptr, DoRemovePlayer, nullptr, {kParticipant}},
    Command{"removep", "RemovePlayer", DoRemovePlayer, nullptr, {kParticipant}},
    Command{"forf", "ForfeitPlayer", DoForfeitPlayer, nullptr, {kParticipant}},
    Command{"remg", nullptr, DoRemoveGames, nullptr, kGameSelection},
    Command{"removeg", "RemoveGames", DoRemoveGames, nullptr, kGameSelection},
    Command{"resp", "ReSpool", DoRespool},
    Command{"showp", "ShowPlayers", DoShowPlayers, nullptr, {kParticipant}},
    Command{"geta", "GetAllResults", DoGetAllResults},
    Command{"showg", "ShowGames", DoShowGames, nullptr, kGameSelection},
    Command{"spo", "Spool", DoSpool, nullptr, {kNothing, SpoolWords}},
    Command{"set", "Set", DoSet, nullptr, {kNothing, SettingsToSet}},
    Command{"get", "Get", DoGet, nullptr, {kNothing, SettingsToGet}},
    Command{"tab", "Table", DoTable, nullptr, kTableForms},
    Command{"tex", "TextTable", DoTextTable, nullptr, kTableForms},
    Command{"h", "Help", DoHelp, nullptr, {kCommand}, true},
    Command{"createrr", "CreateRRGames", DoCreateRRGames},
    Command{"q", "Quit"},
    Command{"cd ", "cd", DoChangeDirectory, nullptr, {kDirectory}},
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

}  // namespace tarvendo
