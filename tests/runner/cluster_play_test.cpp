// A tourney that is played by Slurm: what its games' ends mean.

#include <gtest/gtest.h>

#include "fakes/fake_slurm.h"
#include "platform/batch_plan.h"
#include "play/claim.h"
#include "play/cluster_host.h"
#include "play/job_player.h"
#include "runner/adoption.h"
#include "runner/play_fixture.h"

namespace tarvendo {
namespace {

/// Two spooled games, the runner switched on, and Slurm.
class PlayOnCluster : public PlayGames {
 protected:
  PlayOnCluster() {
    machine.processes.on_aside = [this](const std::string& line) { return slurm_.Answer(line); };
    play_pace_.referee = RefereePace::kInGroups;
    play_pace_.between_games = seconds(0);
    play_pace_.failures_allowed = 5;

    BeginAnew();
  }

  /// Another process of the program, with --cluster.
  void BeginAnew() {
    loop_.reset();
    cluster_.reset();
    while (!running.IsEmpty())
      running.Remove(GameOrder(running.Orders().front()));
    cluster_ = std::make_unique<ClusterHost>(machine.host, game_pace_, ClusterPace(),
                                             SlurmOptions{"/opt/tarvendo", {}, 0}, 2, [] {});
    loop_ = std::make_unique<PlayLoop>(room, *cluster_, play_pace_, openings_);
  }

  /// Passes as often as they are asked for, until `span` has passed.
  void LetPass(std::chrono::milliseconds span) {
    const TimePoint end = machine.clock.Steady() + span;
    for (int passes = 0; passes < 10000; ++passes) {
      const auto next = loop_->Pass();
      if (!next || *next > end) break;
      if (*next > machine.clock.Steady()) machine.clock.Advance(*next - machine.clock.Steady());
    }
    machine.clock.Advance(end - machine.clock.Steady());
    printed_ += Output();
  }

  /// What `tarvendo --play` starts on the node that has the game's job: the words of its WinBoard.
  std::vector<std::string> WordsOfJob(int number) {
    std::vector<std::string> words;
    machine.processes.on_steps = [&](const std::vector<BatchStep>& steps) {
      for (const BatchStep& step : steps)
        words.insert(words.end(), step.words.begin(), step.words.end());
      return false;
    };
    const FakeSlurm::Job& job = *slurm_.Find(number);
    PlayJob(machine.host, {job.name, job.number, 0}, "/t/g" + std::to_string(number) + ".run",
            JobPace(), [](const std::string&) {});
    return words;
  }

  bool HasPrinted(const std::string& text) const {
    return printed_.find(text) != std::string::npos;
  }

