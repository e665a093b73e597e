#include "runner/runner.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <memory>
#include <mutex>

#include "platform/faults.h"
#include "runner/small_tourney.h"
#include "runner/spool.h"
#include "tourney/content_text.h"
#include "tourney/runner_switch_commands.h"

namespace tarvendo {
namespace {

constexpr const char* kEndedGame = "1\n2\n3\n4\n5\nGameEnds(27, Black mates, 6)\n";

/// Both threads, in a time that passes as fast as they wait.
class RunnerThreads : public ::testing::Test, protected SmallTourney {
 protected:
  /// WinBoard plays each game at once, and White wins.
  void LetGamesBePlayed() {
    machine.processes.on_batch = [this](const std::string& batch) {
      const std::string number = batch.substr(batch.find('g') + 1, 1);
      machine.files.Put("/t/winboard.debug", kEndedGame);
      machine.files.Put("/t/g" + number + ".PGN", PgnText("1-0"));
      return true;
    };
  }

  void Start() {
    runner_ = std::make_unique<Runner>(room, RunnerOptions());
    ASSERT_TRUE(runner_->StartThread());
  }

  int CountReady() {
    const Hold hold = shared.Take();
    int ready = 0;
    for (const Game& game : tourney.Games())
      ready += game.IsReady() ? 1 : 0;
    return ready;
  }

  bool IsTourneyBroken() {
    try {
      const Hold hold = shared.Take();
      return false;
    } catch (const Terminated&) {
      return true;
    }
  }

  std::unique_ptr<Runner> runner_;
};

TEST_F(RunnerThreads, EndWhenTheyAreToldTo) {
  Start();
  runner_.reset();
}

TEST_F(RunnerThreads, ARunnerWhoseThreadsNeverStartedEndsToo) {
  runner_ = std::make_unique<Runner>(room, RunnerOptions());
  runner_.reset();
}

TEST_F(RunnerThreads, EndInTheMiddleOfAGameWhichGoesOnByItself) {
  AddGames(1);
  SpoolAll(tourney, machine.files);
  tourney.ChangeSwitch()->SetRunning(true);
  std::atomic<bool> started = false;
  machine.processes.on_batch = [&](const std::string&) {
    machine.files.Put("/t/winboard.debug", "1\n");
    started = true;
    return true;
  };
  Start();
  while (!started)
    std::this_thread::yield();
  runner_.reset();
  EXPECT_EQ(GameNumber(1).status, kSpooled);
}

TEST_F(RunnerThreads, AwaitIdleComesBackWhenTheRunnerIsOff) {
  Start();
  runner_->AwaitIdle();
  EXPECT_EQ(machine.TakeOutput(), "");
}

TEST_F(RunnerThreads, AwaitIdleWaitsUntilAllGamesArePlayed) {
  AddGames(3);
  tourney.ChangeSettings()->auto_run = 1;
  LetGamesBePlayed();
  Start();
  SwitchRunnerOn(*shared.Take());
  runner_->AwaitIdle();
  EXPECT_EQ(CountReady(), 3);
}

TEST_F(RunnerThreads, AwaitIdleWaitsForAStartTime) {
  AddGames(2);
  tourney.ChangeSettings()->auto_run = 1;
  LetGamesBePlayed();
  tourney.ChangeSwitch()->SetStartTime(machine.clock.Now() + 3600);
  Start();
  runner_->AwaitIdle();
  EXPECT_EQ(CountReady(), 2);
}

TEST_F(RunnerThreads, ACommandWorksWhileGamesArePlayed) {
  AddGames(4);
  tourney.ChangeSettings()->auto_run = 1;
  LetGamesBePlayed();
  Start();
  SwitchRunnerOn(*shared.Take());
  for (int i = 0; i < 200; ++i) {
    const Hold hold = shared.Take();
    tourney.ChangeSettings()->name = "Cup " + std::to_string(i);
    ContentText(tourney);
  }
  runner_->AwaitIdle();
  EXPECT_EQ(CountReady(), 4);
}

using RunnerThreadsDeathTest = RunnerThreads;

// A process of its own, for the request to end that it makes stays.
TEST_F(RunnerThreadsDeathTest, AThreadThatDiesBreaksTheTourney) {
  const auto die = [this] {
    const FaultGuard guard;
    AddGames(1);
    SpoolAll(tourney, machine.files);
    machine.processes.on_batch = [](const std::string&) -> bool {
      throw std::runtime_error("as a fault would");
    };
    tourney.ChangeSwitch()->SetRunning(true);
    Start();
    while (!IsTourneyBroken())
      std::this_thread::yield();
    runner_->AwaitIdle();
    const bool is_asked = TerminationRequested();
    runner_.reset();
    std::_Exit(is_asked ? 0 : 2);
  };
  EXPECT_EXIT(die(), testing::ExitedWithCode(0), "^$");
}

}  // namespace
}  // namespace tarvendo
