#include "console/exit_code.h"

#include "tourney/small_tourney.h"

namespace tarvendo {
namespace {

class ExitCodes : public TourneyTest {
 protected:
  ExitCodes() {
    Enter({"Alpha", "Beta", "Gamma", "Delta"});
    tourney.ChangeSettings()->type = kRoundRobin;
    AddReady(1, 2, kWhiteWins);
    AddReady(3, 4, kBothLose);
  }

  std::string Missing() { return WhatIsMissing(tourney, true); }
};

TEST_F(ExitCodes, NothingIsMissingWhenEveryGameHasAResult) {
  EXPECT_EQ(Missing(), "");
  EXPECT_EQ(CodeOf(RunEnd::kDone, Missing()), 0);
}

TEST_F(ExitCodes, AGameThatIsNotPlayedIsMissingWhateverBecameOfIt) {
  Add(1, 3);
  Add(2, 4).status = kSpooled;
  EXPECT_EQ(Missing(), "Games not played: 2: 3 4\n");
  EXPECT_EQ(CodeOf(RunEnd::kDone, Missing()), 3);
}

TEST_F(ExitCodes, UnknownAndUnfinishedAreNoResults) {
  AddReady(1, 3, kUnknown);
  AddReady(2, 4, kUnfinished);
  EXPECT_EQ(Missing(), "Games played without a result: 2: 3 4 ('replay' plays them again)\n");
}

TEST_F(ExitCodes, OfManyGamesTheFirstTwentyAreTold) {
  for (int i = 0; i < 21; ++i)
    Add(1, 3);
  EXPECT_EQ(Missing(),
            "Games not played: 21: 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21 22 ...\n");
}

TEST_F(ExitCodes, ATourneyWithoutGamesHasNotBeenPlayed) {
  tourney.EraseAllGames();
  EXPECT_EQ(Missing(), "The tourney has no games.\n");
}

TEST_F(ExitCodes, ASwissTourneyLacksTheRoundsThatAreNotPaired) {
  tourney.ChangeSettings()->type = kSwiss;
  tourney.ChangeSettings()->rounds = 2;
  EXPECT_EQ(Missing(), "Rounds not paired: 1 of 2 (AutoRun is off; 'set autorun on' pairs them)\n");
  tourney.ChangeSettings()->auto_run = 1;
  EXPECT_EQ(Missing(), "Rounds not paired: 1 of 2\n");
  tourney.ChangeSettings()->rounds = 1;
  EXPECT_EQ(Missing(), "");
}

TEST_F(ExitCodes, ARunnerThatHasStoppedItselfIsToldUntilItIsMovedAgain) {
  tourney.ChangeSwitch()->StopItself();
  EXPECT_EQ(Missing(), "The runner stopped itself.\n");
  tourney.ChangeSwitch()->SetRunning(false);
  EXPECT_EQ(Missing(), "") << "the user has stopped it";
}

TEST_F(ExitCodes, ASaveThatFailedIsTold) {
  EXPECT_EQ(WhatIsMissing(tourney, false), "The tourney is not saved.\n");
}

TEST_F(ExitCodes, WhoAsksForTheEndGetsFourAndAFaultGetsOneWhateverIsMissing) {
  EXPECT_EQ(CodeOf(RunEnd::kAsked, ""), 4);
  EXPECT_EQ(CodeOf(RunEnd::kAsked, "Games"), 4);
  EXPECT_EQ(CodeOf(RunEnd::kFault, ""), 1);
  EXPECT_EQ(CodeOf(RunEnd::kFault, "Games"), 1);
}

}  // namespace
}  // namespace tarvendo
