#include "runner/workplace.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "play/claim.h"
#include "runner/hindrances.h"
#include "runner/preparation.h"
#include "runner/small_tourney.h"
#include "runner/spool.h"
#include "tourney/runner_switch_commands.h"

namespace tarvendo {
namespace {

using std::chrono::seconds;

/// Takes over what it is given, and plays nothing.
class AdoptingHost : public GameHost {
 public:
  int FreeSlots() const override { return 0; }
  std::optional<Obstacle> FindObstacle(const std::string& /*files_path*/,
                                       TimePoint /*now*/) override {
    return std::nullopt;
  }
  std::string DebugFileFor(const std::string& /*files_path*/, int /*number*/) const override {
    return "";
  }
  void Start(const GameOrder& /*order*/, std::unique_ptr<LockedFile> /*claim*/) override {
    ADD_FAILURE() << "nobody is to start a game";
  }
  bool AdoptsJobs() const override { return adopts_jobs; }
  void Adopt(const std::vector<GameOrder>& orders) override {
    for (const GameOrder& order : orders)
      adopted.push_back(order.number);
  }
  std::vector<GameOutcome> TakeEnded(TimePoint /*now*/) override { return {}; }
  std::vector<GameOrder> TakeSilent(TimePoint /*now*/) override { return {}; }
  std::optional<TimePoint> NextLook() const override { return std::nullopt; }

  bool adopts_jobs = false;
  std::vector<int> adopted;
};

/// Two spooled games, the runner switched on, and what an earlier program may have left.
class FilesPathToPlayIn : public ::testing::Test, protected SmallTourney {
 protected:
  FilesPathToPlayIn() {
    AddGames(2);
    SpoolAll(tourney, machine.files);
    tourney.ChangeSwitch()->SetRunning(true);
    machine.TakeOutput();
  }

  Workplace::Entry Enter() {
    return workplace_->Enter("/t\\", hindrances_, machine.clock.Steady(), adopted_);
  }

  /// An earlier program has begun the game with that number: it is being played, or a scheduler has
  /// it.
  void LeaveClaim(int number, const std::string& job = "") {
    PreparedGame prepared;
    ASSERT_EQ(PrepareGame(tourney, machine.host, GameNumber(number), "/t/winboard.debug", prepared),
              Preparation::kReady);
    prepared.claim.reset();
    prepared.order.job = job;
    machine.files.Put(prepared.order.claim_file, ClaimText(prepared.order));
    if (job.empty()) machine.files.HoldLock(prepared.order.claim_file, "game");
    machine.TakeOutput();
  }

  static constexpr seconds kRetry{3};

