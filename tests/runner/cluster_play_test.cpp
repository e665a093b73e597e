// A tourney that is played by Slurm: what its games' ends mean.

#include <gtest/gtest.h>

#include "fakes/fake_slurm.h"
#include "play/claim.h"
#include "play/cluster_host.h"
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
    loop_ = std::make_unique<PlayLoop>(room, *cluster_, play_pace_);
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

}  // namespace
}  // namespace tarvendo
