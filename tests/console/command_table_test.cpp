#include "console/command_table.h"

#include <gtest/gtest.h>

#include "console/handlers.h"

namespace tarvendo {
namespace {

using Handler = void (*)(CommandContext&);

/// The handler that a line reaches; null for the shell (and for the quit word).
Handler HandlerOf(const std::string& line) {
  const Command* command = FindCommand(line);
  return command != nullptr ? command->run : nullptr;
}

bool GoesToShell(const std::string& line) {
  return FindCommand(line) == nullptr;
}

TEST(CommandTable, EveryCommandIsReachedByItsFullName) {
  const std::vector<std::pair<const char*, Handler>> commands = {
      {"Available", DoAvailable},
      {"AddAllPlayers", DoAddAllPlayers},
      {"AddGroup", DoAddGroup},
      {"AddPlayer", DoAddPlayer},
      {"CreatePlayer", DoCreatePlayer},
      {"DeletePlayer", DoDeletePlayer},
      {"ReadPlayers", DoReadPlayers},
      {"RemovePlayer", DoRemovePlayer},
      {"WritePlayers", DoWritePlayers},
      {"Get", DoGet},
      {"Game", DoGame},
      {"Load", DoLoad},
      {"Player", DoPlayer},
      {"Reset", DoReset},
      {"Save", DoSave},
      {"Set", DoSet},
      {"CreateBrackets", DoCreateBrackets},
      {"CreateRRGames", DoCreateRRGames},
      {"ForfeitPlayer", DoForfeitPlayer},
      {"Pair", DoPair},
      {"RemoveGames", DoRemoveGames},
      {"Replay", DoReplay},
      {"ReSpool", DoRespool},
      {"Run", DoRun},
      {"ShowPlayers", DoShowPlayers},
      {"Spool", DoSpool},
      {"ShowGames", DoShowGames},
      {"Stop", DoStop},
      {"ShowBrackets", DoShowBrackets},
      {"Table", DoTable},
      {"TextTable", DoTextTable},
      {"UnSpool", DoUnspool},
      {"Housekeep", DoHousekeep},
      {"GetAllResults", DoGetAllResults},
      {"View", DoView},
      {"Help", DoHelp},
      {"cd ..", DoChangeDirectory}};
  for (const auto& [name, handler] : commands)
    EXPECT_EQ(HandlerOf(name), handler) << name;
}

TEST(CommandTable, TheShortestFormsReachTheirCommands) {
  EXPECT_EQ(HandlerOf("createb"), DoCreateBrackets);
  EXPECT_EQ(HandlerOf("showb"), DoShowBrackets);
  EXPECT_EQ(HandlerOf("delp"), DoDeletePlayer);
  EXPECT_EQ(HandlerOf("deletep"), DoDeletePlayer);
  EXPECT_EQ(HandlerOf("remp"), DoRemovePlayer);
  EXPECT_EQ(HandlerOf("removep"), DoRemovePlayer);
  EXPECT_EQ(HandlerOf("remg"), DoRemoveGames);
  EXPECT_EQ(HandlerOf("removeg"), DoRemoveGames);
  EXPECT_EQ(HandlerOf("forf"), DoForfeitPlayer);
  EXPECT_EQ(HandlerOf("wri"), DoWritePlayers);
  EXPECT_EQ(HandlerOf("read"), DoReadPlayers);
}

TEST(CommandTable, TheCaseOfTheLettersDoesNotMatter) {
  for (const char* line : {"VIEW", "View", "vIeW", "viewer", "view the pgn\n"})
    EXPECT_EQ(HandlerOf(line), DoView) << line;
}

TEST(CommandTable, TheThreeCreateCommandsAreKeptApart) {
  EXPECT_EQ(HandlerOf("createbx"), DoCreateBrackets);
  EXPECT_EQ(HandlerOf("createplayer"), DoCreatePlayer);
  EXPECT_EQ(HandlerOf("createrr"), DoCreateRRGames);
  EXPECT_TRUE(GoesToShell("create"));
  EXPECT_TRUE(GoesToShell("creater"));
}

TEST(CommandTable, TheThreeShowCommandsAreKeptApart) {
  EXPECT_EQ(HandlerOf("showb"), DoShowBrackets);
  EXPECT_EQ(HandlerOf("showp"), DoShowPlayers);
  EXPECT_EQ(HandlerOf("showg"), DoShowGames);
  EXPECT_TRUE(GoesToShell("show"));
}

TEST(CommandTable, HalfWordsGoToTheShell) {
  for (const char* line : {"remove", "rem", "rem g", "res", "deleteall", "dele", "unspoo", "cd",
                           "cd\t..", "dir", "ls -l", "ga", "sav"}) {
    EXPECT_TRUE(GoesToShell(line)) << line;
  }
}

TEST(CommandTable, ResetAndRespoolShareTheirBeginning) {
  EXPECT_EQ(HandlerOf("reset"), DoReset);
  EXPECT_EQ(HandlerOf("resp"), DoRespool);
}

TEST(CommandTable, AddingAllOrAGroupComesBeforeAddingOne) {
  EXPECT_EQ(HandlerOf("adda"), DoAddAllPlayers);
  EXPECT_EQ(HandlerOf("addg strong"), DoAddGroup);
  for (const char* line : {"add", "addp", "addplayer", "add g"})
    EXPECT_EQ(HandlerOf(line), DoAddPlayer) << line;
}

TEST(CommandTable, CollectingComesBeforeGet) {
  EXPECT_EQ(HandlerOf("geta"), DoGetAllResults);
  EXPECT_EQ(HandlerOf("get all"), DoGet);
  EXPECT_EQ(HandlerOf("getter"), DoGet);
}

TEST(CommandTable, EveryOtherWordWithHIsHelp) {
  for (const char* line : {"h", "help", "hello", "ho"})
    EXPECT_EQ(HandlerOf(line), DoHelp) << line;
  EXPECT_EQ(HandlerOf("housekeep 5000"), DoHousekeep);
}

TEST(CommandTable, PlayAndPairAreKeptApart) {
  for (const char* line : {"play", "players", "pla"})
    EXPECT_EQ(HandlerOf(line), DoPlayer) << line;
  EXPECT_EQ(HandlerOf("pair"), DoPair);
}

TEST(CommandTable, AProgramWhoseNameBeginsLikeACommandIsThatCommand) {
  EXPECT_EQ(HandlerOf("runme.bat"), DoRun);
  EXPECT_TRUE(GoesToShell("./runme.bat"));
}

TEST(CommandTable, AnyWordWithQQuits) {
  for (const char* line : {"q", "Q", "quit", "qxyz"})
    EXPECT_TRUE(IsQuit(line)) << line;
  EXPECT_FALSE(IsQuit("x"));
  EXPECT_FALSE(IsQuit("help q"));
}

}  // namespace
}  // namespace tarvendo