  AdoptingHost host_;
  Hindrances hindrances_{kRetry};
  std::unique_ptr<Workplace> workplace_ =
      std::make_unique<Workplace>(room, host_, std::optional<Openings>());
  std::size_t adopted_ = 0;
};

TEST_F(FilesPathToPlayIn, IsHeldFromTheFirstEntryUntilItIsLeft) {
  EXPECT_FALSE(machine.files.IsLocked("/t/runner.lock"));
  EXPECT_EQ(Enter(), Workplace::Entry::kDone);
  EXPECT_TRUE(machine.files.IsLocked("/t/runner.lock"));
  EXPECT_EQ(Enter(), Workplace::Entry::kDone) << "before each start";
  workplace_->Leave();
  EXPECT_FALSE(machine.files.IsLocked("/t/runner.lock"));
}

TEST_F(FilesPathToPlayIn, IsAwaitedWhileAnotherProgramPlaysThere) {
  machine.files.HoldLock("/t/runner.lock", "other");
  LeaveClaim(1);
  EXPECT_EQ(Enter(), Workplace::Entry::kHindered);
  EXPECT_NE(machine.TakeOutput().find("'/t\\runner.lock'"), std::string::npos);
  EXPECT_EQ(hindrances_.NextTry(machine.clock.Steady()), machine.clock.Steady() + kRetry);
  EXPECT_TRUE(host_.adopted.empty()) << "the game is the other program's";
  machine.files.EndProcess("other");
  EXPECT_EQ(Enter(), Workplace::Entry::kDone);
  EXPECT_EQ(host_.adopted, std::vector<int>{1});
}

TEST_F(FilesPathToPlayIn, IsNotEnteredBehindAProgramThatHasSavedTheTourney) {
  ASSERT_TRUE(file.Save(tourney, "/t/tourney.ini"));
  machine.files.HoldLock("/t/runner.lock", "other");
  EXPECT_EQ(Enter(), Workplace::Entry::kHindered);
  machine.files.EndProcess("other");
  machine.files.PutMore("/t/tourney.ini", "more\n");
  machine.TakeOutput();
  EXPECT_EQ(Enter(), Workplace::Entry::kHindered);
  EXPECT_NE(machine.TakeOutput().find("was changed by another program"), std::string::npos);
  EXPECT_FALSE(tourney.Switch().IsRunning());
}

TEST_F(FilesPathToPlayIn, HandsGamesThatAreStillPlayedToTheGameHostOnce) {
  LeaveClaim(2);
  EXPECT_EQ(Enter(), Workplace::Entry::kDone);
  EXPECT_EQ(adopted_, 1U);
  EXPECT_TRUE(running.HasNumber(2));
  EXPECT_FALSE(running.HasNumber(1));
  EXPECT_EQ(Enter(), Workplace::Entry::kDone);
  EXPECT_EQ(host_.adopted, std::vector<int>{2});
  EXPECT_EQ(adopted_, 1U);
}

TEST_F(FilesPathToPlayIn, StopsTheRunnerForGamesOfASchedulerThatTheGameHostDoesNotKnow) {
  LeaveClaim(1, "tarvendo-t-1-g1-2.1");
  LeaveClaim(2);
  EXPECT_EQ(Enter(), Workplace::Entry::kNothing);
  EXPECT_NE(machine.TakeOutput().find("Games that were handed to a scheduler: 1,\n"
                                      "the first is game no. 1."),
            std::string::npos);
  EXPECT_FALSE(tourney.Switch().IsRunning());
  EXPECT_EQ(host_.adopted, std::vector<int>{2}) << "the others are awaited";
  EXPECT_EQ(Enter(), Workplace::Entry::kNothing) << "they are looked for again";
}

TEST_F(FilesPathToPlayIn, HandsGamesOfASchedulerToTheGameHostThatKnowsIt) {
  host_.adopts_jobs = true;
  LeaveClaim(1, "tarvendo-t-1-g1-2.1");
  EXPECT_EQ(Enter(), Workplace::Entry::kDone);
  EXPECT_EQ(host_.adopted, std::vector<int>{1});
  EXPECT_TRUE(tourney.Switch().IsRunning());
}

TEST_F(FilesPathToPlayIn, IsNotEnteredWithoutANoteOfTheOpenings) {
  machine.files.Put("/t/book.epd", "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq -\n");
  std::string error;
  const auto openings = Openings::Read(machine.files, "/t/book.epd", error);
  ASSERT_TRUE(openings) << error;
  workplace_ = std::make_unique<Workplace>(room, host_, openings);
  for (const char* name : {"/t/runner.openings", "/t/runner.openings.tarvendo.new"})
    machine.files.Deny(FileOperation::kOpen, name);
  EXPECT_EQ(Enter(), Workplace::Entry::kHindered);
  EXPECT_EQ(machine.TakeOutput(), "Error opening file for writing:  /t\\runner.openings\n");
  for (const char* name : {"/t/runner.openings", "/t/runner.openings.tarvendo.new"})
    machine.files.Allow(FileOperation::kOpen, name);
  EXPECT_EQ(Enter(), Workplace::Entry::kDone);
  EXPECT_TRUE(machine.files.Has("/t/runner.openings"));
}

TEST_F(FilesPathToPlayIn, IsLookedThroughForResultsUntilItWasAndAgainWhenTheRunnerBeginsAnew) {
  ASSERT_EQ(Enter(), Workplace::Entry::kDone);
  EXPECT_FALSE(workplace_->HasCollected());
  PutPgn(1, "1-0");
  workplace_->Collect();
  EXPECT_TRUE(workplace_->HasCollected());
  EXPECT_EQ(GameNumber(1).result, kWhiteWins);
  workplace_->BeginAnew();
  EXPECT_FALSE(workplace_->HasCollected());
}

}  // namespace
}  // namespace tarvendo
