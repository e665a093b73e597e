#include "runner/plan.h"

#include <gtest/gtest.h>

#include "fakes/captured_log.h"
#include "runner/running_games.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

/// A tourney of four games between two players, none of them spooled.
class ThePlan : public ::testing::Test {
 protected:
  ThePlan() {
    for (const char* name : {"Alpha", "Beta"}) {
      Player player;
      player.texts.name = name;
      player.number = static_cast<int>(tourney_.Participants().size()) + 1;
      tourney_.ChangeParticipants().push_back(player);
    }
    tourney_.ChangeSettings()->type = kRoundRobin;
    tourney_.ChangeSettings()->auto_run = 1;
    for (int round = 1; round <= 4; ++round)
      tourney_.AddGame(1, 2, round, 1);
  }

  void SetStatus(int number, int status, int spool_index = 0) {
    const auto game = tourney_.Change(*tourney_.FindGame(number));
    game->status = status;
    game->spool_index = spool_index;
  }

  void SetAll(int status) {
    for (int number = 1; number <= 4; ++number)
      SetStatus(number, status);
  }

  void Run(int number) {
    GameOrder order;
    order.number = number;
    running_.Add(order);
  }

  PlanStep Step() { return PlanNextStep(tourney_, running_, attempt_, blocked_).step; }
  int GameToStart() {
    const Plan plan = PlanNextStep(tourney_, running_, attempt_, blocked_);
    return plan.step == PlanStep::kStart ? plan.game_number : 0;
  }

  CapturedLog machine_;
  Tourney tourney_;
  RunningGames running_;
  PlanAttempt attempt_;
  std::vector<int> blocked_;
};

TEST_F(ThePlan, StartsTheGameThatWasSpooledFirst) {
  SetStatus(1, kSpooled, 9);
  SetStatus(3, kSpooled, 4);
  SetStatus(4, kSpooled, 5);
  EXPECT_EQ(GameToStart(), 3);
}

TEST_F(ThePlan, TakesTheSpoolIndexForAnUnsignedNumber) {
  SetStatus(1, kSpooled, -1);
  SetStatus(2, kSpooled, 5);
  EXPECT_EQ(GameToStart(), 2);
}

TEST_F(ThePlan, StartsNoGameThatIsUnderWay) {
  SetStatus(1, kSpooled, 1);
  SetStatus(2, kSpooled, 2);
  Run(1);
  EXPECT_EQ(GameToStart(), 2);
}

TEST_F(ThePlan, PassesByAGameThatIsBlocked) {
  SetStatus(1, kSpooled, 1);
  SetStatus(2, kSpooled, 2);
  blocked_ = {1};
  EXPECT_EQ(GameToStart(), 2);
}

TEST_F(ThePlan, TakesAGameWithAByeInItsTurn) {
  SetStatus(2, kSpooled, 2);
  SetStatus(3, kSpooled, 1);
  tourney_.ChangeParticipants()[1].texts.program_exe = "bye";
  const Plan plan = PlanNextStep(tourney_, running_, attempt_, blocked_);
  EXPECT_EQ(plan.step, PlanStep::kBye);
  EXPECT_EQ(plan.game_number, 3);
}

TEST_F(ThePlan, SpoolsWhenNothingIsSpooled) {
  EXPECT_EQ(Step(), PlanStep::kSpool);
}

TEST_F(ThePlan, WaitsWithoutAutoRun) {
  tourney_.ChangeSettings()->auto_run = 0;
  EXPECT_EQ(Step(), PlanStep::kWait);
}

TEST_F(ThePlan, SwitchesOffWhenARoundRobinHasNothingToSpool) {
  SetAll(kReady);
  EXPECT_EQ(Step(), PlanStep::kSpool) << "which says that there is nothing";
  attempt_.has_nothing_to_spool = true;
  EXPECT_EQ(Step(), PlanStep::kSwitchOff);
}

TEST_F(ThePlan, DoesNothingRashWhileAGameIsUnderWay) {
  for (const int type : {kRoundRobin, kSwiss}) {
    tourney_.ChangeSettings()->type = type;
    SetAll(kReady);
    SetStatus(4, kSpooled);
    Run(4);
    EXPECT_EQ(Step(), PlanStep::kWait);
  }
}

TEST_F(ThePlan, SpoolsForAFreePlaceWhileAGameIsUnderWay) {
  SetStatus(1, kSpooled);
  Run(1);
  EXPECT_EQ(Step(), PlanStep::kSpool);
}

TEST_F(ThePlan, PairsAndThenReplaysInASwissTourney) {
  tourney_.ChangeSettings()->type = kSwiss;
  SetAll(kReady);
  attempt_.has_nothing_to_spool = true;
  EXPECT_EQ(Step(), PlanStep::kPair);
  attempt_.failed_to_pair = true;
  EXPECT_EQ(Step(), PlanStep::kReplay);
  attempt_.failed_to_replay = true;
  EXPECT_EQ(Step(), PlanStep::kSwitchOff);
}

TEST_F(ThePlan, SwitchesOffWhenARoundThatWasPairedHasNoGameToSpool) {
  tourney_.ChangeSettings()->type = kSwiss;
  SetAll(kReady);
  attempt_.has_nothing_to_spool = true;
  attempt_.has_paired = true;
  EXPECT_EQ(Step(), PlanStep::kSwitchOff);
}

}  // namespace
}  // namespace tarvendo
