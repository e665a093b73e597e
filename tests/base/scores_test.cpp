#include "base/scores.h"

#include <gtest/gtest.h>

namespace tarvendo {
namespace {

TEST(Scores, PointsShowWholeAndHalfPoints) {
  EXPECT_EQ(HalfPointText(0), "0.0");
  EXPECT_EQ(HalfPointText(kDrawPoints), "0.5");
  EXPECT_EQ(HalfPointText(kWinPoints), "1.0");
  EXPECT_EQ(HalfPointText(14), "3.5");
  EXPECT_EQ(HalfPointText(30), "7.5");
}

TEST(Scores, PointsLeaveAnOddQuarterOut) {
  EXPECT_EQ(HalfPointText(13), "3.0");
  EXPECT_EQ(HalfPointText(15), "3.5");
}

TEST(Scores, WholeAndHalfPointsAreToldApart) {
  EXPECT_EQ(WholePoints(11), 2);
  EXPECT_TRUE(HasHalfPoint(11));
  EXPECT_EQ(WholePoints(13), 3);
  EXPECT_FALSE(HasHalfPoint(13));
  EXPECT_EQ(InPoints(13), 3.25);
}

TEST(Scores, SonnebornBergerShowsQuarters) {
  EXPECT_EQ(QuarterPointText(0), "0.00");
  EXPECT_EQ(QuarterPointText(41), "10.25");
  EXPECT_EQ(QuarterPointText(42), "10.50");
  EXPECT_EQ(QuarterPointText(43), "10.75");
}

TEST(Scores, TheBuchholzColumnShowsQuartersInItsOwnForm) {
  EXPECT_EQ(BuchholzColumnText(28), "7.0");
  EXPECT_EQ(BuchholzColumnText(29), "7.25");
  EXPECT_EQ(BuchholzColumnText(30), "7.5");
  EXPECT_EQ(BuchholzColumnText(31), "7.75");
}

}  // namespace
}  // namespace tarvendo
