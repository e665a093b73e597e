#include "runner/hindrances.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <vector>

#include "fakes/captured_log.h"

namespace tarvendo {
namespace {

using std::chrono::seconds;

constexpr seconds kRetry{3};

class WhatHinders : public ::testing::Test {
 protected:
  TimePoint Now() const { return start_ + passed_; }

  CapturedLog machine_;
  TimePoint start_ = machine_.clock.Steady();
  seconds passed_{0};
  Hindrances hindrances_{kRetry};
};

TEST_F(WhatHinders, AtFirstNothingIsInTheWay) {
  EXPECT_TRUE(hindrances_.MayTry(Now()));
  EXPECT_EQ(hindrances_.NextTry(Now()), std::nullopt);
  EXPECT_EQ(hindrances_.EndOfBlocks(), std::nullopt);
  EXPECT_TRUE(hindrances_.Blocked().empty());
}

TEST_F(WhatHinders, WhatHindersEveryGameKeepsThemAllBackUntilTheNextAttempt) {
  hindrances_.Hinder("held\n", Now());
  EXPECT_FALSE(hindrances_.MayTry(Now()));
  EXPECT_EQ(hindrances_.NextTry(Now()), start_ + kRetry);
  passed_ = kRetry;
  EXPECT_TRUE(hindrances_.MayTry(Now()));
  EXPECT_EQ(hindrances_.NextTry(Now()), std::nullopt);
}

TEST_F(WhatHinders, ABlockedGameKeepsNoOtherBack) {
  hindrances_.Block(7, "held\n", Now());
  EXPECT_TRUE(hindrances_.MayTry(Now()));
  EXPECT_EQ(hindrances_.Blocked(), std::vector<int>{7});
  EXPECT_EQ(hindrances_.EndOfBlocks(), start_ + kRetry);
  EXPECT_EQ(hindrances_.NextTry(Now()), std::nullopt);
}

TEST_F(WhatHinders, BlockedGamesAreTriedAgainTogether) {
  hindrances_.Block(7, "held\n", Now());
  passed_ = seconds(2);
  hindrances_.Block(9, "held\n", Now());
  passed_ = kRetry;
  EXPECT_TRUE(hindrances_.MayTry(Now()));
  EXPECT_EQ(hindrances_.Blocked(), (std::vector<int>{7, 9})) << "the later one is not due yet";
  passed_ = kRetry + seconds(2);
  EXPECT_TRUE(hindrances_.MayTry(Now()));
  EXPECT_TRUE(hindrances_.Blocked().empty());
  EXPECT_EQ(hindrances_.EndOfBlocks(), std::nullopt);
}

TEST_F(WhatHinders, TheFirstAttemptAndEveryEleventhOneAreTold) {
  for (int attempt = 1; attempt <= 23; ++attempt) {
    hindrances_.Hinder("held\n", Now());
    EXPECT_EQ(machine_.TakeOutput(), attempt % 11 == 1 ? "held\n" : "") << attempt;
  }
}

TEST_F(WhatHinders, WhatIsForgottenIsToldAgain) {
  hindrances_.Hinder("held\n", Now());
  hindrances_.Block(7, "held\n", Now());
  machine_.TakeOutput();
  hindrances_.Forget(Now());
  EXPECT_TRUE(hindrances_.MayTry(Now()));
  EXPECT_TRUE(hindrances_.Blocked().empty());
  hindrances_.Hinder("held\n", Now());
  EXPECT_EQ(machine_.TakeOutput(), "held\n");
}

TEST_F(WhatHinders, NothingIsTriedBeforeTheMomentThatWasForgottenFor) {
  hindrances_.Forget(start_ + seconds(5));
  passed_ = seconds(4);
  EXPECT_FALSE(hindrances_.MayTry(Now()));
  EXPECT_EQ(hindrances_.NextTry(Now()), start_ + seconds(5));
  passed_ = seconds(5);
  EXPECT_TRUE(hindrances_.MayTry(Now()));
}

}  // namespace
}  // namespace tarvendo
