#include "runner/game_runner.h"

#include <gtest/gtest.h>

#include "runner/small_tourney.h"
#include "runner/spool.h"
#include "tourney/runner_switch_commands.h"

namespace tarvendo {
namespace {

constexpr const char* kHeader = "one\ntwo\nthree\nfour\nfive\n";
constexpr const char* kBlackMates = "GameEnds(27, Black mates, 6)\n";

std::string Stars(std::size_t count) {
  return std::string(count, '*');
}

/// Two spooled games and a runner that is switched on. A pass is called by the test, which looks at
/// what was printed and how long the runner wants to wait.
class PlayGames : public ::testing::Test, protected SmallTourney {
 protected:
  PlayGames() {
    AddGames(2);
    SpoolAll(tourney, machine.files);
    tourney.ChangeSwitch()->SetRunning(true);
    machine.processes.batch_running = true;
    machine.processes.on_batch = [this](const std::string&) {
      machine.files.Put("/t/winboard.debug", kHeader);
      return true;
    };
    machine.TakeOutput();
  }

  /// The milliseconds to wait after one pass.
  long long Pass() { return games_.Pass().count(); }

  void Passes(int count) {
    for (int i = 0; i < count; ++i)
      games_.Pass();
  }

  /// To the pass after which game 1 is being played.
  void PlayFirstGame() {
    Passes(2);
    machine.TakeOutput();
  }

  void EndGame(int number, const std::string& result) {
    PutPgn(number, result);
    machine.files.PutMore("/t/winboard.debug", kBlackMates);
  }

  std::string Output() { return machine.TakeOutput(); }
  bool Printed(const std::string& text) { return Output().find(text) != std::string::npos; }