  FakeSlurm slurm_;
  std::unique_ptr<ClusterHost> cluster_;
  std::string printed_;
};

TEST_F(PlayOnCluster, GamesAreQueuedAtOnceAndTheirResultsCollected) {
  LetPass(seconds(5));
  EXPECT_EQ(slurm_.jobs.size(), 2U);
  PutPgn(1, "1-0");
  PutPgn(2, "0-1");
  slurm_.Set(1, "COMPLETED");
  slurm_.Set(2, "COMPLETED");
  LetPass(seconds(5));
  EXPECT_EQ(GameNumber(1).result, kWhiteWins);
  EXPECT_EQ(GameNumber(2).result, kBlackWins);
  EXPECT_FALSE(machine.files.Has("/t/g1.run"));
  EXPECT_FALSE(machine.files.Exists("/t/g1.place"));
  EXPECT_FALSE(machine.files.Has("/t/g1.PGN"));
}

TEST_F(PlayOnCluster, AKillBeforeTheFirstSaveLosesNoGameThatSlurmHasForgottenMeanwhile) {
  LetPass(seconds(5));
  PutPgn(1, "1-0");
  PutPgn(2, "0-1");
  slurm_.jobs.clear();
  for (const int number : {1, 2}) {
    Game& game = GameNumber(number);
    game.status = kNothingDone;
    game.bat_file.clear();
    game.pgn_file.clear();
  }
  tourney.ChangeSettings()->auto_run = 1;
  BeginAnew();
  LetPass(seconds(10));
  EXPECT_EQ(GameNumber(1).result, kWhiteWins) << printed_;
  EXPECT_EQ(GameNumber(2).result, kBlackWins);
  EXPECT_EQ(slurm_.submissions, 2);
}

TEST_F(PlayOnCluster, AGameThatALoadedFileDoesNotKnowToBeUnderWayIsAwaitedAllTheSame) {
  ASSERT_TRUE(file.Save(tourney, "/t/t.ini"));
  for (const int number : {1, 2})
    GameNumber(number).status = kNothingDone;
  ASSERT_TRUE(file.Save(tourney, "/t/before.ini"));
  tourney.ChangeSettings()->files_path = "/elsewhere\\";
  ASSERT_TRUE(file.Save(tourney, "/t/elsewhere.ini"));
  ASSERT_TRUE(file.Load(tourney, "/t/t.ini"));
  LetPass(seconds(5));
  ASSERT_TRUE(file.Load(tourney, "/t/elsewhere.ini"));
  SpoolRunningAgain(tourney, machine.files, running);
  EXPECT_EQ(GameNumber(1).status, kNothingDone) << "it is another tourney's";
  ASSERT_TRUE(file.Load(tourney, "/t/before.ini"));
  SpoolRunningAgain(tourney, machine.files, running);
  PutPgn(1, "1-0");
  slurm_.Set(1, "COMPLETED");
  LetPass(seconds(5));
  EXPECT_EQ(GameNumber(1).result, kWhiteWins);
  EXPECT_FALSE(machine.files.Has("/t/g1.left.PGN"));
}

TEST_F(PlayOnCluster, ACancelledGameIsUnknownAndTheMessageSaysWhatSlurmSays) {
  LetPass(seconds(5));
  slurm_.Set(1, "CANCELLED");
  LetPass(seconds(20));
  EXPECT_TRUE(GameNumber(1).IsReady());
  EXPECT_TRUE(GameNumber(1).LacksResult());
  EXPECT_TRUE(
      HasPrinted("Game 1: Alpha - Beta result not found, and therefore set to UNKNOWN.\n"
                 "Slurm says of its job 1: CANCELLED.\n"))
      << printed_;
  EXPECT_EQ(GameNumber(2).status, kSpooled);
  EXPECT_TRUE(tourney.Switch().IsRunning());
}

TEST_F(PlayOnCluster, ARefusedGameStaysToBePlayedAndTheRunnerStops) {
  slurm_.refusal = "sbatch: error: invalid partition specified: nope";
  LetPass(seconds(20));
  EXPECT_TRUE(
      HasPrinted("sbatch refuses game no. 1:\nsbatch: error: invalid partition specified: nope\n"
                 "Stopping runner. What was not begun stays to be played.\n"))
      << printed_;
  EXPECT_FALSE(tourney.Switch().IsRunning());
  EXPECT_EQ(GameNumber(1).status, kSpooled);
  EXPECT_EQ(GameNumber(2).status, kSpooled);
  EXPECT_FALSE(machine.files.Has("/t/g1.run"));
  EXPECT_TRUE(machine.files.Has("/t/g1.BAT"));
  EXPECT_TRUE(running.IsEmpty());
  slurm_.refusal.clear();
  tourney.ChangeSwitch()->SetRunning(true);
  LetPass(seconds(10));
  EXPECT_EQ(slurm_.jobs.size(), 2U);
}

TEST_F(PlayOnCluster, FiveCancelledGamesInARowStopTheRunner) {
  AddGames(4);
  SpoolAll(tourney, machine.files);
  for (int number = 1; number <= 5; ++number) {
    LetPass(seconds(10));
    slurm_.Set(number, "FAILED", "JobLaunchFailure");
  }
  LetPass(seconds(20));
  EXPECT_TRUE(HasPrinted("5 games in a row gave no sign of life or no record"));
  EXPECT_FALSE(tourney.Switch().IsRunning());
}

TEST_F(PlayOnCluster, TheNextStartTakesOverWhatQueuesAndPlaysAndCollectsWhatHasEnded) {
  LetPass(seconds(5));
  PutPgn(1, "1-0");
  slurm_.Set(1, "COMPLETED");
  slurm_.Set(2, "RUNNING");
  BeginAnew();
  LetPass(seconds(5));
  EXPECT_EQ(GameNumber(1).result, kWhiteWins);
  PutPgn(2, "0-1");
  slurm_.Set(2, "COMPLETED");
  LetPass(seconds(5));
  EXPECT_EQ(GameNumber(2).result, kBlackWins);
  EXPECT_EQ(slurm_.submissions, 2);
}

TEST_F(PlayOnCluster, AGameThatWasClaimedAndNeverSubmittedIsPlayedByTheNextStart) {
  slurm_.answers = false;
  LetPass(seconds(1));
  EXPECT_TRUE(machine.files.Has("/t/g1.run"));
  slurm_.answers = true;
  BeginAnew();
  LetPass(seconds(20));
  EXPECT_EQ(slurm_.submissions, 2) << printed_;
  PutPgn(1, "1-0");
  slurm_.Set(1, "COMPLETED");
  LetPass(seconds(5));
  EXPECT_EQ(GameNumber(1).result, kWhiteWins);
}

TEST_F(PlayOnCluster, AStartWithoutTheClusterLeavesItsGamesAloneAndSaysSo) {
  LetPass(seconds(5));
  slurm_.Set(1, "RUNNING");
  loop_.reset();
  Restart(2);
  printed_.clear();
  LetPass(seconds(20));
  EXPECT_TRUE(HasPrinted("Games that were handed to a scheduler: 2,\nthe first is game no. 1."))
      << printed_;
  EXPECT_FALSE(tourney.Switch().IsRunning());
  EXPECT_EQ(GameNumber(1).status, kSpooled);
  EXPECT_TRUE(machine.files.Has("/t/g1.run"));
  EXPECT_TRUE(machine.processes.Batches().empty()) << "nothing is played twice";
  tourney.ChangeSwitch()->SetRunning(true);
  LetPass(seconds(20));
  EXPECT_FALSE(tourney.Switch().IsRunning()) << "also when it is switched on again";
}

TEST_F(PlayOnCluster, AClaimOfAGameThatWasCollectedGoes) {
  LetPass(seconds(5));
  PutPgn(1, "1-0");
  slurm_.Set(1, "COMPLETED");
  const std::string claim = machine.files.Bytes("/t/g1.run");
  LetPass(seconds(5));
  machine.files.Put("/t/g1.run", claim);
  machine.files.MakeDirectory("/t/g1.place");
  BeginAnew();
  LetPass(seconds(5));
  EXPECT_FALSE(machine.files.Has("/t/g1.run"));
  EXPECT_FALSE(machine.files.Exists("/t/g1.place"));
  EXPECT_EQ(slurm_.submissions, 2);
}

TEST_F(PlayOnCluster, WithoutSbatchTheRunnerStopsAndNothingIsLost) {
  slurm_.has_sbatch = false;
  LetPass(seconds(20));
  EXPECT_TRUE(HasPrinted("sbatch refuses game no. 1:\n/bin/sh: 1: sbatch: not found\n"))
      << printed_;
  EXPECT_FALSE(tourney.Switch().IsRunning());
  EXPECT_EQ(GameNumber(1).status, kSpooled);
  EXPECT_EQ(GameNumber(2).status, kSpooled);
  slurm_.has_sbatch = true;
  tourney.ChangeSwitch()->SetRunning(true);
  LetPass(seconds(10));
  EXPECT_EQ(slurm_.jobs.size(), 2U);
}

TEST_F(PlayOnCluster, GarbageFromSqueueIsToldAndNothingIsLost) {
  LetPass(seconds(5));
  PutPgn(1, "1-0");
  PutPgn(2, "0-1");
  slurm_.Set(1, "COMPLETED");
  slurm_.Set(2, "COMPLETED");
  slurm_.garbage = "JOBID ST";
  LetPass(seconds(300));
  EXPECT_TRUE(HasPrinted("Slurm does not answer:\nsqueue tells 'JOBID ST'.")) << printed_;
  EXPECT_EQ(GameNumber(1).status, kSpooled);
  EXPECT_TRUE(tourney.Switch().IsRunning());
  slurm_.garbage.clear();
  LetPass(seconds(70));
  EXPECT_EQ(GameNumber(1).result, kWhiteWins);
  EXPECT_EQ(GameNumber(2).result, kBlackWins);
  EXPECT_EQ(slurm_.submissions, 2);
}

TEST_F(PlayOnCluster, AGameThatSlurmHasForgottenIsCollectedWithItsRecordOrToldOf) {
  LetPass(seconds(5));
  slurm_.Set(1, "RUNNING");
  slurm_.Set(2, "RUNNING");
  LetPass(seconds(5));
  PutPgn(1, "1-0");
  slurm_.Forget(1);
  slurm_.Forget(2);
  LetPass(seconds(200));
  EXPECT_EQ(GameNumber(1).result, kWhiteWins);
  EXPECT_TRUE(GameNumber(2).IsReady());
  EXPECT_TRUE(GameNumber(2).LacksResult());
  EXPECT_TRUE(HasPrinted("Slurm does not know its job 2 any more.\n")) << printed_;
}

TEST_F(PlayOnCluster, AGameWhoseNodeDoesNotSeeTheDirectoryIsToldOfAndCanBeReplayed) {
  LetPass(seconds(5));
  slurm_.Set(1, "FAILED", "NonZeroExitCode");
  LetPass(seconds(20));
  EXPECT_TRUE(
      HasPrinted("Slurm says of its job 1: FAILED (NonZeroExitCode).\n"
                 "It has left no '/t/g1.out': perhaps its node does not see that directory.\n"))
      << printed_;
  EXPECT_TRUE(GameNumber(1).LacksResult());
  EXPECT_TRUE(ReplayUnfinished(tourney, machine.files));
  LetPass(seconds(5));
  EXPECT_EQ(slurm_.submissions, 3);
}

TEST_F(PlayOnCluster, TheOpeningOfAGameReachesItsJobAlsoWhenThatIsTakenOver) {
  machine.files.Put("/o/book.pgn", "[Event \"A\"]\n1. e4 *\n[Event \"B\"]\n1. d4 *\n");
  std::string error;
  openings_ = Openings::Read(machine.files, "/o/book.pgn", error);
  ASSERT_EQ(error, "");
  BeginAnew();
  LetPass(seconds(5));
  const auto line_of = [this](int number) {
    std::vector<std::string> words = WordsOfJob(number);
    std::erase_if(words, [](const std::string& word) { return !word.starts_with("/lg"); });
    return words;
  };
  EXPECT_EQ(line_of(1), (std::vector<std::string>{"/lgf=/o/book.pgn", "/lgi=1"}));
  EXPECT_EQ(line_of(2), (std::vector<std::string>{"/lgf=/o/book.pgn", "/lgi=2"}));
  BeginAnew();
  LetPass(seconds(5));
  EXPECT_EQ(line_of(2), (std::vector<std::string>{"/lgf=/o/book.pgn", "/lgi=2"}));
  EXPECT_EQ(slurm_.submissions, 2);
}

TEST_F(PlayOnCluster, ATourneyThatTakesLongToSaveIsSavedLessOften) {
  int saves = 0;
  tourney.ChangeSettings()->auto_save = 1;
  file.SetName("/t/t.ini");
  file.SetBeforeSave([&](const Tourney&) {
    ++saves;
    machine.clock.Advance(seconds(2));
  });
  LetPass(seconds(5));
  ASSERT_EQ(saves, 1);
  PutPgn(1, "1-0");
  slurm_.Set(1, "COMPLETED");
  LetPass(seconds(10));
  EXPECT_EQ(GameNumber(1).result, kWhiteWins);
  EXPECT_EQ(saves, 1);
  EXPECT_TRUE(machine.files.Has("/t/g1.PGN")) << "the next start would collect it";
  LetPass(seconds(20));
  EXPECT_EQ(saves, 2);
  EXPECT_FALSE(machine.files.Has("/t/g1.PGN"));
}

}  // namespace
}  // namespace tarvendo
