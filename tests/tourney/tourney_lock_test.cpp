#include "tourney/tourney_lock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <mutex>
#include <thread>

#include "platform/faults.h"

namespace tarvendo {
namespace {

TEST(TourneyLock, OnlyOneThreadHoldsItAtATime) {
  TourneyLock lock;
  int counter = 0;
  const auto count = [&] {
    for (int i = 0; i < 1000; ++i) {
      const std::lock_guard guard(lock);
      ++counter;
    }
  };
  std::thread other(count);
  count();
  other.join();
  EXPECT_EQ(counter, 2000);
}

TEST(TourneyLock, ABrokenLockThrowsInsteadOfWaitingForTheDead) {
  TourneyLock lock;
  lock.lock();
  lock.Break();
  EXPECT_THROW(lock.lock(), Terminated);
}

TEST(TourneyLock, AThreadThatWaitsLearnsThatTheLockIsBroken) {
  TourneyLock lock;
  lock.lock();
  bool learned = false;
  std::thread waiting([&] {
    try {
      lock.lock();
    } catch (const Terminated&) {
      learned = true;
    }
  });
  lock.Break();
  waiting.join();
  EXPECT_TRUE(learned);
}

TEST(TourneyLock, AFreeLockCanBeBrokenToo) {
  TourneyLock lock;
  lock.Break();
  EXPECT_THROW(lock.lock(), Terminated);
}

TEST(TourneyLock, NobodyWaitsForHimself) {
  constexpr std::chrono::seconds kSpan{5};
  TourneyLock lock;
  const std::lock_guard guard(lock);
  const auto start = std::chrono::steady_clock::now();
  lock.AwaitRelease(kSpan);
  EXPECT_LT(std::chrono::steady_clock::now() - start, kSpan);
}

TEST(TourneyLock, AnotherThreadIsWaitedForButNotForEver) {
  constexpr std::chrono::milliseconds kSpan{1};
  TourneyLock lock;
  const std::lock_guard guard(lock);
  std::chrono::steady_clock::duration waited{};
  std::thread other([&] {
    const auto start = std::chrono::steady_clock::now();
    lock.AwaitRelease(kSpan);
    waited = std::chrono::steady_clock::now() - start;
  });
  other.join();
  EXPECT_GE(waited, kSpan);
}

}  // namespace
}  // namespace tarvendo
