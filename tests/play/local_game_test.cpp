#include "play/local_game.h"

#include <gtest/gtest.h>

#include "fakes/captured_log.h"
#include "play/claim.h"

namespace tarvendo {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr const char* kHeader = "one\ntwo\nthree\nfour\nfive\n";
constexpr const char* kBlackMates = "GameEnds(27, Black mates, 6)\n";
constexpr const char* kRecord = "[Result \"0-1\"]\n\n1. f3 0-1\n\n";

/// Game 7 on a machine of memory. The test moves the time and lets WinBoard write.
class OneGame : public ::testing::Test {
 protected:
  OneGame() {
    machine_.files.MakeDirectory("/t");
    machine_.files.Put("/t/g7.BAT", "@rem Round 1\n@winboard.exe ");
    order_.number = 7;
    order_.white = "Alpha";
    order_.black = "Beta";
    order_.batch_file = "/t/g7.BAT";
    order_.pgn_file = "/t/g7.PGN";
    order_.debug_file = "/t/winboard.debug";
    order_.claim_file = "/t/g7.run";
  }

  void Start() {
    game_ = std::make_unique<LocalGame>(machine_.host, pace_, order_, [this] { ++news_; });
    game_->Start(now_, MakeClaim(machine_.files, order_));
  }

  void Adopt() {
    game_ = std::make_unique<LocalGame>(machine_.host, pace_, order_, [] {});
    game_->Adopt(now_);
  }

  /// Steps whenever the game asks for it, until `span` has passed or it is over.
  bool PassTime(milliseconds span) {
    const TimePoint end = now_ + span;
    while (!game_->Step(now_)) {
      if (game_->NextStep() > end) {
        now_ = end;
        return game_->Step(now_);
      }
      EXPECT_GT(game_->NextStep(), now_) << "a step that asks for another at once";
      now_ = game_->NextStep();
      ++steps_;
    }
    return true;
  }

  void WriteDebug(const std::string& text) {
    machine_.files.PutMore("/t/winboard.debug", text);
    machine_.watches.Notify("/t/winboard.debug");
  }
  void WriteRecord() { machine_.files.Put("/t/g7.PGN", kRecord); }

  GameEnd End() { return game_->TakeOutcome().end; }

