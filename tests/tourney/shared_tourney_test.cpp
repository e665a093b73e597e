#include "tourney/shared_tourney.h"

#include <gtest/gtest.h>

#include <atomic>
#include <optional>
#include <stdexcept>
#include <thread>

#include "platform/faults.h"

namespace tarvendo {
namespace {

using std::chrono::hours;
using std::chrono::milliseconds;

/// Runs `body` on a thread of its own, to its end.
template <typename Body>
void OnAnotherThread(const Body& body) {
  std::thread thread(body);
  thread.join();
}

TEST(SharedTourney, IsHeldByOneThreadAtATime) {
  SharedTourney shared;
  const auto count = [&] {
    for (int i = 0; i < 1000; ++i)
      ++shared.Take()->spool_counter;
  };
  std::thread other(count);
  count();
  other.join();
  EXPECT_EQ(shared.Take()->spool_counter, 2000);
}

TEST(SharedTourney, AHoldThatIsHandedOnEndsOnce) {
  SharedTourney shared;
  std::optional<Hold> kept;
  {
    Hold hold = shared.Take();
    kept.emplace(std::move(hold));
  }
  EXPECT_THROW(shared.Take(), std::logic_error) << "still held";
  kept.reset();
  shared.Take();
}

TEST(SharedTourney, WhoHoldsItDoesNotWaitForItself) {
  SharedTourney shared;
  const Hold hold = shared.Take();
  EXPECT_THROW(shared.Take(), std::logic_error);
}

TEST(SharedTourney, ABrokenOneThrowsInsteadOfWaitingForTheDead) {
  SharedTourney shared;
  const Hold hold = shared.Take();
  OnAnotherThread([&] {
    shared.Break();
    EXPECT_THROW(shared.Take(), Terminated);
  });
}

TEST(SharedTourney, AThreadThatWaitsLearnsThatItIsBroken) {
  SharedTourney shared;
  const Hold hold = shared.Take();
  bool learned = false;
  std::thread waiting([&] {
    try {
      shared.Take();
    } catch (const Terminated&) {
      learned = true;
    }
  });
  OnAnotherThread([&] { shared.Break(); });
  waiting.join();
  EXPECT_TRUE(learned);
}

TEST(SharedTourney, AFreeOneCanBeBrokenToo) {
  SharedTourney shared;
  shared.Break();
  EXPECT_THROW(shared.Take(), Terminated);
}

TEST(SharedTourney, InAnEmergencyAFreeOneIsGivenAtOnceThoughItIsBroken) {
  SharedTourney shared;
  shared.Break();
  shared.TakeForEmergency(hours(1))->spool_counter = 7;
  EXPECT_EQ(shared.TakeForEmergency(hours(1))->spool_counter, 7);
}

TEST(SharedTourney, InAnEmergencyTheHoldersOwnThreadDoesNotWaitForItself) {
  SharedTourney shared;
  const Hold left_behind_by_a_fault = shared.Take();
  const Hold emergency = shared.TakeForEmergency(hours(1));
  EXPECT_EQ(&*emergency, &*left_behind_by_a_fault);
}

TEST(SharedTourney, InAnEmergencyNobodyWaitsForAThreadThatHasBrokenIt) {
  SharedTourney shared;
  std::optional<Hold> left_behind;
  OnAnotherThread([&] {
    left_behind.emplace(shared.Take());
    shared.Break();
  });
  shared.TakeForEmergency(hours(1));
}

TEST(SharedTourney, InAnEmergencyAThreadThatNeverGivesItBackIsPassedOver) {
  SharedTourney shared;
  std::optional<Hold> dead;
  OnAnotherThread([&] { dead.emplace(shared.Take()); });
  const Hold emergency = shared.TakeForEmergency(milliseconds(1));
  dead.reset();
  EXPECT_THROW(shared.Take(), std::logic_error) << "the emergency has it still";
}

TEST(SharedTourney, InAnEmergencyALivingHolderIsAwaited) {
  SharedTourney shared;
  std::atomic<bool> is_held = false;
  std::thread other([&] {
    const Hold hold = shared.Take();
    is_held = true;
    std::this_thread::yield();
    hold->spool_counter = 3;
  });
  while (!is_held)
    std::this_thread::yield();
  EXPECT_EQ(shared.TakeForEmergency(hours(1))->spool_counter, 3);
  other.join();
}

class ChangeListener : public testing::Test {
 protected:
  ChangeListener() {
    shared.SetChangeListener([this] { ++calls; });
  }

  SharedTourney shared;
  int calls = 0;
};

TEST_F(ChangeListener, IsCalledBehindAHoldThatChangedTheTourney) {
  {
    const Hold hold = shared.Take();
    hold->ChangeSettings()->name = "Other";
    hold->ChangeSettings()->rounds = 3;
    EXPECT_EQ(calls, 0);
  }
  EXPECT_EQ(calls, 1);
}

TEST_F(ChangeListener, IsNotCalledWhenNothingBecameAnother) {
  shared.Take()->ChangeSettings()->rounds = 10;
  shared.Take()->name_width = 12;
  EXPECT_EQ(calls, 0);
}

TEST_F(ChangeListener, IsCalledWhenTheSwitchWasMovedAlsoToWhereItWas) {
  shared.Take()->ChangeSwitch()->SetRunning(false);
  EXPECT_EQ(calls, 1);
}

TEST_F(ChangeListener, MayNotBeToldOfTheChangesOfItsOwnThread) {
  shared.SetChangeListener([this] { ++calls; }, std::this_thread::get_id());
  shared.Take()->ChangeSettings()->rounds = 3;
  EXPECT_EQ(calls, 0);
  OnAnotherThread([this] { shared.Take()->ChangeSettings()->rounds = 4; });
  EXPECT_EQ(calls, 1);
}

TEST_F(ChangeListener, FindsTheTourneyFree) {
  bool is_free = false;
  shared.SetChangeListener([&] {
    OnAnotherThread([&] {
      shared.Take();
      is_free = true;
    });
  });
  shared.Take()->ChangeSettings()->rounds = 3;
  EXPECT_TRUE(is_free);
}

TEST_F(ChangeListener, CanBeTakenAway) {
  shared.SetChangeListener({});
  shared.Take()->ChangeSettings()->rounds = 3;
  EXPECT_EQ(calls, 0);
}

TEST(HeldWithTourney, IsReachedWithAHold) {
  SharedTourney shared;
  HeldWithTourney<std::string> note("three words long");
  const Hold hold = shared.Take();
  note.With(hold) += "er";
  EXPECT_EQ(note.With(hold), "three words longer");
}

}  // namespace
}  // namespace tarvendo
