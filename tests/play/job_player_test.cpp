#include "play/job_player.h"

#include <gtest/gtest.h>

#include "fakes/captured_log.h"
#include "platform/batch_plan.h"
#include "play/claim.h"
#include "play/job_tries.h"

namespace tarvendo {
namespace {

using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::seconds;

/// Job 12 of game 7, on a node that sees the tourney in "/t". The test plays WinBoard: it is called
/// in every wait of the job.
class PlayedJob : public ::testing::Test {
 protected:
  PlayedJob() {
    machine_.files.PutDirectory("/t");
    order_.number = 7;
    order_.white = "Alpha";
    order_.black = "Beta";
    order_.batch_file = "/t/g7.BAT";
    order_.pgn_file = "/t/g7.PGN";
    order_.debug_file = "/t/g7.place/winboard.debug";
    order_.claim_file = "/t/g7.run";
    order_.job = "tarvendo-t-1f3a9c-g7-1";
    PutClaim();
    machine_.files.Put("/t/g7.place/g7.BAT",
                       "@rem Round 1\n"
                       "@if NOT EXIST /t\\g7.PGN winboard.exe /cp /sgf=/t\\g7.PGN /fcp='a b' "
                       "/debugfile=mine /debug\n");
    machine_.processes.on_steps = [this](const std::vector<BatchStep>& steps) {
      steps_ = steps;
      batch_ = machine_.processes.LastBatch();
      if (on_start_) on_start_();
      return starts_;
    };
    machine_.clock.on_wait = [this](milliseconds) {
      if (on_wait_) on_wait_();
    };
  }

  void PutClaim() { machine_.files.Put("/t/g7.run", ClaimText(order_)); }

  JobEnd Play(int restarts = 0) {
    return PlayJob(machine_.host, {order_.job, 12, restarts}, "/t/g7.run", pace_,
                   [this](const std::string& text) { said_ += text; });
  }

  JobTry Try(int restarts = 0) { return TryOf(order_, 12, restarts); }

  /// WinBoard plays the game and ends.
  void PlayGame(int restarts = 0) {
    machine_.files.Put(Try(restarts).DebugFile(), "GameEnds(27, White mates, 6)\n");
    machine_.files.Put(Try(restarts).PgnFile(order_), "the record\n");
    EndWinBoard();
  }
  void EndWinBoard() { machine_.processes.EndOf(batch_); }

  bool Said(const std::string& text) const { return said_.find(text) != std::string::npos; }

