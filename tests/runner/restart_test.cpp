// What the next start of the program makes of the games that the one before has left.

#include <array>

#include "play/claim.h"
#include "runner/play_fixture.h"

namespace tarvendo {
namespace {

/// Game 1 is being played when the program ends. What is left of the game is in the test's hand: it
/// still plays, it has ended, or it is broken off.
class Restarts : public PlayGames {
 protected:
  Restarts() {
    tourney.ChangeSettings()->auto_save = 1;
    file.SetName("/t/tourney.ini");
    PlayFirstGame();
  }

  /// The machine has been switched off meanwhile: nothing of the game runs any more.
  void EndProcesses() { machine.processes.EndOf(1); }

  std::size_t GamesStarted() { return machine.processes.Batches().size(); }
};

TEST_F(Restarts, AwaitAGameThatIsStillPlayedAndStartNoneBesideIt) {
  Restart();
  PassTime(seconds(30));
  EXPECT_EQ(GamesStarted(), 1U);
  EXPECT_EQ(Output(), AccessMessage("/t\\winboard.debug"));
  PassTime(seconds(4));
  EXPECT_EQ(Output(), AccessMessage("/t\\winboard.debug")) << "in its rhythm";
  EndGame(1, "1-0");
  PassTime(seconds(10));
  EXPECT_EQ(GameNumber(1).result, kWhiteWins);
  EXPECT_FALSE(machine.files.Has("/t/g1.run"));
  PassTime(seconds(10));
  EXPECT_EQ(machine.processes.Batches().back(), "/t/g2.BAT");
}

TEST_F(Restarts, CollectAGameThatHasEndedMeanwhile) {
  EndGame(1, "1/2-1/2");
  EndProcesses();
  Restart();
  Pass();
  EXPECT_EQ(GameNumber(1).result, kDraw);
  EXPECT_FALSE(machine.files.Has("/t/g1.run"));
  EXPECT_FALSE(machine.files.Has("/t/g1.PGN"));
  EXPECT_EQ(machine.processes.Batches().back(), "/t/g2.BAT");
}

TEST_F(Restarts, PlayABrokenGameAgainAndKeepItsRecord) {
  machine.files.Put("/t/g1.PGN", "[Result \"*\"]\n\n1. e4 e5\n");
  EndProcesses();
  Restart();
  Pass();
  EXPECT_EQ(machine.files.Bytes("/t/g1.broken.PGN"), "[Result \"*\"]\n\n1. e4 e5\n");
  EXPECT_TRUE(Printed("\nGame 1 was broken off, its record is kept as '/t/g1.broken.PGN'.\n> "));
  EXPECT_EQ(GamesStarted(), 2U);
  EXPECT_EQ(machine.processes.Batches().back(), "/t/g1.BAT");
}

TEST_F(Restarts, PlayAGameWithoutARecordAgainInSilence) {
  EndProcesses();
  Restart();
  Pass();
  EXPECT_EQ(machine.processes.Batches().back(), "/t/g1.BAT");
  EXPECT_FALSE(Printed("broken"));
}

TEST_F(Restarts, KeepTheRecordOfAGameThatNobodyAwaitsAnyMore) {
  EndGame(1, "1-0");
  EndProcesses();
  tourney.EraseGames({0});
  Restart();
  Pass();
  EXPECT_TRUE(machine.files.Has("/t/g1.left.PGN"));
  EXPECT_FALSE(machine.files.Has("/t/g1.run"));
  EXPECT_TRUE(Printed("'/t/g1.left.PGN'"));
}

TEST_F(Restarts, ClearUpAfterAGameThatWasCollectedAndSavedAlready) {
  EndGame(1, "1-0");
  constexpr std::array<const char*, 3> kFiles = {"/t/g1.PGN", "/t/g1.run", "/t/g1.BAT"};
  // The power goes behind the save.
  for (const char* name : kFiles)
    machine.files.Deny(FileOperation::kRemove, name);
  machine.files.Deny(FileOperation::kRemove, "/t/all.pgn.journal");
  PassTime(seconds(3));
  ASSERT_EQ(GameNumber(1).status, kReady);
  for (const char* name : kFiles)
    machine.files.Allow(FileOperation::kRemove, name);
  EndProcesses();
  Restart();
  PassTime(seconds(6));
  for (const char* name : kFiles)
    EXPECT_FALSE(machine.files.Has(name)) << name;
  EXPECT_FALSE(machine.files.Has("/t/g1.left.PGN"));
}

TEST_F(Restarts, SettleAClaimOfGarbage) {
  machine.files.Put("/t/g2.run", "\x01\x02 nonsense");
  machine.files.Put("/t/g77.run", "GAME_CLAIM\n77\n");
  EndGame(1, "1-0");
  EndProcesses();
  Restart();
  PassTime(seconds(6));
  EXPECT_EQ(GameNumber(1).result, kWhiteWins);
  EXPECT_FALSE(machine.files.Has("/t/g77.run"));
  EXPECT_EQ(machine.processes.Batches().back(), "/t/g2.BAT");
}

TEST_F(Restarts, AwaitTheHolderOfAClaimOfGarbage) {
  EndGame(1, "1-0");
  EndProcesses();
  machine.files.Put("/t/g2.run", "nonsense");
  auto held = machine.files.Lock("/t/g2.run");
  machine.files.Remove("/t/winboard.debug");
  machine.files.Put("/t/winboard.debug", kHeader);
  Restart();
  PassTime(seconds(20));
  EXPECT_EQ(GamesStarted(), 1U);
  PutPgn(2, "0-1");
  WriteDebug(kBlackMates);
  held.file.reset();
  PassTime(seconds(12));
  EXPECT_EQ(GameNumber(2).result, kBlackWins);
}

TEST_F(Restarts, FindTheDirectoryWithTheNameOfAClaimInTheWay) {
  EndGame(1, "1-0");
  EndProcesses();
  machine.files.MakeDirectory("/t/g2.run");
  Restart();
  PassTime(seconds(6));
  EXPECT_EQ(GameNumber(1).result, kWhiteWins);
  EXPECT_TRUE(Printed("Error opening file for writing:  /t\\g2.run\n"));
  EXPECT_EQ(GamesStarted(), 1U);
}

class TwoPrograms : public PlayGames {};

TEST_F(TwoPrograms, TheSecondWaitsAndNamesTheLock) {
  auto other = machine.files.Lock("/t/runner.lock");
  PassTime(seconds(2));
  EXPECT_EQ(Output(), AccessMessage("/t\\runner.lock"));
  EXPECT_TRUE(machine.processes.Batches().empty());
  EXPECT_FALSE(loop_->IsIdle());
  other.file.reset();
  PassTime(seconds(3));
  EXPECT_EQ(machine.processes.Batches().size(), 1U);
}

TEST_F(TwoPrograms, TheSecondStopsWhenTheTourneyFileWasChangedMeanwhile) {
  tourney.ChangeSettings()->auto_save = 1;
  ASSERT_TRUE(file.Save(tourney, "/t/tourney.ini"));
  auto other = machine.files.Lock("/t/runner.lock");
  Pass();
  machine.files.PutMore("/t/tourney.ini", "more\n");
  const std::string changed = machine.files.Bytes("/t/tourney.ini");
  other.file.reset();
  Output();
  PassTime(seconds(10));
  EXPECT_TRUE(machine.processes.Batches().empty());
  EXPECT_FALSE(tourney.Switch().IsRunning());
  EXPECT_TRUE(Printed("/t/tourney.ini"));
  EXPECT_EQ(machine.files.Bytes("/t/tourney.ini"), changed);
}

TEST_F(TwoPrograms, TheLockGoesWhenTheRunnerHasNothingMoreToDo) {
  Pass();
  EXPECT_TRUE(machine.files.IsLocked("/t/runner.lock"));
  StopRunner(tourney);
  EndGame(1, "1-0");
  PassTime(seconds(5));
  EXPECT_FALSE(machine.files.Has("/t/runner.lock"));
}

/// Commands of the user while game 1 is being played.
class WhileAGameIsPlayed : public PlayGames {
 protected:
  WhileAGameIsPlayed() { PlayFirstGame(); }

