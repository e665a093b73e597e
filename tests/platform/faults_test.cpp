#include "platform/faults.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <stdexcept>
#include <thread>
#include <vector>

#include "platform/faulty_code.h"

namespace tarvendo {
namespace {

/// Every kind of fault, twice, since a handler that works once may be gone afterwards.
void ExpectEveryFaultToBeCaught() {
  for (int turn = 0; turn < 2; ++turn) {
    EXPECT_FALSE(CallGuarded([] { WriteNowhere(); })) << turn;
    EXPECT_FALSE(CallGuarded([] { DivideByZero(); })) << turn;
    EXPECT_FALSE(CallGuarded([] { ExecuteNonsense(); })) << turn;
    EXPECT_FALSE(CallGuarded([] { std::abort(); })) << turn;
    EXPECT_FALSE(CallGuarded([] { Overflow(1); })) << turn;
  }
}

TEST(Faults, ACallThatReturnsIsTrue) {
  bool called = false;
  EXPECT_TRUE(CallGuarded([&] { called = true; }));
  EXPECT_TRUE(called);
}

TEST(Faults, ExceptionsOfEveryKindAreCaught) {
  EXPECT_FALSE(CallGuarded([] { throw std::runtime_error("thrown"); }));
  EXPECT_FALSE(CallGuarded([] { throw 7; }));
  EXPECT_FALSE(CallGuarded([] { throw Terminated("thrown"); }));
}

TEST(Faults, EveryFaultIsCaughtOnTheMainThread) {
  const FaultGuard guard;
  ExpectEveryFaultToBeCaught();
}

TEST(Faults, EveryFaultIsCaughtOnASecondThread) {
  const FaultGuard guard;
  std::thread second(ExpectEveryFaultToBeCaught);
  second.join();
}

TEST(Faults, FaultsOnTwoThreadsAtOnceAreCaughtEachOnItsOwn) {
  const FaultGuard guard;
  std::thread second(ExpectEveryFaultToBeCaught);
  ExpectEveryFaultToBeCaught();
  second.join();
}

TEST(Faults, AnExceptionOutOfANoexceptFunctionIsCaught) {
  const FaultGuard guard;
  const auto broken_promise = []() noexcept { std::vector<int>().at(1) = 2; };
  EXPECT_FALSE(CallGuarded([&] { broken_promise(); }));
}

TEST(Faults, AFaultEndsOnlyTheInnermostGuardedCall) {
  const FaultGuard guard;
  bool went_on = false;
  EXPECT_TRUE(CallGuarded([&] {
    EXPECT_FALSE(CallGuarded([] { WriteNowhere(); }));
    EXPECT_FALSE(CallGuarded([] { throw 1; }));
    went_on = true;
  }));
  EXPECT_TRUE(went_on);
  EXPECT_FALSE(CallGuarded([] {
    EXPECT_FALSE(CallGuarded([] { WriteNowhere(); }));
    WriteNowhere();
  }));
}

TEST(Faults, ALaterGuardCatchesToo) {
  {
    const FaultGuard first;
    EXPECT_FALSE(CallGuarded([] { WriteNowhere(); }));
  }
  const FaultGuard second;
  EXPECT_FALSE(CallGuarded([] { WriteNowhere(); }));
}

}  // namespace
}  // namespace tarvendo