  CapturedLog machine_;
  Pace pace_;
  GameOrder order_;
  TimePoint now_{milliseconds(1000000)};
  std::unique_ptr<LocalGame> game_;
  int news_ = 0;
  int steps_ = 0;
};

TEST_F(OneGame, IsOverWhenItsDebugFileTellsTheEndAndItsRecordIsThere) {
  Start();
  WriteDebug(kHeader);
  EXPECT_FALSE(PassTime(seconds(30)));
  WriteRecord();
  WriteDebug(kBlackMates);
  EXPECT_TRUE(PassTime(seconds(2)));
  const GameOutcome outcome = game_->TakeOutcome();
  EXPECT_EQ(outcome.end, GameEnd::kEnded);
  EXPECT_EQ(outcome.pgn, kRecord);
  EXPECT_TRUE(IsSameGame(outcome.order, order_));
}

TEST_F(OneGame, HasTenSecondsToShowASign) {
  Start();
  EXPECT_FALSE(PassTime(pace_.first_sign - milliseconds(1)));
  EXPECT_TRUE(PassTime(milliseconds(1)));
  EXPECT_EQ(End(), GameEnd::kNoSignOfLife);
  EXPECT_EQ(machine_.files.Bytes("/t/winboard.debug"),
            "Panic stop by Tarvendo\n \n \n \n \ngameends \n \n");
}

TEST_F(OneGame, ThatCannotBeStartedIsMissedAfterTheSameTime) {
  machine_.processes.on_batch = [](const std::string&) { return false; };
  Start();
  EXPECT_FALSE(PassTime(pace_.first_sign - milliseconds(1)));
  EXPECT_TRUE(PassTime(milliseconds(1)));
  EXPECT_EQ(End(), GameEnd::kNotStarted);
}

TEST_F(OneGame, WhoseDebugFileCannotEvenBeMadeCannotBeWatched) {
  Start();
  machine_.files.Deny(FileOperation::kOpen, "/t/winboard.debug");
  EXPECT_TRUE(PassTime(seconds(10)));
  EXPECT_EQ(End(), GameEnd::kCannotBeWatched);
}

TEST_F(OneGame, AwaitsItsRecordForTwoSecondsBehindTheEnd) {
  Start();
  WriteDebug(std::string(kHeader) + kBlackMates);
  EXPECT_FALSE(PassTime(milliseconds(0))) << "no step is due yet";
  EXPECT_FALSE(PassTime(milliseconds(2000))) << "the record is missing";
  WriteRecord();
  EXPECT_TRUE(PassTime(milliseconds(2000)));
  EXPECT_EQ(game_->TakeOutcome().pgn, kRecord);
}

TEST_F(OneGame, WithoutARecordIsOverAllTheSame) {
  Start();
  WriteDebug(std::string(kHeader) + kBlackMates);
  EXPECT_TRUE(PassTime(milliseconds(4000)));
  EXPECT_EQ(game_->TakeOutcome().pgn, std::nullopt);
}

TEST_F(OneGame, WhoseProcessHasEndedIsLookedAtAtOnce) {
  Start();
  WriteDebug(std::string(kHeader) + kBlackMates);
  WriteRecord();
  machine_.processes.EndOf(1);
  EXPECT_TRUE(game_->Step(now_));
}

TEST_F(OneGame, IsGivenAMinuteForItsLastWordWhenItsProcessHasEnded) {
  Start();
  WriteDebug(kHeader);
  PassTime(seconds(20));
  machine_.processes.EndOf(1);
  EXPECT_FALSE(PassTime(milliseconds(59999)));
  EXPECT_TRUE(PassTime(milliseconds(1)));
  EXPECT_EQ(End(), GameEnd::kDiedSilently);
}

TEST_F(OneGame, ThatWasHandedOnToAnotherProcessLivesAsLongAsItsDebugFileGrows) {
  Start();
  WriteDebug(kHeader);
  machine_.processes.EndOf(1);
  for (int i = 0; i < 300; ++i) {
    WriteDebug("thinking\n");
    ASSERT_FALSE(PassTime(seconds(10))) << i;
  }
  EXPECT_TRUE(PassTime(seconds(71)));
  EXPECT_EQ(End(), GameEnd::kDiedSilently);
}

TEST_F(OneGame, DoesNotCareForTheProcessesOfOtherGames) {
  machine_.processes.StartBatch("/t/other.BAT", nullptr);
  Start();
  WriteDebug(kHeader);
  machine_.processes.EndOf(2);
  EXPECT_TRUE(PassTime(seconds(80)));
  EXPECT_EQ(End(), GameEnd::kDiedSilently);
}

TEST_F(OneGame, IsAwaitedForEverWhileItsProcessRuns) {
  Start();
  WriteDebug(kHeader);
  EXPECT_FALSE(PassTime(std::chrono::hours(100)));
}

TEST_F(OneGame, WithNoticesIsLookedAtOnceInTenSecondsWhileNothingHappens) {
  Start();
  WriteDebug(kHeader);
  steps_ = 0;
  PassTime(std::chrono::hours(1));
  EXPECT_LE(steps_, std::chrono::hours(1) / pace_.fallback + 1);
}

TEST_F(OneGame, WithoutNoticesIsSeenToEndWithinTwoSeconds) {
  machine_.watches.gives_notices = false;
  Start();
  WriteDebug(kHeader);
  EXPECT_FALSE(PassTime(seconds(60)));
  WriteRecord();
  WriteDebug(kBlackMates);
  EXPECT_TRUE(PassTime(seconds(2)));
}

TEST_F(OneGame, IsLookedAtNoMoreOftenThanThatHoweverMuchIsWritten) {
  Start();
  WriteDebug(kHeader);
  PassTime(seconds(2));
  for (int i = 0; i < 100; ++i)
    WriteDebug("thinking\n");
  EXPECT_GT(news_, 100);
  EXPECT_EQ(game_->NextStep(), now_ + seconds(2));
}

TEST_F(OneGame, ThatIsSilentForHalfAnHourIsToldOfOnce) {
  Start();
  WriteDebug(kHeader);
  PassTime(seconds(1799));
  EXPECT_FALSE(game_->TakeSilence(now_));
  PassTime(seconds(11));
  EXPECT_TRUE(game_->TakeSilence(now_));
  PassTime(seconds(4000));
  EXPECT_FALSE(game_->TakeSilence(now_));
  WriteDebug("thinking\n");
  PassTime(seconds(1900));
  EXPECT_TRUE(game_->TakeSilence(now_)) << "another silence";
}

TEST_F(OneGame, IsEndedWhenThePatienceIsOver) {
  pace_.patience = std::chrono::minutes(5);
  Start();
  WriteDebug(kHeader);
  EXPECT_TRUE(PassTime(seconds(320)));
  EXPECT_EQ(End(), GameEnd::kOutOfPatience);
  EXPECT_EQ(machine_.processes.EndedBatches(), std::vector<BatchId>{1});
}

TEST_F(OneGame, ThatSpeaksIsNeverEndedForPatience) {
  pace_.patience = std::chrono::minutes(5);
  Start();
  for (int i = 0; i < 100; ++i) {
    WriteDebug(i == 0 ? kHeader : "thinking\n");
    ASSERT_FALSE(PassTime(seconds(200)));
  }
}

TEST_F(OneGame, WhoseClaimWasDeletedGetsItBack) {
  Start();
  WriteDebug(kHeader);
  machine_.files.Remove("/t/g7.run");
  PassTime(seconds(10));
  EXPECT_EQ(machine_.files.Bytes("/t/g7.run"), ClaimText(order_));
  EXPECT_TRUE(machine_.files.IsLocked("/t/g7.run"));
}

TEST_F(OneGame, ThatWasAdoptedIsNeverStarted) {
  const auto held = MakeClaim(machine_.files, order_);
  WriteDebug(kHeader);
  Adopt();
  EXPECT_FALSE(PassTime(seconds(300)));
  WriteRecord();
  WriteDebug(kBlackMates);
  EXPECT_TRUE(PassTime(seconds(10)));
  EXPECT_EQ(End(), GameEnd::kEnded);
  EXPECT_TRUE(machine_.processes.Batches().empty());
}

TEST_F(OneGame, ThatWasAdoptedHasDiedWhenNobodyHoldsItsClaim) {
  auto held = MakeClaim(machine_.files, order_);
  WriteDebug(kHeader);
  Adopt();
  PassTime(seconds(300));
  held.reset();
  EXPECT_FALSE(PassTime(seconds(50)));
  EXPECT_TRUE(PassTime(seconds(30)));
  EXPECT_EQ(End(), GameEnd::kDiedSilently);
}

TEST_F(OneGame, OfManyIsOverWhenItsProcessesHaveEndedToo) {
  pace_.awaits_processes = true;
  Start();
  WriteDebug(std::string(kHeader) + kBlackMates);
  machine_.files.Put("/t/g7.PGN", "[Result");
  EXPECT_FALSE(PassTime(milliseconds(2000)));
  WriteRecord();
  EXPECT_FALSE(PassTime(milliseconds(1000)));
  machine_.processes.EndOf(1);
  EXPECT_TRUE(game_->Step(now_));
  EXPECT_EQ(game_->TakeOutcome().pgn, kRecord);
}

TEST_F(OneGame, OfManyIsOverWhenItsRecordDoesNotGrowAnyMore) {
  pace_.awaits_processes = true;
  Start();
  WriteDebug(std::string(kHeader) + kBlackMates);
  WriteRecord();
  EXPECT_TRUE(PassTime(milliseconds(5000)));
  EXPECT_TRUE(game_->RunningBatch()) << "its processes stay behind";
}

}  // namespace
}  // namespace tarvendo
