#include "play/cluster_host.h"

#include <gtest/gtest.h>

#include "fakes/captured_log.h"
#include "fakes/fake_slurm.h"
#include "play/claim.h"
#include "play/job_tries.h"
#include "play/place.h"

namespace tarvendo {
namespace {

using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::seconds;

constexpr const char* kClusterRecord = "[Result \"1-0\"]\n\n1. e4 1-0\n\n";

/// Three places on a Slurm of the test's, the tourney in "/t".
class Cluster : public ::testing::Test {
 protected:
  Cluster() {
    machine_.files.PutDirectory("/t");
    machine_.processes.on_aside = [this](const std::string& line) { return slurm_.Answer(line); };
    Restart();
  }

  void Restart() {
    host_.reset();
    host_ = std::make_unique<ClusterHost>(machine_.host, Pace(), ClusterPace(),
                                          SlurmOptions{"/opt/tarvendo", {}, 0}, 3, [] {});
  }

  GameOrder Order(int number) {
    GameOrder order;
    order.number = number;
    order.white = "Alpha";
    order.black = "Beta";
    const std::string stem = "/t/g" + std::to_string(number);
    order.batch_file = stem + ".BAT";
    order.pgn_file = stem + ".PGN";
    order.claim_file = stem + ".run";
    order.debug_file = host_->DebugFileFor("/t\\", number);
    return order;
  }

  void Start(int number) {
    machine_.files.Put(Order(number).batch_file, "@winboard.exe ");
    host_->Start(Order(number), MakeClaim(machine_.files, Order(number)));
  }

  /// What another process of the program would find.
  std::vector<GameOrder> Claims() {
    std::vector<GameOrder> orders;
    for (const FoundClaim& claim : FindClaims(machine_.files, "/t\\")) {
      EXPECT_TRUE(claim.is_held);
      orders.push_back(claim.order.value());
    }
    return orders;
  }

  /// Looks whenever the host asks for it, until `span` has passed. What ends meanwhile is kept.
  void PassTime(milliseconds span) {
    const TimePoint end = Now() + span;
    for (int looks = 0; looks < 10000; ++looks) {
      for (GameOutcome& outcome : host_->TakeEnded(Now()))
        outcomes_.push_back(std::move(outcome));
      for (const GameOrder& order : host_->TakeSilent(Now()))
        silent_.push_back(order);
      const auto next = host_->NextLook();
      if (!next || *next > end) break;
      if (*next > Now()) machine_.clock.Advance(*next - Now());
    }
    machine_.clock.Advance(end - Now());
  }

  void PlayTo(int number, const std::string& state, const std::string& reason = "None") {
    machine_.files.Put("/t/g" + std::to_string(number) + ".PGN", kClusterRecord);
    slurm_.Set(number, state, reason);
  }

  bool Printed(const std::string& text) {
    printed_ += machine_.TakeOutput();
    return printed_.find(text) != std::string::npos;
  }

  TimePoint Now() { return machine_.clock.Steady(); }

