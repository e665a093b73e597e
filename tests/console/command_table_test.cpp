#include "console/command_table.h"

#include <gtest/gtest.h>

#include "console/handlers.h"

namespace tarvendo {
namespace {

/// A handler of either kind.
struct Handler {
  Handler() = default;
  // NOLINTNEXTLINE(google-explicit-constructor): the names of the handlers stand for themselves.
  Handler(void (*handler)(CommandContext&)) : run(handler) {}
  // NOLINTNEXTLINE(google-explicit-constructor)
  Handler(void (*handler)(WaitingCommandContext&)) : run_waiting(handler) {}

  bool operator==(const Handler&) const = default;

  void (*run)(CommandContext&) = nullptr;
  void (*run_waiting)(WaitingCommandContext&) = nullptr;
};

/// The handler that a line reaches; none for the shell (and for the quit word).
Handler HandlerOf(const std::string& line) {
  const Command* command = FindCommand(line);
  Handler handler;
  if (command == nullptr) return handler;
  handler.run = command->run;
  handler.run_waiting = command->run_waiting;
  return handler;
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
    EXPECT_TRUE(HandlerOf(name) == handler) << name;
}

TEST(CommandTable, TheShortestFormsReachTheirCommands) {
  EXPECT_TRUE(HandlerOf("createb") == DoCreateBrackets);
  EXPECT_TRUE(HandlerOf("showb") == DoShowBrackets);
  EXPECT_TRUE(HandlerOf("delp") == DoDeletePlayer);
  EXPECT_TRUE(HandlerOf("deletep") == DoDeletePlayer);
  EXPECT_TRUE(HandlerOf("remp") == DoRemovePlayer);
  EXPECT_TRUE(HandlerOf("removep") == DoRemovePlayer);
  EXPECT_TRUE(HandlerOf("remg") == DoRemoveGames);
  EXPECT_TRUE(HandlerOf("removeg") == DoRemoveGames);
  EXPECT_TRUE(HandlerOf("forf") == DoForfeitPlayer);
  EXPECT_TRUE(HandlerOf("wri") == DoWritePlayers);
  EXPECT_TRUE(HandlerOf("read") == DoReadPlayers);
}

TEST(CommandTable, TheCaseOfTheLettersDoesNotMatter) {
  for (const char* line : {"VIEW", "View", "vIeW", "viewer", "view the pgn\n"})
    EXPECT_TRUE(HandlerOf(line) == DoView) << line;
}

TEST(CommandTable, TheThreeCreateCommandsAreKeptApart) {
  EXPECT_TRUE(HandlerOf("createbx") == DoCreateBrackets);
  EXPECT_TRUE(HandlerOf("createplayer") == DoCreatePlayer);
  EXPECT_TRUE(HandlerOf("createrr") == DoCreateRRGames);
  EXPECT_TRUE(GoesToShell("create"));
  EXPECT_TRUE(GoesToShell("creater"));
}

TEST(CommandTable, TheThreeShowCommandsAreKeptApart) {
  EXPECT_TRUE(HandlerOf("showb") == DoShowBrackets);
  EXPECT_TRUE(HandlerOf("showp") == DoShowPlayers);
  EXPECT_TRUE(HandlerOf("showg") == DoShowGames);
  EXPECT_TRUE(GoesToShell("show"));
}

TEST(CommandTable, HalfWordsGoToTheShell) {
  for (const char* line : {"remove", "rem", "rem g", "res", "deleteall", "dele", "unspoo", "cd",
                           "cd\t..", "dir", "ls -l", "ga", "sav"}) {
    EXPECT_TRUE(GoesToShell(line)) << line;
  }
}

TEST(CommandTable, ResetAndRespoolShareTheirBeginning) {
  EXPECT_TRUE(HandlerOf("reset") == DoReset);
  EXPECT_TRUE(HandlerOf("resp") == DoRespool);
}

TEST(CommandTable, AddingAllOrAGroupComesBeforeAddingOne) {
  EXPECT_TRUE(HandlerOf("adda") == DoAddAllPlayers);
  EXPECT_TRUE(HandlerOf("addg strong") == DoAddGroup);
  for (const char* line : {"add", "addp", "addplayer", "add g"})
    EXPECT_TRUE(HandlerOf(line) == DoAddPlayer) << line;
}

TEST(CommandTable, CollectingComesBeforeGet) {
  EXPECT_TRUE(HandlerOf("geta") == DoGetAllResults);
  EXPECT_TRUE(HandlerOf("get all") == DoGet);
  EXPECT_TRUE(HandlerOf("getter") == DoGet);
}

TEST(CommandTable, EveryOtherWordWithHIsHelp) {
  for (const char* line : {"h", "help", "hello", "ho"})
    EXPECT_TRUE(HandlerOf(line) == DoHelp) << line;
  EXPECT_TRUE(HandlerOf("housekeep 5000") == DoHousekeep);
}

TEST(CommandTable, PlayAndPairAreKeptApart) {
  for (const char* line : {"play", "players", "pla"})
    EXPECT_TRUE(HandlerOf(line) == DoPlayer) << line;
  EXPECT_TRUE(HandlerOf("pair") == DoPair);
}

TEST(CommandTable, AProgramWhoseNameBeginsLikeACommandIsThatCommand) {
  EXPECT_TRUE(HandlerOf("runme.bat") == DoRun);
  EXPECT_TRUE(GoesToShell("./runme.bat"));
}

TEST(CommandTable, AnyWordWithQQuits) {
  for (const char* line : {"q", "Q", "quit", "qxyz"})
    EXPECT_TRUE(FindCommand(line)->Quits()) << line;
  EXPECT_EQ(FindCommand("x"), nullptr);
  EXPECT_FALSE(FindCommand("help q")->Quits());
}

}  // namespace
}  // namespace tarvendo
