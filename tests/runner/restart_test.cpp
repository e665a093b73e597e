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
  EXPECT_TRUE(Printed("\nGame 1 was broken off, its record is kept as '/t\\g1.broken.PGN'.\n> "));
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
  EXPECT_TRUE(Printed("'/t\\g1.left.PGN'"));
}

TEST_F(Restarts, NameARecordOutsideFilesPathByItsFullPath) {
  EndGame(1, "1-0");
  EndProcesses();
  tourney.EraseGames({0});
  machine.files.PutDirectory("/elsewhere");
  std::string claim = machine.files.Bytes("/t/g1.run");
  claim.replace(claim.find("/t/g1.PGN"), 9, "/elsewhere/g1.PGN");
  machine.files.Put("/t/g1.run", claim);
  machine.files.Rename("/t/g1.PGN", "/elsewhere/g1.PGN");
  Restart();
  Pass();
  EXPECT_TRUE(Printed("'/elsewhere/g1.left.PGN'"));
}

TEST_F(Restarts, NameARecordThatCannotBeRenamedAsItIs) {
  EndGame(1, "1-0");
  EndProcesses();
  tourney.EraseGames({0});
  machine.files.Deny(FileOperation::kRename, "/t/g1.PGN");
  Restart();
  Pass();
  EXPECT_TRUE(machine.files.Has("/t/g1.PGN"));
  EXPECT_TRUE(Printed("'/t\\g1.PGN'"));
}