  CapturedLog machine_;
  GameOrder order_;
  JobPace pace_;
  std::vector<BatchStep> steps_;
  BatchId batch_ = 0;
  bool starts_ = true;
  std::function<void()> on_start_;
  std::function<void()> on_wait_;
  std::string said_;
};

TEST_F(PlayedJob, PlaysTheBatchFileInADirectoryOfItsOwnAndNamesTheRecordWhenWinBoardHasEnded) {
  on_start_ = [&] {
    EXPECT_EQ(machine_.files.CurrentDirectory(), "/t");
    PlayGame();
    EXPECT_FALSE(machine_.files.Has("/t/g7.PGN"));
  };
  EXPECT_EQ(Play(), JobEnd::kRecorded);
  EXPECT_EQ(machine_.files.Bytes("/t/g7.PGN"), "the record\n");
  EXPECT_EQ(said_, "") << "nothing to tell";
  ASSERT_EQ(steps_.size(), 1U);
  EXPECT_EQ(steps_[0].words,
            (std::vector<std::string>{"winboard.exe", "/cp", "/sgf=/t/g7.place/try-12-0/g7.PGN",
                                      "/fcp=a b", "/debug",
                                      "/debugfile=/t/g7.place/try-12-0/winboard.debug"}));
  EXPECT_EQ(steps_[0].conditions.at(0).path, "/t\\g7.PGN");
}

TEST_F(PlayedJob, HasTheRecordOnTheDiskBeforeItGetsItsName) {
  on_start_ = [&] { PlayGame(); };
  Play();
  const std::vector<std::string> changes = machine_.files.Changes();
  const auto at = [&](const std::string& change) {
    return std::find(changes.begin(), changes.end(), change) - changes.begin();
  };
  EXPECT_LT(at("sync /t/g7.place/try-12-0/g7.PGN"),
            at("rename /t/g7.place/try-12-0/g7.PGN /t/g7.PGN"));
  EXPECT_LT(at("rename /t/g7.place/try-12-0/g7.PGN /t/g7.PGN"),
            static_cast<std::ptrdiff_t>(changes.size()));
}

TEST_F(PlayedJob, ThatIsQueuedAgainStartsFromNothing) {
  MakeTriesDirectory(machine_.files, order_);
  MakeTry(machine_.files, Try(0));
  machine_.files.Put(Try(0).PgnFile(order_), "half a rec");
  on_start_ = [&] { PlayGame(1); };
  EXPECT_EQ(Play(1), JobEnd::kRecorded);
  EXPECT_EQ(machine_.files.Bytes("/t/g7.PGN"), "the record\n");
}

TEST_F(PlayedJob, OnALostMachineDoesNotNameItsRecordWhenTheGameIsPlayedAgain) {
  on_start_ = [&] {
    MakeTry(machine_.files, Try(1));
    PlayGame();
  };
  EXPECT_EQ(Play(), JobEnd::kNotPlayed);
  EXPECT_FALSE(machine_.files.Has("/t/g7.PGN"));
  EXPECT_TRUE(Said("the game is not awaited any more"));
}

TEST_F(PlayedJob, OfAGameThatWasCollectedMeanwhileDoesNotNameItsRecord) {
  on_start_ = [&] {
    order_.job = "another";
    PutClaim();
    order_.job = "tarvendo-t-1f3a9c-g7-1";
    PlayGame();
  };
  EXPECT_EQ(Play(), JobEnd::kNotPlayed);
  EXPECT_FALSE(machine_.files.Has("/t/g7.PGN"));
}

TEST_F(PlayedJob, DoesNotPlayAGameAgainWhoseRecordAnEarlierTryHasNamed) {
  machine_.files.Put("/t/g7.PGN", "of try 0\n");
  on_start_ = [&] { ADD_FAILURE() << "played"; };
  EXPECT_EQ(Play(1), JobEnd::kRecorded);
  EXPECT_EQ(machine_.files.Bytes("/t/g7.PGN"), "of try 0\n");
}

TEST_F(PlayedJob, AwaitsAClaimThatTheDirectoryShowsLate) {
  machine_.files.Remove("/t/g7.run");
  int waits = 0;
  on_wait_ = [&] {
    if (++waits == 50) PutClaim();
  };
  on_start_ = [&] { PlayGame(); };
  EXPECT_EQ(Play(), JobEnd::kRecorded);
}

TEST_F(PlayedJob, PlaysNothingWithoutAClaimThatNamesIt) {
  for (const bool is_there : {false, true}) {
    machine_.files.Remove("/t/g7.run");
    if (is_there) machine_.files.Put("/t/g7.run", ClaimText(GameOrder()));
    said_.clear();
    on_start_ = [&] { ADD_FAILURE() << "played"; };
    EXPECT_EQ(Play(), JobEnd::kNotPlayed);
    EXPECT_TRUE(Said("the claim '/t/g7.run' or its batch file is not there")) << said_;
  }
}

TEST_F(PlayedJob, PlaysNothingInADirectoryThatCannotBeWritten) {
  machine_.files.FailFrom(FileOperation::kMakeDirectory, 1);
  on_start_ = [&] { ADD_FAILURE() << "played"; };
  EXPECT_EQ(Play(), JobEnd::kNotPlayed);
  EXPECT_TRUE(Said("cannot make the directory '/t/g7.place"));
}

TEST_F(PlayedJob, ThatLeavesNoRecordSaysSoAndIsNotTakenForOneThatEndedWell) {
  on_start_ = [&] { EndWinBoard(); };
  EXPECT_EQ(Play(), JobEnd::kNoRecord);
  EXPECT_TRUE(Said("WinBoard has left no record"));
  said_.clear();
  on_start_ = [&] {
    machine_.files.Put(Try(1).PgnFile(order_), "");
    EndWinBoard();
  };
  EXPECT_EQ(Play(1), JobEnd::kNoRecord) << "an empty one is none";
}

TEST_F(PlayedJob, WhoseProcessCannotBeStartedSaysSo) {
  starts_ = false;
  EXPECT_EQ(Play(), JobEnd::kNotPlayed);
  EXPECT_TRUE(Said("cannot start a process"));
}

TEST_F(PlayedJob, WhoseRecordCannotBeNamedSaysSo) {
  on_start_ = [&] { PlayGame(); };
  machine_.files.FailFrom(FileOperation::kRename, 1);
  EXPECT_EQ(Play(), JobEnd::kNoRecord);
  EXPECT_TRUE(Said("cannot write '/t/g7.PGN'"));
}

TEST_F(PlayedJob, EndsAGameThatIsSilentForTooLongAndKeepsWhatItHasLeft) {
  pace_.patience = minutes(3);
  int waits = 0;
  on_wait_ = [&] {
    if (++waits > 10000) EndWinBoard();
    // It shows a sign of life in the first minute.
    if (waits <= 60) machine_.files.PutMore(Try().DebugFile(), "a line\n");
  };
  on_start_ = [&] { machine_.files.Put(Try().PgnFile(order_), "as far as it went\n"); };
  const TimePoint start = machine_.clock.Steady();
  EXPECT_EQ(Play(), JobEnd::kRecorded);
  EXPECT_GE(machine_.clock.Steady() - start, seconds(230));
  EXPECT_LE(machine_.clock.Steady() - start, seconds(250));
  EXPECT_EQ(machine_.processes.EndedBatches(), std::vector<BatchId>{batch_});
  EXPECT_EQ(machine_.files.Bytes("/t/g7.PGN"), "as far as it went\n");
  EXPECT_EQ(machine_.files.Bytes(Try().ErrorFile(order_)),
            "tarvendo --play: the debug file told nothing for 3 minutes, the game was ended\n");
}

TEST_F(PlayedJob, WaitsForAnEndlessGameWithoutPatienceAndWithoutWakingUp) {
  on_wait_ = [&] { EndWinBoard(); };
  Play();
  EXPECT_LE(machine_.clock.Waits().size(), 2U);
}

}  // namespace
}  // namespace tarvendo
