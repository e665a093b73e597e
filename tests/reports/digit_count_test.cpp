#include "reports/digit_count.h"

#include <gtest/gtest.h>

#include <limits>

namespace tarvendo {
namespace {

TEST(DigitCount, CountsDecimalDigitsAndGivesZeroOne) {
  EXPECT_EQ(DigitCount(0), 1);
  EXPECT_EQ(DigitCount(9), 1);
  EXPECT_EQ(DigitCount(10), 2);
  EXPECT_EQ(DigitCount(999), 3);
  EXPECT_EQ(DigitCount(1000), 4);
  EXPECT_EQ(DigitCount(std::numeric_limits<int>::max()), 10);
  EXPECT_EQ(DigitCount(-3), 1);
}

}  // namespace
}  // namespace tarvendo
