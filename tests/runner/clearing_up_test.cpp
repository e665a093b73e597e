// What becomes of a game's files behind the save that holds its result, when they cannot be deleted
// or are another one's by then.

#include <array>

#include "runner/play_fixture.h"

namespace tarvendo {
namespace {

/// Game 1 is being played, and AutoSave is on.
class ClearingUp : public PlayGames {
 protected:
  ClearingUp() {
    tourney.ChangeSettings()->auto_save = 1;
    file.SetName("/t/tourney.ini");
    PlayFirstGame();
  }

  void EndAndCollect(int number) {
    EndGame(number, "1-0");
    machine.processes.EndOf(machine.processes.LastBatch());
    PassTime(seconds(3));
    ASSERT_EQ(GameNumber(number).result, kWhiteWins);
  }
};

TEST_F(ClearingUp, AFileThatCannotBeDeletedIsToldOnceAndTriedAgainBehindTheNextGame) {
  constexpr std::array<const char*, 3> kFiles = {"/t/g1.BAT", "/t/g1.PGN", "/t/g1.run"};
  for (const std::string name : kFiles) {
    if (name == "/t/g1.run") continue;
    machine.files.Deny(FileOperation::kRemove, name);
  }
  EndAndCollect(1);
  EXPECT_TRUE(Printed("Error deleting file:  /t\\g1.BAT\nError deleting file:  /t\\g1.PGN\n"));
  EXPECT_TRUE(machine.files.Has("/t/g1.run")) << "it tells whose the files are";
  PassTime(seconds(5));
  EndAndCollect(2);
  EXPECT_FALSE(Printed("Error deleting file"));
  AddGames(1);
  SpoolAll(tourney, machine.files);
  for (const char* name : kFiles)
    machine.files.Allow(FileOperation::kRemove, name);
  PassTime(seconds(5));
  EndAndCollect(3);
  for (const char* name : kFiles)
    EXPECT_FALSE(machine.files.Has(name)) << name;
}

TEST_F(ClearingUp, WhatCouldNotBeDeletedGoesAtTheNextStart) {
  machine.files.Deny(FileOperation::kRemove, "/t/g1.PGN");
  EndAndCollect(1);
  machine.files.Allow(FileOperation::kRemove, "/t/g1.PGN");
  Restart();
  Pass();
  for (const char* name : {"/t/g1.BAT", "/t/g1.PGN", "/t/g1.run", "/t/g1.left.PGN"})
    EXPECT_FALSE(machine.files.Has(name)) << name;
}

TEST_F(ClearingUp, AJournalThatCannotBeDeletedIsTold) {
  machine.files.Deny(FileOperation::kRemove, "/t/all.pgn.journal");
  EndAndCollect(1);
  EXPECT_TRUE(Printed("Error deleting file:  /t\\all.pgn.journal\n"));
}

TEST_F(ClearingUp, ADirectoryOfAGameThatCannotBeDeletedIsToldAndTriedAgainWithoutAnotherGame) {
  play_pace_.referee = RefereePace::kInGroups;
  play_pace_.between_games = seconds(0);
  tourney.ChangeSwitch()->SetRunning(false);
  EndAndCollect(1);
  Restart(2);
  AddGames(1);
  SpoolAll(tourney, machine.files);
  tourney.ChangeSwitch()->SetRunning(true);
  Pass();
  ASSERT_EQ(machine.processes.Batches().back(), "/t/g3.place\\g3.BAT");
  tourney.ChangeSwitch()->SetRunning(false);
  machine.files.Put("/t/g3.place/core", "what an engine leaves");
  machine.files.Put("/t/g3.place/winboard.debug", std::string(kHeader) + kBlackMates);
  PutPgn(3, "1-0");
  machine.processes.EndOf(3);
  Output();
  PassTime(seconds(12));
  ASSERT_EQ(GameNumber(3).result, kWhiteWins);
  EXPECT_TRUE(Printed("Error deleting file:  /t\\g3.place\n"));
  EXPECT_TRUE(machine.files.Has("/t/g3.run"));
  machine.files.Remove("/t/g3.place/core");
  PassTime(seconds(31));
  EXPECT_FALSE(machine.files.Exists("/t/g3.place"));
  EXPECT_FALSE(machine.files.Has("/t/g3.run"));
}

// The claim of a game whose WinBoard hung stays as long as that does. When the game is begun anew
// meanwhile the claim is its own, and stays until its result is saved.
TEST_F(ClearingUp, TheClaimOfAGameBegunAnewIsNotThatOfTheOneThatHung) {
  tourney.EraseGames({1});
  machine.files.Remove("/t/winboard.debug");
  PassTime(seconds(10));
  ASSERT_EQ(GameNumber(1).status, kReady);
  ASSERT_TRUE(machine.files.Has("/t/g1.run"));
  machine.processes.EndOf(1);
  ReplayUnfinished(tourney, machine.files);
  PassTime(seconds(6));
  ASSERT_EQ(machine.processes.Batches().size(), 2U);
  machine.files.Deny(FileOperation::kOpen, "/t/tourney.ini");
  EndAndCollect(1);
  EXPECT_TRUE(Printed("Saving tourney failed!\n"));
  EXPECT_TRUE(machine.files.Has("/t/g1.run"));
}

}  // namespace
}  // namespace tarvendo