TEST_F(Restarts, KnowTheClaimWhereverTheUserGoesMeanwhile) {
  machine.files.ChangeDirectory("/t");
  tourney.ChangeSettings()->files_path = "";
  Restart();
  Pass();
  machine.files.ChangeDirectory("/home");
  EndGame(1, "1-0");
  PassTime(seconds(3));
  EXPECT_EQ(GameNumber(1).result, kWhiteWins);
  EXPECT_FALSE(machine.files.Has("/t/g1.run"));
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

// Should the program end between the save and the removal, the claim tells whose the files are.
TEST_F(Restarts, KeepTheClaimOfAGameThatHasEndedUntilItsResultIsSaved) {
  EndGame(1, "1-0");
  EndProcesses();
  Restart();
  machine.files.Deny(FileOperation::kOpen, "/t/tourney.ini");
  Pass();
  ASSERT_EQ(GameNumber(1).status, kReady);
  EXPECT_TRUE(machine.files.Has("/t/g1.run"));
  EXPECT_TRUE(machine.files.Has("/t/g1.PGN"));
  machine.files.Allow(FileOperation::kOpen, "/t/tourney.ini");
  Restart();
  Pass();
  for (const char* name : {"/t/g1.PGN", "/t/g1.run", "/t/g1.BAT"})
    EXPECT_FALSE(machine.files.Has(name)) << name;
}

TEST_F(Restarts, ClearUpWhatWasBeingSavedWhenTheProgramEnded) {
  const std::vector<std::string> half_saved = {
      "/t/tourney.ini.tarvendo.new", "/t/tourney.ini.tarvendo.new2", "/t/tourney.ini.tarvendo.new3",
      "/t/table.htm.tarvendo.new",   "/t/g1.BAT.tarvendo.new",       "/t/g12.BAT.tarvendo.new2"};
  for (const std::string& name : half_saved)
    machine.files.Put(name, "");
  machine.files.Put("/t/tourney.ini.tarvendo.new2", "TOURN");
  machine.files.Put("/t/tourney.ini.tarvendo.new3", "TOURNEY_FILE\nsomething\n");
  const std::vector<std::string> others = {"/t/tourney.ini.tarvendo.new4", "/t/gx.BAT.tarvendo.new",
                                           "/t/g.BAT.tarvendo.new", "/t/g1.BAT.tarvendo.newer"};
  for (const std::string& name : others)
    machine.files.Put(name, "a text of the user's own");
  Restart();
  Pass();
  for (const std::string& name : half_saved)
    EXPECT_FALSE(machine.files.Has(name)) << name;
  for (const std::string& name : others)
    EXPECT_TRUE(machine.files.Has(name)) << name;
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
  machine.clock.Advance(seconds(3));
  Pass();
  EXPECT_TRUE(loop_->IsIdle());
  EXPECT_FALSE(machine.files.Has("/t/runner.lock"));
  PassTime(seconds(10));
  EXPECT_TRUE(machine.processes.Batches().empty());
  EXPECT_FALSE(tourney.Switch().IsRunning());
  EXPECT_TRUE(Printed("/t/tourney.ini"));
  EXPECT_EQ(machine.files.Bytes("/t/tourney.ini"), changed);
}

// What it has begun is spooled: the change is found by the save before the start.
TEST_F(TwoPrograms, ARunnerThatStopsItselfBeforeAStartLetsGoOfTheLock) {
  tourney.ChangeSettings()->auto_save = 1;
  ASSERT_TRUE(file.Save(tourney, "/t/tourney.ini"));
  machine.files.PutMore("/t/tourney.ini", "more\n");
  tourney.ChangeSettings()->name = "Another cup";
  Pass();
  EXPECT_FALSE(tourney.Switch().IsRunning());
  EXPECT_TRUE(machine.processes.Batches().empty());
  EXPECT_TRUE(loop_->IsIdle());
  EXPECT_FALSE(machine.files.Has("/t/runner.lock"));
}

TEST_F(TwoPrograms, TheLockGoesWhenTheRunnerHasNothingMoreToDo) {
  Pass();
  EXPECT_TRUE(machine.files.IsLocked("/t/runner.lock"));
  SwitchRunnerOff(tourney);
  EndGame(1, "1-0");
  PassTime(seconds(5));
  EXPECT_FALSE(machine.files.Has("/t/runner.lock"));
}

// With many games at once a result is saved up to a second later. A load in between brings the game
// back as one to be played, and it is.
TEST_F(PlayGames, AGameThatIsBegunAnewBeforeItsResultWasSavedKeepsItsClaim) {
  play_pace_.referee = RefereePace::kInGroups;
  play_pace_.between_games = seconds(0);
  Restart(2);
  Pass();
  ASSERT_EQ(machine.processes.Batches().size(), 2U);
  machine.clock.Advance(seconds(2));
  Pass();
  EndGame(1, "1-0");
  machine.clock.Advance(seconds(2));
  machine.processes.EndOf(1);
  Pass();
  ASSERT_EQ(GameNumber(1).status, kReady);
  Game& game = GameNumber(1);
  game.status = kSpooled;
  game.bat_file = "/t/g1.BAT";
  game.pgn_file = "/t/g1.PGN";
  Pass();
  ASSERT_EQ(machine.processes.Batches().back(), "/t/g1.BAT");
  const std::string claim = machine.files.Bytes("/t/g1.run");
  machine.clock.Advance(seconds(1));
  Pass();
  EXPECT_EQ(machine.files.Bytes("/t/g1.run"), claim);
  EXPECT_TRUE(machine.files.IsLocked("/t/g1.run"));
}

// With many games at once the results of a moment are written together, but somebody else may save
// before.
TEST_F(PlayGames, NoSaveHoldsAResultWhoseGameIsNotInTheTourneysPgn) {
  play_pace_.referee = RefereePace::kInGroups;
  Restart(2);
  Pass();
  machine.clock.Advance(seconds(2));
  Pass();
  EndGame(1, "1-0");
  machine.clock.Advance(seconds(2));
  Pass();
  ASSERT_EQ(GameNumber(1).status, kReady);
  EXPECT_EQ(machine.files.Bytes("/t/all.pgn"), "") << "it waits for others";
  ASSERT_TRUE(file.Save(tourney, "/t/tourney.ini"));
  EXPECT_NE(machine.files.Bytes("/t/all.pgn").find("[Number \"1\"]"), std::string::npos);
}

TEST_F(Restarts, ClearUpAfterACollectedGameWhoseJournalHasGoneWithAnotherSave) {
  const std::string claim = machine.files.Bytes("/t/g1.run");
  EndGame(1, "1-0");
  const std::string record = machine.files.Bytes("/t/g1.PGN");
  PassTime(seconds(3));
  ASSERT_EQ(GameNumber(1).status, kReady);
  machine.files.Remove("/t/all.pgn.journal");
  machine.files.Put("/t/g1.PGN", record);
  machine.files.Put("/t/g1.run", claim);
  EndProcesses();
  Restart();
  Pass();
  for (const char* name : {"/t/g1.PGN", "/t/g1.run", "/t/g1.left.PGN"})
    EXPECT_FALSE(machine.files.Has(name)) << name;
}

// The save that holds the result was on the disk when the power went, the record was not, nor what
// was deleted.
TEST_F(Restarts, ClearUpAfterACollectedGameOfWhichThePowerFailureHasLeftABeginning) {
  const std::string claim = machine.files.Bytes("/t/g1.run");
  EndGame(1, "1-0");
  const std::string record = machine.files.Bytes("/t/g1.PGN");
  PassTime(seconds(3));
  EndProcesses();
  for (const std::string& left : {std::string(), std::string("[Ev"), record.substr(0, 60)}) {
    machine.files.Put("/t/g1.PGN", left);
    machine.files.Put("/t/g1.BAT", "");
    machine.files.Put("/t/g1.run", claim);
    Restart();
    Pass();
    for (const char* name : {"/t/g1.PGN", "/t/g1.BAT", "/t/g1.run", "/t/g1.left.PGN"})
      EXPECT_FALSE(machine.files.Has(name)) << name << " of " << left.size();
  }
}

TEST_F(Restarts, RemoveTheDirectoryOfAGameWhoseClaimHasLostItsText) {
  machine.files.Put("/t/g2.run", "");
  machine.files.Put("/t/g2.place/winboard.debug", kHeader);
  machine.files.Put("/t/g2.place/g2.BAT", "");
  EndProcesses();
  Restart();
  Pass();
  for (const char* name : {"/t/g2.place/winboard.debug", "/t/g2.place/g2.BAT", "/t/g2.place"})
    EXPECT_FALSE(machine.files.Exists(name)) << name;
}

/// Commands of the user while game 1 is being played.
class WhileAGameIsPlayed : public PlayGames {
 protected:
  WhileAGameIsPlayed() { PlayFirstGame(); }

  void ExpectLeft(const std::string& shown_name = "/t\\g1.left.PGN") {
    EXPECT_TRUE(machine.files.Has("/t/g1.left.PGN"));
    EXPECT_FALSE(machine.files.Has("/t/g1.run"));
    EXPECT_TRUE(Printed("'" + shown_name + "'"));
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
  ExpectLeft("/t/g1.left.PGN");
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
