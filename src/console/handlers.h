#pragma once

namespace tarvendo {

struct CommandContext;
struct WaitingCommandContext;

// One handler for one command; the table of command_table.cpp calls them. Each reads its words from
// the context, calls the operation behind the command and prints the outcome. docs/behaviour.md has
// the grammar.

// tourney_commands.cpp
void DoView(WaitingCommandContext& context);
void DoReset(CommandContext& context);
void DoLoad(CommandContext& context);
void DoSave(CommandContext& context);
void DoHousekeep(CommandContext& context);
void DoHelp(CommandContext& context);
void DoCreateRRGames(CommandContext& context);
void DoChangeDirectory(CommandContext& context);

// pairing_commands.cpp
void DoPair(CommandContext& context);
void DoCreateBrackets(CommandContext& context);
void DoShowBrackets(CommandContext& context);

// runner_commands.cpp
void DoRun(CommandContext& context);
void DoStop(CommandContext& context);

// game_commands.cpp
void DoGame(CommandContext& context);
void DoRemoveGames(CommandContext& context);
void DoShowGames(CommandContext& context);

// spool_commands.cpp
void DoSpool(CommandContext& context);
void DoUnspool(CommandContext& context);
void DoRespool(CommandContext& context);
void DoReplay(CommandContext& context);
void DoGetAllResults(CommandContext& context);

// player_commands.cpp: the database
void DoPlayer(CommandContext& context);
void DoReadPlayers(CommandContext& context);
void DoWritePlayers(CommandContext& context);
void DoAvailable(CommandContext& context);
void DoCreatePlayer(WaitingCommandContext& context);
void DoDeletePlayer(CommandContext& context);

// participant_commands.cpp
void DoAddAllPlayers(CommandContext& context);
void DoAddGroup(CommandContext& context);
void DoAddPlayer(CommandContext& context);
void DoRemovePlayer(CommandContext& context);
void DoForfeitPlayer(CommandContext& context);
void DoShowPlayers(CommandContext& context);

// settings_get.cpp and settings_set.cpp
void DoGet(CommandContext& context);
void DoSet(CommandContext& context);

// table_commands.cpp
void DoTable(CommandContext& context);
void DoTextTable(CommandContext& context);

}  // namespace tarvendo
