#include "tourney/time_control.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace tarvendo {
namespace {

/// Mps, seconds and increment behind one another.
std::string Parsed(const std::string& text) {
  const TimeControl control = ParseTimeControl(text);
  return std::to_string(control.mps) + " " + std::to_string(control.seconds) + " " +
         std::to_string(control.inc);
}

TEST(TimeControl, MovesMinutesAndSecondsAndIncrementAreRead) {
  EXPECT_EQ(Parsed("40 2:30 5"), "40 150 5");
  EXPECT_EQ(Parsed("0 5 0"), "0 300 0");
  EXPECT_EQ(Parsed("  40\t2:30   5  "), "40 150 5");
}

TEST(TimeControl, WithoutColonTheTimeIsMinutes) {
  EXPECT_EQ(Parsed("0 90 0"), "0 5400 0");
}

TEST(TimeControl, MissingPartsAreZero) {
  EXPECT_EQ(Parsed("40"), "40 0 0");
  EXPECT_EQ(Parsed("40 5"), "40 300 0");
  EXPECT_EQ(Parsed(""), "0 0 0");
}

TEST(TimeControl, UnreadablePartsAreZero) {
  EXPECT_EQ(Parsed("forty 5 0"), "0 0 0");
  EXPECT_EQ(Parsed("40 five 2"), "40 0 2");
  EXPECT_EQ(Parsed("40 :30 2"), "40 0 2");
  EXPECT_EQ(Parsed("40 2: 2"), "40 120 2");
  EXPECT_EQ(Parsed("40 2:x 2"), "40 120 2");
  EXPECT_EQ(Parsed("40 5 x"), "40 300 0");
}

TEST(TimeControl, NumbersOutOfRangeGiveTheNearestOnes) {
  constexpr int kMax = std::numeric_limits<int>::max();
  const TimeControl control = ParseTimeControl("99999999999 99999999999 99999999999");
  EXPECT_EQ(control.mps, kMax);
  EXPECT_EQ(control.seconds, kMax);
  EXPECT_EQ(control.inc, kMax);
  EXPECT_EQ(ParseTimeControl("0 0:99999999999 0").seconds, kMax);
  EXPECT_EQ(ParseTimeControl("0 -99999999999 0").seconds, std::numeric_limits<int>::min());
}

TEST(TimeControl, ANewRecordHasOneMinuteForTheGame) {
  const TimeControl control;
  EXPECT_EQ(control.seconds, 60);
  EXPECT_EQ(control.inc, 0);
  EXPECT_EQ(control.mps, 0);
}

}  // namespace
}  // namespace tarvendo