  void ExpectLeft() {
    EXPECT_TRUE(machine.files.Has("/t/g1.left.PGN"));
    EXPECT_FALSE(machine.files.Has("/t/g1.run"));
    EXPECT_TRUE(Printed("'/t/g1.left.PGN'"));
  }
};

TEST_F(WhileAGameIsPlayed, UnspoolLeavesItAlone) {
  Unspool(tourney, machine.files, file, running);
  EXPECT_TRUE(machine.files.Has("/t/g1.run"));
  EXPECT_TRUE(machine.files.Has("/t/g1.BAT"));
  EndGame(1, "1-0");
  PassTime(seconds(3));
  EXPECT_EQ(GameNumber(1).status, kNothingDone);
  ExpectLeft();
}

TEST_F(WhileAGameIsPlayed, ARecordThatWaitsForItsJudgeSurvivesUnspool) {
  EndGame(1, "1-0");
  machine.processes.EndOf(1);
  Unspool(tourney, machine.files, file, running);
  Pass();
  ExpectLeft();
}

TEST_F(WhileAGameIsPlayed, RespoolLeavesItAloneAndItIsCollected) {
  RespoolAll(tourney, machine.files, file, running);
  EndGame(1, "1-0");
  PassTime(seconds(3));
  EXPECT_EQ(GameNumber(1).result, kWhiteWins);
}

TEST_F(WhileAGameIsPlayed, AResetLeavesItAlone) {
  tourney.Reset();
  tourney.ChangeSettings()->files_path = "/elsewhere\\";
  EndGame(1, "1-0");
  PassTime(seconds(3));
  ExpectLeft();
}

TEST_F(WhileAGameIsPlayed, AGameOfOtherPlayersUnderTheSameNumberIsNotTouched) {
  tourney.EraseAllGames();
  tourney.ChangeState()->last_game_number = 0;
  tourney.AddGame(3, 4, 1, 1);
  Spool(tourney, machine.files, 1);
  EndGame(1, "1-0");
  PassTime(seconds(3));
  EXPECT_EQ(GameNumber(1).status, kSpooled);
  ExpectLeft();
  EXPECT_TRUE(machine.files.Has("/t/g1.BAT"));
}

TEST_F(WhileAGameIsPlayed, AnUnplayedGameOfTheSameNumberGetsNoResult) {
  tourney.Change(GameNumber(1))->status = kNothingDone;
  EndGame(1, "1-0");
  PassTime(seconds(3));
  EXPECT_EQ(GameNumber(1).status, kNothingDone);
  EXPECT_EQ(GameNumber(1).result, kUnknown);
}

TEST_F(WhileAGameIsPlayed, ChangingTheDirectoryDoesNotEndIt) {
  tourney.ChangeSettings()->files_path = "";
  machine.files.MakeDirectory("/elsewhere");
  machine.files.ChangeDirectory("/elsewhere");
  PassTime(seconds(60));
  EXPECT_EQ(Output(), "");
  EndGame(1, "1-0");
  PassTime(seconds(3));
  EXPECT_EQ(GameNumber(1).result, kWhiteWins);
}

TEST_F(WhileAGameIsPlayed, ItsBrokenOffNamesakeIsNotStartedBesideIt) {
  tourney.Change(GameNumber(1))->status = kReady;
  tourney.Change(GameNumber(2))->status = kReady;
  AddGames(1);
  tourney.Change(GameNumber(3))->number = 1;
  PassTime(seconds(30));
  EXPECT_EQ(machine.processes.Batches().size(), 1U);
}

}  // namespace
}  // namespace tarvendo