  CapturedLog machine_;
  FakeSlurm slurm_;
  std::unique_ptr<ClusterHost> host_;
  std::vector<GameOutcome> outcomes_;
  std::vector<GameOrder> silent_;
  std::string printed_;
};

TEST_F(Cluster, AGameIsAJobWhoseRecordIsCollectedWhenItHasEnded) {
  Start(1);
  PassTime(seconds(10));
  ASSERT_EQ(slurm_.jobs.size(), 1U);
  EXPECT_EQ(slurm_.jobs[0].play, "exec '/opt/tarvendo' --play '/t/g1.run'");
  EXPECT_EQ(slurm_.jobs[0].output, "/t/g1.out");
  EXPECT_EQ(host_->FreeSlots(), 2);
  slurm_.Set(1, "RUNNING");
  PassTime(minutes(10));
  EXPECT_TRUE(outcomes_.empty());
  PlayTo(1, "COMPLETED");
  PassTime(seconds(3));
  ASSERT_EQ(outcomes_.size(), 1U);
  EXPECT_EQ(outcomes_[0].end, GameEnd::kEnded);
  EXPECT_EQ(outcomes_[0].pgn, kClusterRecord);
  EXPECT_EQ(outcomes_[0].reason, "");
  EXPECT_EQ(host_->FreeSlots(), 3);
  EXPECT_FALSE(host_->NextLook());
}

TEST_F(Cluster, TheClaimNamesTheJobOnTheDiskBeforeItIsSubmitted) {
  std::vector<std::string> changes;
  std::string claim;
  machine_.processes.on_aside = [&](const std::string& line) {
    if (changes.empty()) {
      changes = machine_.files.Changes();
      claim = machine_.files.Bytes("/t/g1.run");
      EXPECT_TRUE(machine_.files.IsLocked("/t/g1.run")) << "as long as sbatch runs";
    }
    return slurm_.Answer(line);
  };
  Start(1);
  EXPECT_NE(claim.find("\njob " + slurm_.jobs.at(0).name + "\n"), std::string::npos) << claim;
  EXPECT_NE(std::find(changes.begin(), changes.end(), "sync /t/g1.run"), changes.end());
  EXPECT_NE(std::find(changes.begin(), changes.end(), "sync names of /t"), changes.end());
  PassTime(seconds(1));
  EXPECT_FALSE(machine_.files.IsLocked("/t/g1.run")) << "ten thousand locks are too many";
  EXPECT_TRUE(IsBeingPlayed(machine_.files, "/t/g1.PGN"));
}

TEST_F(Cluster, SlurmIsAskedForAllJobsTogetherEveryTwoSeconds) {
  for (int number = 1; number <= 3; ++number)
    Start(number);
  PassTime(seconds(1));
  const int calls = slurm_.Calls();
  PassTime(seconds(60));
  EXPECT_LE(slurm_.Calls() - calls, 31);
  EXPECT_GE(slurm_.Calls() - calls, 29);
}

TEST_F(Cluster, SlurmIsAskedLessOftenWhenItAnswersSlowly) {
  Start(1);
  PassTime(seconds(5));
  BatchId question = 0;
  int questions = 0;
  TimePoint asked;
  machine_.processes.on_aside = [&](const std::string& line) {
    auto answer = slurm_.Answer(line);
    answer->has_ended = false;
    question = machine_.processes.LastBatch();
    asked = Now();
    ++questions;
    return answer;
  };
  for (int second = 0; second < 120; ++second) {
    PassTime(seconds(1));
    if (Now() >= asked + seconds(4)) machine_.processes.EndOf(question);
  }
  EXPECT_LE(questions, 7);
  EXPECT_GE(questions, 4);
}

TEST_F(Cluster, AJobThatWasCancelledIsCollectedAsItIsWithWhatSlurmSays) {
  Start(1);
  Start(2);
  PassTime(seconds(5));
  slurm_.Set(1, "CANCELLED");
  slurm_.Set(2, "TIMEOUT", "TimeLimit");
  machine_.files.Put("/t/g2.out", "slurmstepd: CANCELLED DUE TO TIME LIMIT\n");
  PassTime(seconds(20));
  ASSERT_EQ(outcomes_.size(), 2U);
  EXPECT_EQ(outcomes_[0].end, GameEnd::kEnded);
  EXPECT_FALSE(outcomes_[0].pgn);
  EXPECT_EQ(outcomes_[0].reason, "Slurm says of its job 1: CANCELLED.\n");
  EXPECT_EQ(outcomes_[1].reason,
            "Slurm says of its job 2: TIMEOUT (TimeLimit).\nSee '/t/g2.out'.\n");
}

TEST_F(Cluster, ARecordThatTheDirectoryShowsLateIsAwaited) {
  Start(1);
  PassTime(seconds(5));
  slurm_.Set(1, "COMPLETED");
  PassTime(seconds(70));
  EXPECT_TRUE(outcomes_.empty());
  machine_.files.Put("/t/g1.PGN", kClusterRecord);
  PassTime(seconds(2));
  ASSERT_EQ(outcomes_.size(), 1U);
  EXPECT_EQ(outcomes_[0].pgn, kClusterRecord);
}

TEST_F(Cluster, ARecordIsNotAwaitedForEver) {
  Start(1);
  PassTime(seconds(5));
  slurm_.Set(1, "COMPLETED");
  PassTime(seconds(100));
  ASSERT_EQ(outcomes_.size(), 1U);
  EXPECT_FALSE(outcomes_[0].pgn);
  EXPECT_EQ(outcomes_[0].reason, "Slurm says of its job 1: COMPLETED.\n");
}

TEST_F(Cluster, AJobWhoseNodeDoesNotSeeTheDirectoryIsToldOf) {
  Start(1);
  PassTime(seconds(5));
  slurm_.Set(1, "FAILED", "JobLaunchFailure");
  PassTime(seconds(20));
  ASSERT_EQ(outcomes_.size(), 1U);
  EXPECT_EQ(outcomes_[0].reason,
            "Slurm says of its job 1: FAILED (JobLaunchFailure).\n"
            "It has left no '/t/g1.out': perhaps its node does not see that directory.\n");
}

TEST_F(Cluster, AJobThatStillClearsItsNodeIsOverWhenItsRecordIsThere) {
  Start(1);
  PassTime(seconds(5));
  slurm_.Set(1, "COMPLETING");
  PassTime(minutes(5));
  EXPECT_TRUE(outcomes_.empty());
  machine_.files.Put("/t/g1.PGN", kClusterRecord);
  PassTime(seconds(3));
  EXPECT_EQ(outcomes_.size(), 1U);
}

TEST_F(Cluster, AJobThatIsQueuedAgainGoesOn) {
  Start(1);
  PassTime(seconds(5));
  for (const char* state : {"RUNNING", "COMPLETING", "PENDING", "REQUEUED", "RUNNING"}) {
    slurm_.Set(1, state);
    PassTime(minutes(1));
  }
  EXPECT_TRUE(outcomes_.empty());
  EXPECT_EQ(slurm_.submissions, 1);
}

TEST_F(Cluster, AJobThatIsQueuedAgainThoughItsGameHasEndedIsCollected) {
  Start(1);
  PassTime(seconds(5));
  slurm_.Set(1, "RUNNING");
  PassTime(seconds(5));
  PlayTo(1, "PENDING", "JobHeldAdmin");
  PassTime(seconds(65));
  ASSERT_EQ(outcomes_.size(), 1U);
  EXPECT_EQ(outcomes_[0].end, GameEnd::kEnded);
  EXPECT_EQ(outcomes_[0].pgn, kClusterRecord);
}

TEST_F(Cluster, ASchedulerThatDoesNotAnswerIsToldOfOnceAndAwaited) {
  Start(1);
  PassTime(seconds(5));
  slurm_.answers = false;
  Start(2);
  PassTime(minutes(10));
  EXPECT_TRUE(
      Printed("Slurm does not answer:\nslurm_load_jobs error: Unable to contact slurm "
              "controller (connect failure)\n"));
  EXPECT_EQ(printed_.find("not answer", printed_.find("not answer") + 1), std::string::npos)
      << printed_;
  EXPECT_TRUE(host_->FindObstacle("/t\\", Now())) << "no game is begun meanwhile";
  EXPECT_TRUE(outcomes_.empty());
  slurm_.answers = true;
  PassTime(seconds(70));
  EXPECT_TRUE(Printed("Slurm answers again."));
  EXPECT_FALSE(host_->FindObstacle("/t\\", Now()));
  EXPECT_EQ(slurm_.jobs.size(), 2U) << "what could not be submitted then is submitted now";
  PlayTo(1, "COMPLETED");
  PlayTo(2, "COMPLETED");
  PassTime(seconds(3));
  EXPECT_EQ(outcomes_.size(), 2U);
}

TEST_F(Cluster, GarbageFromSqueueEndsNoGame) {
  Start(1);
  PassTime(seconds(5));
  slurm_.garbage = "\x01\xff garbage";
  PassTime(minutes(10));
  EXPECT_TRUE(Printed("Slurm does not answer:\nsqueue tells '\x01\xff garbage'."));
  EXPECT_TRUE(outcomes_.empty());
  slurm_.garbage.clear();
  PlayTo(1, "COMPLETED");
  PassTime(seconds(70));
  EXPECT_EQ(outcomes_.size(), 1U);
}

TEST_F(Cluster, AnAnswerThatBreaksOffEndsNoGame) {
  Start(1);
  PassTime(seconds(5));
  slurm_.says_half = true;
  slurm_.jobs.clear();
  PassTime(minutes(10));
  EXPECT_TRUE(Printed("squeue has told nothing that is whole."));
  EXPECT_TRUE(outcomes_.empty());
}

TEST_F(Cluster, ACommandThatHangsIsToldOfAfterAMinuteAndEndedAfterTen) {
  Start(1);
  PassTime(seconds(5));
  slurm_.commands_end = false;
  PassTime(seconds(60));
  EXPECT_FALSE(Printed("Slurm does not answer"));
  PassTime(seconds(3));
  EXPECT_TRUE(Printed("Slurm does not answer:\nsqueue has told nothing for a minute.\n"));
  const int calls = slurm_.Calls();
  PassTime(minutes(8));
  EXPECT_EQ(slurm_.Calls(), calls) << "one that hangs is enough";
  EXPECT_TRUE(machine_.processes.EndedBatches().empty());
  PassTime(minutes(2));
  EXPECT_EQ(machine_.processes.EndedBatches().size(), 1U);
}

TEST_F(Cluster, AJobThatSlurmHasForgottenIsCollectedAsItIs) {
  Start(1);
  Start(2);
  PassTime(seconds(5));
  machine_.files.Put("/t/g1.PGN", kClusterRecord);
  slurm_.Set(2, "RUNNING");
  PassTime(seconds(3));
  slurm_.Forget(1);
  slurm_.Forget(2);
  PassTime(seconds(10));
  ASSERT_EQ(outcomes_.size(), 1U);
  EXPECT_EQ(outcomes_[0].pgn, kClusterRecord);
  PassTime(minutes(2));
  ASSERT_EQ(outcomes_.size(), 2U);
  EXPECT_FALSE(outcomes_[1].pgn);
  EXPECT_EQ(outcomes_[1].reason.find("Slurm does not know its job 2 any more.\n"), 0U);
}

TEST_F(Cluster, AJobThatASchedulerHasLostBeforeItBeganIsGivenBack) {
  Start(1);
  PassTime(seconds(5));
  slurm_.jobs.clear();
  PassTime(minutes(2));
  ASSERT_EQ(outcomes_.size(), 1U);
  EXPECT_EQ(outcomes_[0].end, GameEnd::kNeverBegun);
}

TEST_F(Cluster, WithoutSbatchTheGameIsGivenBackAtOnce) {
  slurm_.has_sbatch = false;
  Start(1);
  Start(2);
  PassTime(seconds(5));
  ASSERT_EQ(outcomes_.size(), 2U);
  EXPECT_EQ(outcomes_[0].end, GameEnd::kRefused);
  EXPECT_EQ(outcomes_[0].reason, "sbatch refuses game no. 1:\n/bin/sh: 1: sbatch: not found\n");
  EXPECT_EQ(outcomes_[1].end, GameEnd::kNeverBegun) << "it was not even tried";
  EXPECT_FALSE(host_->NextLook());
}

TEST_F(Cluster, AGameThatSbatchRefusesTwiceIsGivenBack) {
  slurm_.refusal = "sbatch: error: invalid partition specified: nope";
  Start(1);
  Start(2);
  PassTime(seconds(10));
  ASSERT_EQ(outcomes_.size(), 2U);
  EXPECT_EQ(outcomes_[0].end, GameEnd::kRefused);
  EXPECT_EQ(outcomes_[0].reason,
            "sbatch refuses game no. 1:\nsbatch: error: invalid partition specified: nope\n");
  EXPECT_EQ(outcomes_[1].end, GameEnd::kNeverBegun);
  EXPECT_EQ(slurm_.submissions, 0);
  outcomes_.clear();
  Start(3);
  PassTime(seconds(10));
  ASSERT_EQ(outcomes_.size(), 1U);
  EXPECT_EQ(outcomes_[0].end, GameEnd::kRefused) << "told anew at the next start";
}

TEST_F(Cluster, AGameThatSbatchRefusesWhileOthersPlayWaitsForTheirEnd) {
  Start(1);
  PassTime(seconds(5));
  slurm_.refusal = "sbatch: error: job submit limit";
  Start(2);
  PassTime(seconds(10));
  EXPECT_TRUE(
      Printed("sbatch refuses game no. 2:\nsbatch: error: job submit limit\n"
              "It is tried again when a game has ended.\n"));
  EXPECT_TRUE(host_->FindObstacle("/t\\", Now()));
  EXPECT_TRUE(outcomes_.empty());
  slurm_.refusal.clear();
  PlayTo(1, "COMPLETED");
  PassTime(seconds(5));
  EXPECT_EQ(outcomes_.size(), 1U);
  EXPECT_EQ(slurm_.submissions, 2);
}

TEST_F(Cluster, ASubmissionThatOnlySeemsToFailIsNotMadeTwice) {
  slurm_.loses_answers = true;
  Start(1);
  PassTime(seconds(30));
  EXPECT_EQ(slurm_.submissions, 1);
  PlayTo(1, "COMPLETED");
  PassTime(seconds(5));
  ASSERT_EQ(outcomes_.size(), 1U);
  EXPECT_EQ(outcomes_[0].end, GameEnd::kEnded);
}

TEST_F(Cluster, AGameWhoseClaimCannotBeWrittenIsNotSubmitted) {
  machine_.files.Put("/t/g1.BAT", "@winboard.exe ");
  auto claim = MakeClaim(machine_.files, Order(1));
  machine_.files.FailFrom(FileOperation::kSync, 1);
  host_->Start(Order(1), std::move(claim));
  PassTime(seconds(5));
  ASSERT_EQ(outcomes_.size(), 1U);
  EXPECT_EQ(outcomes_[0].end, GameEnd::kRefused);
  EXPECT_NE(outcomes_[0].reason.find("beside '/t/g1.run' cannot be read or written"),
            std::string::npos);
  EXPECT_EQ(slurm_.submissions, 0);
}

TEST_F(Cluster, AnotherStartAdoptsWhatQueuesAndPlaysAndCollectsWhatHasEnded) {
  for (int number = 1; number <= 3; ++number)
    Start(number);
  PassTime(seconds(5));
  PlayTo(1, "COMPLETED");
  slurm_.Set(2, "RUNNING");
  Restart();
  host_->Adopt(Claims());
  EXPECT_EQ(host_->FreeSlots(), 0);
  PassTime(seconds(5));
  ASSERT_EQ(outcomes_.size(), 1U);
  EXPECT_EQ(outcomes_[0].order.number, 1);
  PlayTo(2, "COMPLETED");
  PlayTo(3, "COMPLETED");
  PassTime(seconds(5));
  EXPECT_EQ(outcomes_.size(), 3U);
  EXPECT_EQ(slurm_.submissions, 3);
}

TEST_F(Cluster, AGameThatWasClaimedAndNeverSubmittedIsGivenBack) {
  slurm_.answers = false;
  Start(1);
  Restart();
  slurm_.answers = true;
  host_->Adopt(Claims());
  PassTime(seconds(10));
  ASSERT_EQ(outcomes_.size(), 1U);
  EXPECT_EQ(outcomes_[0].end, GameEnd::kNeverBegun);
  EXPECT_EQ(slurm_.submissions, 0);
}

TEST_F(Cluster, AGameThatAKilledProcessIsStillSubmittingIsAwaited) {
  slurm_.commands_end = false;
  Start(1);
  slurm_.jobs.clear();  // sbatch has not come so far yet
  Restart();
  slurm_.commands_end = true;
  host_->Adopt(Claims());
  PassTime(minutes(1));
  EXPECT_TRUE(outcomes_.empty()) << "its sbatch holds the claim";
  slurm_.jobs.push_back({9, Claims()[0].job, "RUNNING", "None", "", "", {}});
  machine_.processes.EndOf(1);
  PassTime(minutes(1));
  EXPECT_TRUE(outcomes_.empty());
  PlayTo(1, "COMPLETED");
  PassTime(seconds(5));
  EXPECT_EQ(outcomes_.size(), 1U);
}

TEST_F(Cluster, AJobThatRanAndWasForgottenWhileTheProgramWasAwayIsNotPlayedAgain) {
  Start(1);
  Start(2);
  PassTime(seconds(5));
  slurm_.jobs.clear();
  machine_.files.Put("/t/g1.PGN", kClusterRecord);
  machine_.files.Put("/t/g2.out", "killed\n");
  Restart();
  host_->Adopt(Claims());
  PassTime(minutes(3));
  ASSERT_EQ(outcomes_.size(), 2U);
  EXPECT_EQ(outcomes_[0].pgn, kClusterRecord);
  EXPECT_EQ(outcomes_[1].end, GameEnd::kEnded);
  EXPECT_FALSE(outcomes_[1].pgn);
}

TEST_F(Cluster, AGameThatPlaysOnThisMachineSinceAnEarlierStartIsWatchedToo) {
  GameOrder order = Order(5);
  machine_.files.HoldLock("/t/g5.run", "winboard");
  machine_.files.Put(order.debug_file, "one\ntwo\nthree\nfour\nfive\n");
  host_->Adopt({order});
  EXPECT_EQ(host_->FreeSlots(), 2);
  machine_.files.PutMore(order.debug_file, "GameEnds(27, White mates, 6)\n");
  machine_.files.Put("/t/g5.PGN", kClusterRecord);
  machine_.files.EndProcess("winboard");
  PassTime(seconds(30));
  ASSERT_EQ(outcomes_.size(), 1U);
  EXPECT_EQ(outcomes_[0].pgn, kClusterRecord);
  EXPECT_EQ(slurm_.Calls(), 0);
}

TEST_F(Cluster, AQueuedJobIsNotSilentAndOneThatRunsIsToldOfAfterHalfAnHour) {
  Start(1);
  PassTime(minutes(40));
  EXPECT_TRUE(silent_.empty());
  slurm_.Set(1, "RUNNING");
  PassTime(seconds(5));
  const JobTry job_try = TryOf(Order(1), 1, 0);
  MakeTry(machine_.files, job_try);
  machine_.files.Put(job_try.DebugFile(), "a line\n");
  PassTime(minutes(25));
  EXPECT_TRUE(silent_.empty());
  PassTime(minutes(15));
  ASSERT_EQ(silent_.size(), 1U);
  EXPECT_EQ(silent_[0].debug_file, job_try.DebugFile());
  PassTime(minutes(40));
  EXPECT_EQ(silent_.size(), 1U) << "once for each silence";
}

TEST_F(Cluster, ThePlaceOfAGameGoesWithAllItsTriesAndTheLastOnesReasonsAreKept) {
  Start(1);
  PassTime(seconds(5));
  const GameOrder order = Claims().at(0);
  for (const int restarts : {0, 1, 10}) {
    const JobTry job_try = TryOf(order, 1, restarts);
    MakeTry(machine_.files, job_try);
    machine_.files.Put(job_try.PgnFile(order), "half");
    machine_.files.Put(job_try.DebugFile(), "try " + std::to_string(restarts));
    machine_.files.Put(job_try.ErrorFile(order), "reason " + std::to_string(restarts));
  }
  machine_.files.Put("/t/g1.out", "");
  slurm_.Set(1, "NODE_FAIL");
  PassTime(seconds(20));
  ASSERT_EQ(outcomes_.size(), 1U);
  EXPECT_FALSE(outcomes_[0].pgn) << "a half-written record counts for nothing";
  EXPECT_EQ(machine_.files.Bytes("/t/g1.err"), "reason 10");
  EXPECT_EQ(machine_.files.Bytes(order.debug_file), "try 10");
  EXPECT_FALSE(machine_.files.Has("/t/g1.out")) << "a job that said nothing";
  RemovePlace(machine_.files, order);
  machine_.files.Remove("/t/g1.err");
  machine_.files.Remove("/t/g1.run");
  machine_.files.Remove("/t/g1.BAT");
  EXPECT_TRUE(machine_.files.FileNames().empty()) << machine_.files.FileNames().front();
  EXPECT_FALSE(machine_.files.Exists("/t/g1.place"));
}

TEST_F(Cluster, ThousandsOfGamesAreHandedOnInSmallGroups) {
  host_ = std::make_unique<ClusterHost>(machine_.host, Pace(), ClusterPace(),
                                        SlurmOptions{"/opt/tarvendo", {}, 0}, 10000, [] {});
  slurm_.commands_end = false;
  int started = 0;
  while (!host_->FindObstacle("/t\\", Now()))
    Start(++started);
  EXPECT_LE(started, 20);
  EXPECT_FALSE(host_->FindObstacle("/t\\", Now())->tell_at) << "nobody needs to hear of that";
}

TEST_F(Cluster, FurtherWordsGoToSbatch) {
  slurm_.known_words = {"--exclusive", "--comment=a b"};
  host_ = std::make_unique<ClusterHost>(
      machine_.host, Pace(), ClusterPace(),
      SlurmOptions{"/opt/tarvendo", SplitSlurmWords("--exclusive --comment='a b'"), 30}, 3, [] {});
  Start(1);
  ASSERT_EQ(slurm_.jobs.size(), 1U);
  EXPECT_EQ(slurm_.jobs[0].further, (std::vector<std::string>{"--exclusive", "--comment=a b"}));
  EXPECT_EQ(slurm_.jobs[0].play, "exec '/opt/tarvendo' --play '/t/g1.run' --patience 30");
}

}  // namespace
}  // namespace tarvendo
