#include <gtest/gtest.h>

#include "console/typed_commands.h"

namespace tarvendo {
namespace {

class TourneyCommands : public TypedCommands {};

TEST_F(TourneyCommands, ViewOpensWinBoardOnTheTourneysPgnFile) {
  tourney.ChangeSettings()->winboard_path = "c:\\w\\winboard.exe";
  Type("view");
  ASSERT_EQ(machine.processes.ShellCalls().size(), 1U);
  EXPECT_EQ(machine.processes.ShellCalls()[0].line, "'c:/w/winboard.exe' /ncp /td 0 '/t/all.pgn'");
}

TEST_F(TourneyCommands, ViewShowsWhatTheProgramPrintsAndLeavesTheTourneyFree) {
  machine.processes.on_shell = [this](const std::string&) {
    const Hold hold = shared.Take();
    return "no display\n";
  };
  EXPECT_EQ(Type("view"), "no display\nno display\n");
}

TEST_F(TourneyCommands, ResetSaysSo) {
  EXPECT_EQ(Type("reset"), "Tourney reseted.\n");
  EXPECT_TRUE(tourney.Participants().empty());
}

TEST_F(TourneyCommands, ResetDeletesWhatWasWrittenAboutGamesThatFailed) {
  tourney.AddGame(1, 2, 1, 1);
  machine.files.Put("/t/g1.err", "no engine");
  machine.files.Put("/t/g2.err", "of another tourney");
  Type("reset");
  EXPECT_FALSE(machine.files.Has("/t/g1.err"));
  EXPECT_TRUE(machine.files.Has("/t/g2.err"));
}

TEST_F(TourneyCommands, ResetSavesBeforeAndNotAfter) {
  UseAutoSave();
  Type("reset");
  Tourney saved;
  TourneyFile saved_file(machine.files);
  ASSERT_TRUE(saved_file.Load(saved, "/t/saved.ini"));
  EXPECT_EQ(saved.Participants().size(), 4U);
}

TEST_F(TourneyCommands, SaveAndLoadTakeAFileName) {
  EXPECT_EQ(Type("save /t/a.ini"), "Tourney saved.\n");
  tourney.ChangeSettings()->name = "Other";
  EXPECT_EQ(Type("load /t/a.ini"), "Tourney loaded.\n");
  EXPECT_EQ(tourney.Settings().name, "My Own Winboard Tourney");
}

TEST_F(TourneyCommands, ALoadKnowsAgainWhichGamesAreUnderWay) {
  tourney.AddGame(1, 2, 1, 1);
  Type("save /t/a.ini");
  GameOrder order;
  order.number = 1;
  order.white = "Alpha";
  order.black = "Beta";
  order.pgn_file = "/t/g1.PGN";
  running.Add(order);
  Type("load /t/a.ini");
  EXPECT_EQ(GameNumber(1).status, kSpooled);
  EXPECT_EQ(GameNumber(1).pgn_file, "/t\\g1.PGN");
  running.Remove(order);
  Type("load /t/a.ini");
  EXPECT_EQ(GameNumber(1).status, kNothingDone);
}

TEST_F(TourneyCommands, SaveAndLoadHaveADefault) {
  EXPECT_EQ(Type("save"), "Tourney saved.\n");
  EXPECT_TRUE(machine.files.Has("/t/tourney.ini"));
  EXPECT_EQ(Type("load"), "Tourney loaded.\n");
}

TEST_F(TourneyCommands, WhatCannotBeSavedOrLoadedIsReported) {
  EXPECT_EQ(Type("save /nowhere/a.ini"), "Saving tourney failed!\n");
  EXPECT_EQ(Type("load /nowhere/a.ini"), "Loading tourney failed!\n");
  machine.files.Put("/t/a.txt", "hello\n");
  EXPECT_EQ(Type("load /t/a.txt"), "Not a tourney file.\nLoading tourney failed!\n");
  EXPECT_EQ(tourney.Participants().size(), 4U);
}

TEST_F(TourneyCommands, HousekeepCutsTheLogAtItsLimit) {
  machine.log.AddFile("/home/log");
  const auto log_size = [this] { return machine.files.Bytes("/home/log").size(); };
  const std::string line = std::string(99, 'x') + "\n";
  // Each command that is typed is in the log as well.
  const std::size_t typed = std::string("housekeep 5000\n").size();
  while (log_size() < 4900 - typed)
    machine.log.Echo(line);
  Type("housekeep 5000");
  EXPECT_GT(log_size(), 4800U);
  EXPECT_LT(log_size(), 5000U);
  machine.log.Echo(line + line);
  Type("housekeep");
  EXPECT_GT(log_size(), 5000U) << "the limit is much larger when none is given";
  Type("housekeep 5000");
  EXPECT_LT(log_size(), 2700U);
}

TEST_F(TourneyCommands, CreateRRGamesIsForRoundRobins) {
  EXPECT_TRUE(Type("createrr").starts_with("Creating Round Robin games...Adding game "));
  EXPECT_EQ(tourney.Games().size(), 6U);
  tourney.ChangeSettings()->type = kSwiss;
  EXPECT_EQ(Type("createrrgames"),
            "This command has only effect on Round robin tourneys.\nTry Pair instead.\n");
  EXPECT_EQ(tourney.Games().size(), 6U);
  EXPECT_EQ(tourney.State().last_game_number, 6);
}

TEST_F(TourneyCommands, CreateRRGamesSavesBefore) {
  UseAutoSave();
  file.SetName("/nowhere/saved.ini");
  const std::string output = Type("createrr");
  EXPECT_TRUE(output.starts_with("Saving tourney failed!\nCreating Round Robin games..."));
  EXPECT_TRUE(output.ends_with("ready.\nSaving tourney failed!\n"));
}

TEST_F(TourneyCommands, TheDirectoryIsChangedToTheRestOfTheLine) {
  machine.files.MakeDirectory("/my dir");
  EXPECT_EQ(Type("cd /t"), "");
  EXPECT_EQ(machine.files.CurrentDirectory(), "/t");
  Type("CD   /my dir \t");
  EXPECT_EQ(machine.files.CurrentDirectory(), "/my dir");
}

TEST_F(TourneyCommands, ADirectoryThatIsNotThereIsPassedOverInSilence) {
  EXPECT_EQ(Type("cd /nowhere"), "");
  EXPECT_EQ(Type("cd "), "");
  EXPECT_EQ(machine.files.CurrentDirectory(), "/home");
  EXPECT_TRUE(machine.processes.ShellCalls().empty());
}

TEST_F(TourneyCommands, CdWithoutABlankIsTheShells) {
  Type("cd");
  EXPECT_EQ(machine.processes.ShellCalls().size(), 1U);
}

}  // namespace
}  // namespace tarvendo
