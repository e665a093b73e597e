#include "runner/runner.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <mutex>

#include "platform/faults.h"
#include "runner/runner_switch_commands.h"
#include "runner/small_tourney.h"
#include "runner/spool.h"

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
    runner_ = std::make_unique<Runner>(tourney, brackets);
    ASSERT_TRUE(runner_->StartThreads());
  }

  int CountReady() {
    const std::lock_guard lock(tourney.Lock());
    int ready = 0;
    for (const Game& game : tourney.Games())
      ready += game.IsReady() ? 1 : 0;
    return ready;
  }

  bool IsLockBroken() {
    try {
      const std::lock_guard lock(tourney.Lock());
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
  runner_ = std::make_unique<Runner>(tourney, brackets);
  runner_.reset();
}

TEST_F(RunnerThreads, EndInTheMiddleOfAGameWhichGoesOnByItself) {
  AddGames(1);
  SpoolAll(tourney);
  tourney.Switch().SetRunning(true);
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
  tourney.settings.auto_run = 1;
  LetGamesBePlayed();
  Start();
  StartRunner(tourney);
  runner_->AwaitIdle();
  EXPECT_EQ(CountReady(), 3);
}

TEST_F(RunnerThreads, AwaitIdleWaitsForAStartTime) {
  AddGames(2);
  tourney.settings.auto_run = 1;
  LetGamesBePlayed();
  tourney.Switch().SetStartTime(machine.clock.Now() + 3600);
  Start();
  runner_->AwaitIdle();
  EXPECT_EQ(CountReady(), 2);
}

TEST_F(RunnerThreads, ACommandWorksWhileGamesArePlayed) {
  AddGames(4);
  tourney.settings.auto_run = 1;
  LetGamesBePlayed();
  Start();
  StartRunner(tourney);
  for (int i = 0; i < 200; ++i) {
    const std::lock_guard lock(tourney.Lock());
    tourney.settings.name = "Cup " + std::to_string(i);
    tourney.ContentText();
  }
  runner_->AwaitIdle();
  EXPECT_EQ(CountReady(), 4);
}

// The last one here: the request to end that it makes is the whole process's and stays.
TEST_F(RunnerThreads, AThreadThatDiesBreaksTheLockOfTheTourney) {
  const FaultGuard guard;
  AddGames(1);
  SpoolAll(tourney);
  machine.processes.on_batch = [](const std::string&) -> bool {
    throw std::runtime_error("as a fault would");
  };
  tourney.Switch().SetRunning(true);
  Start();
  while (!IsLockBroken())
    std::this_thread::yield();
  runner_->AwaitIdle();
  EXPECT_TRUE(TerminationRequested());
  runner_.reset();
}

}  // namespace
}  // namespace tarvendo