  GameRunner games_{shared, held_file, held_brackets, machine.host};
};

TEST_F(PlayGames, ASwitchedOffRunnerIsIdleAndLooksEveryTwoSeconds) {
  tourney.ChangeSwitch()->SetRunning(false);
  EXPECT_EQ(Pass(), 2000);
  EXPECT_TRUE(games_.IsIdle());
  EXPECT_EQ(Pass(), 2000);
  EXPECT_EQ(Output(), "");
}

TEST_F(PlayGames, ASwitchedOnRunnerStartsAGameInItsSecondPass) {
  EXPECT_EQ(Pass(), 2000);
  EXPECT_FALSE(games_.IsIdle());
  EXPECT_TRUE(machine.processes.Batches().empty());
  EXPECT_EQ(Pass(), 10000 + 2000);
  EXPECT_FALSE(games_.IsIdle());
  EXPECT_EQ(machine.processes.Batches(), std::vector<std::string>{"/t\\g1.BAT"});
  EXPECT_EQ(tourney.current_game, 1);
}

TEST_F(PlayGames, TheStartOfAGameIsAnnounced) {
  Passes(2);
  EXPECT_EQ(Output(),
            "\n" + Stars(70) +
                "\nStarting game no. 1\nWhite: Alpha                Black: Beta                \n"
                "Bat: /t\\g1.BAT             \nPgn: /t\\g1.PGN             \n" +
                Stars(70) + "\n\n> ");
}

TEST_F(PlayGames, SwitchedOffBeforeAGameStartsItGoesBackToIdle) {
  Pass();
  tourney.ChangeSwitch()->SetRunning(false);
  EXPECT_EQ(Pass(), 2000);
  EXPECT_TRUE(games_.IsIdle());
  tourney.ChangeSwitch()->SetRunning(true);
  EXPECT_EQ(Pass(), 2000);
  EXPECT_TRUE(machine.processes.Batches().empty());
}

TEST_F(PlayGames, WithoutAGameItWaitsTwoSecondsMoreAndIsIdle) {
  tourney.EraseAllGames();
  Pass();
  EXPECT_EQ(Pass(), 2000 + 2000);
  EXPECT_TRUE(games_.IsIdle());
  AddGames(1);
  SpoolAll(tourney, machine.files);
  EXPECT_EQ(Pass(), 12000) << "a game that turns up later is played";
  EXPECT_FALSE(games_.IsIdle());
}

TEST_F(PlayGames, ResultsThatAreThereAlreadyAreCollectedBeforeTheStart) {
  PutPgn(1, "1-0");
  Passes(2);
  EXPECT_EQ(GameNumber(1).status, kReady);
  EXPECT_EQ(machine.processes.Batches(), std::vector<std::string>{"/t\\g2.BAT"});
}

TEST_F(PlayGames, TheFilesPathBecomesTheCurrentDirectory) {
  Passes(2);
  EXPECT_EQ(machine.files.CurrentDirectory(), "/t");
}

TEST_F(PlayGames, TheFilesPathBecomesTheCurrentDirectoryWithoutAGameToo) {
  tourney.EraseAllGames();
  Passes(2);
  EXPECT_EQ(machine.files.CurrentDirectory(), "/t");
}

TEST_F(PlayGames, ABadOrEmptyFilesPathIsIgnored) {
  tourney.ChangeSettings()->files_path = "";
  Passes(2);
  EXPECT_EQ(machine.files.CurrentDirectory(), "/home");
}

TEST_F(PlayGames, TheDebugFileOfAnOldGameIsDeletedBeforeTheStart) {
  machine.files.Put("/t/winboard.debug", std::string(kHeader) + kBlackMates);
  machine.processes.on_batch = nullptr;
  Passes(2);
  EXPECT_FALSE(machine.files.Has("/t/winboard.debug"));
  EXPECT_EQ(machine.processes.Batches().size(), 1U);
}

TEST_F(PlayGames, ALockedDebugFileIsTriedEverySecondAndReportedAtEveryEleventhTry) {
  machine.files.Put("/t/winboard.debug", "x");
  machine.files.Deny(FileOperation::kRemove, "/t/winboard.debug");
  Pass();
  const std::string message = "\n" + Stars(52) +
                              "\nSomething is accessing '/t\\winboard.debug',\n" +
                              "can't run a game before it's free.\n" + Stars(52) + "\n> ";
  for (int i = 1; i <= 23; ++i) {
    EXPECT_EQ(Pass(), 1000 + 2000);
    EXPECT_EQ(Output(), i % 11 == 1 ? message : "") << "try " << i;
    EXPECT_FALSE(games_.IsIdle());
  }
  machine.files.Allow(FileOperation::kRemove, "/t/winboard.debug");
  EXPECT_EQ(Pass(), 12000);
}

TEST_F(PlayGames, TheMessageAboutALockedFileStartsAnewAfterAGame) {
  machine.files.Put("/t/winboard.debug", "x");
  machine.files.Deny(FileOperation::kRemove, "/t/winboard.debug");
  Passes(2);
  machine.files.Allow(FileOperation::kRemove, "/t/winboard.debug");
  Pass();
  EndGame(1, "1-0");
  Pass();
  Output();
  machine.files.Deny(FileOperation::kRemove, "/t/winboard.debug");
  Pass();
  EXPECT_TRUE(Printed("Something is accessing"));
}

TEST_F(PlayGames, ABatchFileThatHasBeenDeletedIsMadeAgain) {
  const std::string text = machine.files.Bytes("/t/g1.BAT");
  machine.files.Remove("/t/g1.BAT");
  Passes(2);
  EXPECT_EQ(machine.files.Bytes("/t/g1.BAT"), text);
  EXPECT_TRUE(Printed("Game 1 spooled.\n"));
  EXPECT_EQ(machine.processes.Batches(), std::vector<std::string>{"/t\\g1.BAT"});
}

TEST_F(PlayGames, WhileTheGameGoesOnTheDebugFileIsReadEveryTwoSeconds) {
  PlayFirstGame();
  EXPECT_EQ(Pass(), 2000);
  machine.files.PutMore("/t/winboard.debug", "GameEnds(0, (null), 2)\n");
  EXPECT_EQ(Pass(), 2000);
  EXPECT_FALSE(games_.IsIdle());
  EXPECT_EQ(Output(), "");
  EXPECT_EQ(GameNumber(1).status, kSpooled);
}

TEST_F(PlayGames, TheEndOfAGameIsCollectedAndTheNextFollowsFiveSecondsLater) {
  PlayFirstGame();
  EndGame(1, "0-1");
  EXPECT_EQ(Pass(), 5000 + 2000);
  EXPECT_EQ(GameNumber(1).result, kBlackWins);
  EXPECT_EQ(tourney.current_game, 0);
  EXPECT_EQ(Output(), "\n" + Stars(54) + "\nGame 1: Alpha - Beta : 0 - 1\n" + Stars(54) + "\n> ");
  EXPECT_EQ(Pass(), 12000);
  EXPECT_TRUE(Printed("Starting game no. 2\n"));
}

TEST_F(PlayGames, AGameThatLeavesNoRecordIsReadyWithAnUnknownResult) {
  PlayFirstGame();
  machine.files.PutMore("/t/winboard.debug", kBlackMates);
  Pass();
  EXPECT_EQ(Pass(), 7000);
  EXPECT_EQ(Output(), "\n" + Stars(79) +
                          "\nGame 1: Alpha - Beta result not found, and therefore set to "
                          "UNKNOWN.\n" +
                          Stars(79) + "\n> ");
  EXPECT_EQ(GameNumber(1).status, kReady);
  EXPECT_EQ(GameNumber(1).result, kUnknown);
}

TEST_F(PlayGames, ARecordThatWinBoardHasYetToWriteIsAwaitedForOnePass) {
  PlayFirstGame();
  machine.files.PutMore("/t/winboard.debug", kBlackMates);
  EXPECT_EQ(Pass(), 2000);
  EXPECT_EQ(Output(), "");
  PutPgn(1, "1-0");
  EXPECT_EQ(Pass(), 7000);
  EXPECT_EQ(GameNumber(1).result, kWhiteWins);
}

TEST_F(PlayGames, AnEmptyRecordIsLookedAtOnceMore) {
  PlayFirstGame();
  machine.files.Put("/t/g1.PGN", "");
  machine.files.PutMore("/t/winboard.debug", kBlackMates);
  EXPECT_EQ(Pass(), 2000);
  EXPECT_EQ(GameNumber(1).status, kSpooled);
  PutPgn(1, "1-0");
  EXPECT_EQ(Pass(), 7000);
  EXPECT_EQ(GameNumber(1).result, kWhiteWins);
}

TEST_F(PlayGames, ARecordThatStaysEmptyIsCollectedAsItIs) {
  PlayFirstGame();
  machine.files.Put("/t/g1.PGN", "");
  machine.files.PutMore("/t/winboard.debug", kBlackMates);
  Pass();
  EXPECT_EQ(Pass(), 7000);
  EXPECT_TRUE(Printed("Game 1: Alpha - Beta : *\n"));
  EXPECT_EQ(GameNumber(1).status, kReady);
}

TEST_F(PlayGames, StoppedDuringAGameItIsCollectedAndNoOtherStarted) {
  PlayFirstGame();
  StopRunner(tourney);
  EXPECT_EQ(Pass(), 2000);
  EXPECT_FALSE(games_.IsIdle()) << "the game goes on";
  EndGame(1, "1-0");
  EXPECT_EQ(Pass(), 2000);
  EXPECT_EQ(GameNumber(1).result, kWhiteWins);
  EXPECT_EQ(Pass(), 2000);
  EXPECT_TRUE(games_.IsIdle());
  EXPECT_EQ(machine.processes.Batches().size(), 1U);
  StartRunner(tourney);
  Passes(2);
  EXPECT_EQ(machine.processes.Batches().size(), 2U);
}

TEST_F(PlayGames, ADebugFileThatNeverComesStopsTheGameWithAPanicFile) {
  machine.processes.on_batch = nullptr;
  PlayFirstGame();
  EXPECT_EQ(Pass(), 100);
  EXPECT_EQ(Output(), "\n" + Stars(70) +
                          "\nError running game. Stopping game and setting its result to UNKNOWN.\n"
                          "Possible reasons for this problem is that you have deleted\n"
                          "the game's bat-file, or your player's directory or exe-file name are\n"
                          "incorrect or your winboard-path is incorrect.\n" +
                          Stars(70) + "\n> ");
  EXPECT_EQ(machine.files.Bytes("/t/winboard.debug"),
            "Panic stop by Tarvendo\n \n \n \n \ngameends \n \n");
  EXPECT_EQ(Pass(), 7000);
  EXPECT_TRUE(Printed("Game 1: Alpha - Beta result not found"));
  EXPECT_EQ(GameNumber(1).status, kReady);
  EXPECT_EQ(Pass(), 12000) << "the next game is played";
}

TEST_F(PlayGames, ABatchFileThatDoesNotStartEndsInAPanicStopToo) {
  machine.processes.on_batch = [](const std::string&) { return false; };
  PlayFirstGame();
  EXPECT_EQ(Pass(), 100);
  EXPECT_EQ(Pass(), 7000);
  EXPECT_EQ(GameNumber(1).status, kReady);
}

TEST_F(PlayGames, ADebugFileThatCannotEvenBeMadeStopsTheRunner) {
  machine.processes.on_batch = nullptr;
  PlayFirstGame();
  machine.files.Deny(FileOperation::kOpen, "/t/winboard.debug");
  EXPECT_EQ(Pass(), 2000);
  EXPECT_TRUE(Printed(Stars(70) +
                      "Error running game. I can't access winboard.debug, stopping runner." +
                      Stars(70)));
  EXPECT_FALSE(tourney.Switch().IsRunning());
  EXPECT_EQ(tourney.current_game, 0);
  EXPECT_EQ(GameNumber(1).status, kSpooled);
  Pass();
  EXPECT_TRUE(games_.IsIdle());
}

TEST_F(PlayGames, AFullDiskUnderThePanicFileStopsTheRunnerToo) {
  machine.processes.on_batch = nullptr;
  PlayFirstGame();
  machine.files.Deny(FileOperation::kWrite, "/t/winboard.debug");
  EXPECT_EQ(Pass(), 2000);
  EXPECT_FALSE(tourney.Switch().IsRunning());
}

TEST_F(PlayGames, AlwaysSavedDebugFilesAreKeptUnderTheGamesName) {
  tourney.ChangeSettings()->save_debug_files = kSaveAlways;
  machine.files.Put("/t/g1.debug", "of another game");
  PlayFirstGame();
  EndGame(1, "1-0");
  Pass();
  EXPECT_EQ(machine.files.Bytes("/t/g1.debug"), std::string(kHeader) + kBlackMates);
  EXPECT_FALSE(machine.files.Has("/t/winboard.debug"));
}

TEST_F(PlayGames, NeverSavedDebugFilesAreLeftForTheNextGameToDelete) {
  tourney.ChangeSettings()->save_debug_files = kSaveNever;
  machine.files.Put("/t/g1.debug", "of another game");
  PlayFirstGame();
  EndGame(1, "*");
  Pass();
  EXPECT_FALSE(machine.files.Has("/t/g1.debug"));
  EXPECT_TRUE(machine.files.Has("/t/winboard.debug"));
}

TEST_F(PlayGames, AutomaticallySavedAreTheDebugFilesOfGamesWithoutResult) {
  tourney.ChangeSettings()->save_debug_files = kSaveAutomatically;
  PlayFirstGame();
  EndGame(1, "1-0");
  Passes(2);
  EXPECT_FALSE(machine.files.Has("/t/g1.debug"));
  EndGame(2, "*");
  Pass();
  EXPECT_TRUE(machine.files.Has("/t/g2.debug"));
}

TEST_F(PlayGames, AGameThatAnotherTourneyDoesNotHoldEndsInSilence) {
  PlayFirstGame();
  tourney.Reset();
  tourney.ChangeSettings()->files_path = "/elsewhere\\";
  EndGame(1, "1-0");
  EXPECT_EQ(Pass(), 7000);
  EXPECT_EQ(Output(), "");
  EXPECT_TRUE(machine.files.Has("/t/g1.PGN"));
}

TEST_F(PlayGames, AGameOfOtherPlayersUnderTheSameNumberIsNotTouched) {
  PlayFirstGame();
  tourney.EraseAllGames();
  tourney.ChangeState()->last_game_number = 0;
  tourney.AddGame(3, 4, 1, 1);
  Spool(tourney, machine.files, 1);
  EndGame(1, "1-0");
  Output();
  EXPECT_EQ(Pass(), 7000);
  EXPECT_EQ(Output(), "");
  EXPECT_EQ(GameNumber(1).status, kSpooled);
}

TEST_F(PlayGames, AGameRemovedWhileItIsPlayedEndsInSilence) {
  PlayFirstGame();
  tourney.EraseGames({0});
  EndGame(1, "1-0");
  EXPECT_EQ(Pass(), 7000);
  EXPECT_EQ(Output(), "");
}

TEST_F(PlayGames, AGameCollectedByTheUserMeanwhileIsNotAnnouncedAgain) {
  PlayFirstGame();
  GameNumber(1).status = kReady;
  GameNumber(1).result = kDraw;
  GameNumber(1).pgn_file = "";
  machine.files.PutMore("/t/winboard.debug", kBlackMates);
  EXPECT_EQ(Pass(), 7000);
  EXPECT_EQ(Output(), "");
  EXPECT_EQ(GameNumber(1).result, kDraw);
}

TEST_F(PlayGames, AWinBoardThatDiedInSilenceIsGivenAMinute) {
  PlayFirstGame();
  machine.processes.batch_running = false;
  for (int i = 0; i < 30; ++i)
    EXPECT_EQ(Pass(), 2000);
  EXPECT_EQ(Pass(), 7000);
  EXPECT_TRUE(Printed("result not found"));
  EXPECT_EQ(GameNumber(1).status, kReady);
}

TEST_F(PlayGames, AWinBoardThatDiedAfterWritingItsRecordLosesNothing) {
  PlayFirstGame();
  machine.processes.batch_running = false;
  PutPgn(1, "1-0");
  Passes(31);
  EXPECT_EQ(GameNumber(1).result, kWhiteWins);
}

TEST_F(PlayGames, AWinBoardThatRunsIsAwaitedForEver) {
  PlayFirstGame();
  for (int i = 0; i < 1000; ++i)
    EXPECT_EQ(Pass(), 2000);
}

TEST_F(PlayGames, TheTourneyIsSavedAfterEveryGame) {
  tourney.ChangeSettings()->auto_save = 1;
  file.SetName("/t/saved.ini");
  PlayFirstGame();
  EndGame(1, "1-0");
  Pass();
  Tourney loaded;
  TourneyFile loaded_file(machine.files);
  ASSERT_TRUE(loaded_file.Load(loaded, "/t/saved.ini"));
  EXPECT_EQ(loaded.FindGame(1)->result, kWhiteWins);
}

TEST_F(PlayGames, WithAutoRunAWholeRoundRobinIsPlayed) {
  tourney.EraseAllGames();
  AddGames(4);
  tourney.ChangeSettings()->auto_run = 1;
  machine.processes.on_batch = [this](const std::string&) {
    machine.files.Put("/t/winboard.debug", std::string(kHeader) + kBlackMates);
    PutPgn(tourney.current_game, "0-1");
    return true;
  };
  int passes = 0;
  for (games_.Pass(); !games_.IsIdle() && passes < 100; ++passes)
    games_.Pass();
  tourney.RecomputeGamesState();
  EXPECT_EQ(tourney.State().games_state, 3);
  EXPECT_EQ(tourney.Settings().auto_run, 0);
  EXPECT_EQ(passes, 2 * 4 + 1);
}

}  // namespace
}  // namespace tarvendo
