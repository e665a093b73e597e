#include "runner/play_loop.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>

#include "play/claim.h"
#include "runner/play_fixture.h"
#include "runner/spool.h"

namespace tarvendo {
namespace {

/// A game host that lets the user do something while a pass looks for a game to start.
class HostWithUser : public LocalHost {
 public:
  using LocalHost::LocalHost;

  std::optional<Obstacle> FindObstacle(const std::string& files_path, TimePoint now) override {
    if (user_does) user_does();
    return LocalHost::FindObstacle(files_path, now);
  }

  std::function<void()> user_does;
};

TEST_F(PlayGames, ASwitchedOffRunnerIsIdleAndAsksForNoPass) {
  tourney.ChangeSwitch()->SetRunning(false);
  EXPECT_EQ(Pass(), kNever);
  EXPECT_TRUE(loop_->IsIdle());
  EXPECT_EQ(Output(), "");
}

TEST_F(PlayGames, ASwitchedOnRunnerStartsAGameAtOnce) {
  Pass();
  EXPECT_FALSE(loop_->IsIdle());
  EXPECT_EQ(machine.processes.Batches(), std::vector<std::string>{"/t/g1.BAT"});
  EXPECT_TRUE(room.running.With(shared.Take()).HasNumber(1));
}

TEST_F(PlayGames, TheStartOfAGameIsAnnounced) {
  Pass();
  EXPECT_EQ(Output(),
            "\n" + Stars(70) +
                "\nStarting game no. 1\nWhite: Alpha                Black: Beta                \n"
                "Bat: /t\\g1.BAT             \nPgn: /t\\g1.PGN             \n" +
                Stars(70) + "\n\n> ");
}

TEST_F(PlayGames, WithoutAGameItIsIdleUntilOneTurnsUp) {
  tourney.EraseAllGames();
  EXPECT_EQ(Pass(), kNever);
  EXPECT_TRUE(loop_->IsIdle());
  AddGames(1);
  SpoolAll(tourney, machine.files);
  Pass();
  EXPECT_FALSE(loop_->IsIdle());
  EXPECT_EQ(machine.processes.Batches().size(), 1U);
}

TEST_F(PlayGames, ResultsThatAreThereAlreadyAreCollectedBeforeTheStart) {
  PutPgn(1, "1-0");
  Pass();
  EXPECT_EQ(GameNumber(1).status, kReady);
  EXPECT_EQ(machine.processes.Batches(), std::vector<std::string>{"/t/g2.BAT"});
}

TEST_F(PlayGames, TheFilesPathBecomesTheCurrentDirectory) {
  Pass();
  EXPECT_EQ(machine.files.CurrentDirectory(), "/t");
}

TEST_F(PlayGames, TheFilesPathBecomesTheCurrentDirectoryWithoutAGameToo) {
  tourney.EraseAllGames();
  Pass();
  EXPECT_EQ(machine.files.CurrentDirectory(), "/t");
}

TEST_F(PlayGames, ABadOrEmptyFilesPathIsIgnored) {
  tourney.ChangeSettings()->files_path = "";
  Pass();
  EXPECT_EQ(machine.files.CurrentDirectory(), "/home");
}

TEST_F(PlayGames, TheDebugFileOfAnOldGameIsDeletedBeforeTheStart) {
  machine.files.Put("/t/winboard.debug", std::string(kHeader) + kBlackMates);
  machine.processes.on_batch = nullptr;
  Pass();
  EXPECT_FALSE(machine.files.Has("/t/winboard.debug"));
  EXPECT_EQ(machine.processes.Batches().size(), 1U);
}

TEST_F(PlayGames, ALockedDebugFileIsTriedEveryThreeSecondsAndReportedAtEveryEleventhTry) {
  machine.files.Put("/t/winboard.debug", "x");
  machine.files.Deny(FileOperation::kRemove, "/t/winboard.debug");
  for (int i = 1; i <= 23; ++i) {
    EXPECT_EQ(Pass(), play_pace_.retry.count());
    EXPECT_EQ(Output(), i % 11 == 1 ? AccessMessage("/t\\winboard.debug") : "") << "try " << i;
    EXPECT_FALSE(loop_->IsIdle());
    machine.clock.Advance(seconds(3));
  }
  machine.files.Allow(FileOperation::kRemove, "/t/winboard.debug");
  Pass();
  EXPECT_EQ(machine.processes.Batches().size(), 1U);
}

TEST_F(PlayGames, TheMessageAboutALockedFileStartsAnewAfterAGame) {
  machine.files.Put("/t/winboard.debug", "x");
  machine.files.Deny(FileOperation::kRemove, "/t/winboard.debug");
  Pass();
  machine.files.Allow(FileOperation::kRemove, "/t/winboard.debug");
  PassTime(seconds(3));
  EndGame(1, "1-0");
  PassTime(seconds(3));
  Output();
  machine.files.Deny(FileOperation::kRemove, "/t/winboard.debug");
  PassTime(seconds(5));
  EXPECT_EQ(Output(), AccessMessage("/t\\winboard.debug"));
}

TEST_F(PlayGames, ABatchFileThatHasBeenDeletedIsMadeAgain) {
  const std::string text = machine.files.Bytes("/t/g1.BAT");
  machine.files.Remove("/t/g1.BAT");
  Pass();
  EXPECT_EQ(machine.files.Bytes("/t/g1.BAT"), text);
  EXPECT_TRUE(Printed("Game 1 spooled.\n"));
  EXPECT_EQ(machine.processes.Batches(), std::vector<std::string>{"/t/g1.BAT"});
}

// As a power failure may leave it.
TEST_F(PlayGames, ABatchFileThatHasLostItsTextIsMadeAgain) {
  tourney.EraseGames({1});
  const std::string text = machine.files.Bytes("/t/g1.BAT");
  for (const std::string& lost : {std::string(), std::string(text.size(), '\0')}) {
    machine.files.Put("/t/g1.BAT", lost);
    Restart();
    Pass();
    EXPECT_EQ(machine.files.Bytes("/t/g1.BAT"), text);
    machine.processes.EndOf(machine.processes.LastBatch());
    machine.files.Remove("/t/g1.run");
    machine.files.Remove("/t/winboard.debug");
  }
}

TEST_F(PlayGames, ABatchFileThatCannotBeWrittenIsTriedAgainAndLeavesAutoRunOn) {
  tourney.EraseAllGames();
  AddGames(2);
  tourney.ChangeSettings()->auto_run = 1;
  machine.files.Deny(FileOperation::kOpen, "/t/g3.BAT.tarvendo.new");
  machine.files.Deny(FileOperation::kOpen, "/t/g3.BAT");
  Output();
  for (int i = 1; i <= 12; ++i) {
    EXPECT_EQ(Pass(), play_pace_.retry.count());
    EXPECT_EQ(Output(), i % 11 == 1 ? "Error opening file for writing:  /t\\g3.BAT\n" : "");
    machine.clock.Advance(seconds(3));
  }
  EXPECT_EQ(tourney.Settings().auto_run, 1);
  machine.files.Allow(FileOperation::kOpen, "/t/g3.BAT.tarvendo.new");
  machine.files.Allow(FileOperation::kOpen, "/t/g3.BAT");
  Pass();
  EXPECT_EQ(machine.processes.Batches().size(), 1U);
}

TEST_F(PlayGames, TheEndOfAGameIsCollectedAndTheNextFollowsFiveSecondsLater) {
  PlayFirstGame();
  EndGame(1, "0-1");
  PassTime(seconds(2));
  EXPECT_EQ(GameNumber(1).result, kBlackWins);
  EXPECT_TRUE(room.running.With(shared.Take()).IsEmpty());
  EXPECT_EQ(Output(), "\n" + Stars(54) + "\nGame 1: Alpha - Beta : 0 - 1\n" + Stars(54) + "\n> ");
  PassTime(seconds(4));
  EXPECT_EQ(Output(), "");
  PassTime(seconds(1));
  EXPECT_TRUE(Printed("Starting game no. 2\n"));
}

TEST_F(PlayGames, AGameThatLeavesNoRecordIsReadyWithAnUnknownResult) {
  PlayFirstGame();
  WriteDebug(kBlackMates);
  PassTime(seconds(4));
  EXPECT_EQ(Output(), "\n" + Stars(79) +
                          "\nGame 1: Alpha - Beta result not found, and therefore set to "
                          "UNKNOWN.\n" +
                          Stars(79) + "\n> ");
  EXPECT_EQ(GameNumber(1).status, kReady);
  EXPECT_EQ(GameNumber(1).result, kUnknown);
}

TEST_F(PlayGames, ARecordThatStaysEmptyIsCollectedAsItIs) {
  PlayFirstGame();
  machine.files.Put("/t/g1.PGN", "");
  WriteDebug(kBlackMates);
  PassTime(seconds(4));
  EXPECT_TRUE(Printed("Game 1: Alpha - Beta : *\n"));
  EXPECT_EQ(GameNumber(1).status, kReady);
}

TEST_F(PlayGames, StoppedDuringAGameItIsCollectedAndNoOtherStarted) {
  PlayFirstGame();
  SwitchRunnerOff(tourney);
  Pass();
  EXPECT_FALSE(loop_->IsIdle()) << "the game goes on";
  EndGame(1, "1-0");
  PassTime(seconds(10));
  EXPECT_EQ(GameNumber(1).result, kWhiteWins);
  EXPECT_TRUE(loop_->IsIdle());
  EXPECT_EQ(machine.processes.Batches().size(), 1U);
  SwitchRunnerOn(tourney);
  Pass();
  EXPECT_EQ(machine.processes.Batches().size(), 2U);
}

TEST_F(PlayGames, StoppedWhileAGameIsLookedForNothingIsDoneForAutoRunAnyMore) {
  Unspool(tourney, machine.files, file, running);
  Output();
  HostWithUser host(machine.host, game_pace_, 1, [] {});
  PlayLoop loop(room, host, play_pace_);
  host.user_does = [this] {
    const Hold hold = shared.Take();
    hold->ChangeSwitch()->SetRunning(false);
    hold->ChangeSettings()->auto_run = 1;
    machine.files.ChangeDirectory("/home");
  };
  loop.Pass();
  EXPECT_EQ(Output(), "");
  EXPECT_EQ(GameNumber(1).status, kNothingDone);
  EXPECT_EQ(machine.files.CurrentDirectory(), "/home");
  EXPECT_TRUE(loop.IsIdle());
}

TEST_F(PlayGames, ADebugFileThatNeverComesStopsTheGameWithAPanicFile) {
  machine.processes.on_batch = nullptr;
  PlayFirstGame();
  PassTime(seconds(10));
  EXPECT_EQ(Output(), "\n" + Stars(70) +
                          "\nError running game. Stopping game and setting its result to UNKNOWN.\n"
                          "Possible reasons for this problem is that you have deleted\n"
                          "the game's bat-file, or your player's directory or exe-file name are\n"
                          "incorrect or your winboard-path is incorrect.\n" +
                          Stars(70) + "\n> \n" + Stars(79) +
                          "\nGame 1: Alpha - Beta result not found, and therefore set to "
                          "UNKNOWN.\n" +
                          Stars(79) + "\n> ");
  EXPECT_EQ(machine.files.Bytes("/t/winboard.debug"),
            "Panic stop by Tarvendo\n \n \n \n \ngameends \n \n");
  EXPECT_EQ(GameNumber(1).status, kReady);
  PassTime(seconds(5));
  EXPECT_EQ(machine.processes.Batches().size(), 2U) << "the next game is played";
}

TEST_F(PlayGames, ADebugFileThatCannotEvenBeMadeStopsTheRunner) {
  machine.processes.on_batch = nullptr;
  PlayFirstGame();
  machine.files.Deny(FileOperation::kOpen, "/t/winboard.debug");
  PassTime(seconds(10));
  EXPECT_TRUE(Printed(Stars(70) +
                      "Error running game. I can't access winboard.debug, stopping runner." +
                      Stars(70)));
  EXPECT_FALSE(tourney.Switch().IsRunning());
  EXPECT_TRUE(tourney.Switch().HasStoppedItself());
  EXPECT_EQ(GameNumber(1).status, kSpooled);
  EXPECT_TRUE(loop_->IsIdle());
}

TEST_F(PlayGames, AlwaysSavedDebugFilesAreKeptUnderTheGamesName) {
  tourney.ChangeSettings()->save_debug_files = kSaveAlways;
  machine.files.Put("/t/g1.debug", "of another game");
  PlayFirstGame();
  EndGame(1, "1-0");
  PassTime(seconds(2));
  EXPECT_EQ(machine.files.Bytes("/t/g1.debug"), std::string(kHeader) + kBlackMates);
  EXPECT_FALSE(machine.files.Has("/t/winboard.debug"));
}

TEST_F(PlayGames, NeverSavedDebugFilesAreLeftForTheNextGameToDelete) {
  tourney.ChangeSettings()->save_debug_files = kSaveNever;
  machine.files.Put("/t/g1.debug", "of another game");
  PlayFirstGame();
  EndGame(1, "*");
  PassTime(seconds(2));
  EXPECT_FALSE(machine.files.Has("/t/g1.debug"));
  EXPECT_TRUE(machine.files.Has("/t/winboard.debug"));
}

TEST_F(PlayGames, AutomaticallySavedAreTheDebugFilesOfGamesWithoutResult) {
  tourney.ChangeSettings()->save_debug_files = kSaveAutomatically;
  PlayFirstGame();
  EndGame(1, "1-0");
  PassTime(seconds(8));
  EXPECT_FALSE(machine.files.Has("/t/g1.debug"));
  EndGame(2, "*");
  PassTime(seconds(3));
  EXPECT_TRUE(machine.files.Has("/t/g2.debug"));
}

TEST_F(PlayGames, AnErrorFileGoesWithAResultAndStaysWithoutOne) {
  PlayFirstGame();
  machine.files.Put("/t/g1.err", "a reason");
  EndGame(1, "1-0");
  PassTime(seconds(8));
  EXPECT_FALSE(machine.files.Has("/t/g1.err"));
  machine.files.Put("/t/g2.err", "a reason");
  WriteDebug(kBlackMates);
  PassTime(seconds(5));
  EXPECT_EQ(GameNumber(2).status, kReady);
  EXPECT_TRUE(machine.files.Has("/t/g2.err"));
}

TEST_F(PlayGames, AWinBoardThatDiedInSilenceIsGivenAMinute) {
  PlayFirstGame();
  machine.processes.EndOf(1);
  PassTime(seconds(59));
  EXPECT_EQ(GameNumber(1).status, kSpooled);
  PassTime(seconds(2));
  EXPECT_TRUE(Printed("result not found"));
  EXPECT_EQ(GameNumber(1).status, kReady);
}

TEST_F(PlayGames, AnotherGamesHangingWinBoardDoesNotHideThatOneHasDied) {
  machine.processes.on_batch = nullptr;
  PlayFirstGame();
  PassTime(seconds(10));
  machine.processes.on_batch = [this](const std::string&) {
    machine.files.Put("/t/winboard.debug", kHeader);
    return true;
  };
  PassTime(seconds(5));
  ASSERT_EQ(machine.processes.Batches().size(), 2U);
  machine.processes.EndOf(2);
  PassTime(seconds(61));
  EXPECT_EQ(GameNumber(2).status, kReady);
  EXPECT_TRUE(machine.processes.IsRunning(1));
}

TEST_F(PlayGames, AGameWhoseWinBoardHangsIsNotPlayedAgainBesideIt) {
  machine.processes.on_batch = nullptr;
  PlayFirstGame();
  PassTime(seconds(10));
  ASSERT_EQ(GameNumber(1).status, kReady);
  EXPECT_TRUE(machine.files.Has("/t/g1.run")) << "its processes still hold it";
  tourney.ChangeGames().pop_back();
  ReplayUnfinished(tourney, machine.files);
  Output();
  PassTime(seconds(20));
  EXPECT_EQ(machine.processes.Batches().size(), 1U);
  EXPECT_EQ(Output(), AccessMessage("/t\\g1.run"));
  machine.processes.EndOf(1);
  PassTime(seconds(4));
  EXPECT_EQ(machine.processes.Batches().size(), 2U);
}

TEST_F(PlayGames, ASilentHourCostsNoMoreThanOnePassInTenSeconds) {
  PlayFirstGame();
  EXPECT_LE(PassTime(std::chrono::hours(1)), std::chrono::hours(1) / game_pace_.fallback + 1);
  EXPECT_NE(machine.TakeErrors().find("Game 1:"), std::string::npos);
}

TEST_F(PlayGames, SetTimesActWhenTheyCome) {
  tourney.ChangeSwitch()->SetRunning(false);
  tourney.ChangeSwitch()->SetStartTime(machine.clock.Now() + 3600);
  PassTime(seconds(3599));
  EXPECT_EQ(Output(), "");
  PassTime(seconds(1));
  EXPECT_TRUE(Printed("Runner started."));
  EXPECT_EQ(tourney.Switch().Get().start_time, 0);
  tourney.ChangeSwitch()->SetStopTime(machine.clock.Now() + 60);
  PassTime(seconds(60));
  EXPECT_TRUE(Printed("Runner stopped."));
}

TEST_F(PlayGames, AClockThatIsSetOnIsNoticedWithinTenSeconds) {
  tourney.ChangeSwitch()->SetRunning(false);
  tourney.ChangeSwitch()->SetStartTime(machine.clock.Now() + 36000);
  Pass();
  machine.clock.SetNow(machine.clock.Now() + 40000);
  PassTime(seconds(10));
  EXPECT_TRUE(Printed("Runner started."));
}

TEST_F(PlayGames, TheTourneyIsSavedOnceForEveryGame) {
  tourney.ChangeSettings()->auto_save = 1;
  file.SetName("/t/saved.ini");
  PlayFirstGame();
  const int before = machine.files.Count(FileOperation::kRename);
  EndGame(1, "1-0");
  PassTime(seconds(3));
  EXPECT_EQ(GameNumber(1).result, kWhiteWins);
  EXPECT_LE(machine.files.Count(FileOperation::kRename) - before, 2) << "the page, and the save";
  Tourney loaded;
  TourneyFile loaded_file(machine.files);
  ASSERT_TRUE(loaded_file.Load(loaded, "/t/saved.ini"));
  EXPECT_EQ(loaded.FindGame(1)->result, kWhiteWins);
}

TEST_F(PlayGames, WithAutoRunAWholeRoundRobinIsPlayed) {
  tourney.EraseAllGames();
  AddGames(4);
  tourney.ChangeSettings()->auto_run = 1;
  machine.processes.on_batch = [this](const std::string& batch) {
    machine.files.Put("/t/winboard.debug", std::string(kHeader) + kBlackMates);
    PutPgn(batch[batch.size() - 5] - '0', "0-1");
    return true;
  };
  PassTime(seconds(60));
  EXPECT_TRUE(loop_->IsIdle());
  tourney.RecomputeGamesState();
  EXPECT_EQ(tourney.State().games_state, 3);
  EXPECT_EQ(tourney.Settings().auto_run, 0);
}

TEST_F(PlayGames, WhereNothingMayBeReplayedAGameWithoutAResultKeepsTheNextRoundAway) {
  const auto status_after = [this](bool replays) {
    tourney.EraseAllGames();
    tourney.ChangeSettings()->type = kSwiss;
    tourney.ChangeSettings()->rounds = 2;
    tourney.ChangeSettings()->auto_run = 1;
    tourney.AddGame(1, 2, 1, 1);
    tourney.AddGame(3, 4, 1, 1);
    for (const Game& game : tourney.Games()) {
      tourney.Change(game)->status = kReady;
      tourney.Change(game)->result = game.white == 1 ? kUnknown : kDraw;
    }
    tourney.ChangeSwitch()->SetRunning(true);
    play_pace_.replays = replays;
    Restart();
    Pass();
    return tourney.Games().front().status;
  };
  EXPECT_EQ(status_after(false), kReady);
  EXPECT_EQ(tourney.Settings().auto_run, 0);
  EXPECT_TRUE(loop_->IsIdle());
  EXPECT_EQ(status_after(true), kSpooled);
}

TEST_F(PlayGames, GamesAreCountedWhenTheyAreJudged) {
  PlayFirstGame();
  EXPECT_EQ(loop_->GamesJudged(), 0U);
  EndGame(1, "1-0");
  PassTime(seconds(3));
  EXPECT_EQ(loop_->GamesJudged(), 1U);
}

}  // namespace
}  // namespace tarvendo
