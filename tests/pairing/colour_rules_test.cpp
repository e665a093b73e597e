#include "pairing/colour_rules.h"

#include <gtest/gtest.h>

namespace tarvendo {
namespace {

constexpr ColourLevel kAllLevels[] = {kNoConflict, kWeakGivesWay, kMediumGivesWay};

TEST(ColourRules, TwoWhoMustHaveTheSameColourNeverMeet) {
  for (const ColourLevel level : kAllLevels) {
    EXPECT_FALSE(ColoursAllowPair(kMustHaveWhite, kMustHaveWhite, level)) << level;
    EXPECT_FALSE(ColoursAllowPair(kMustHaveBlack, kMustHaveBlack, level)) << level;
  }
}

TEST(ColourRules, AMediumWishGivesWayToAnAbsoluteOneAtTheLastLevelOnly) {
  EXPECT_FALSE(ColoursAllowPair(kMustHaveWhite, kMediumWhite, kNoConflict));
  EXPECT_FALSE(ColoursAllowPair(kMustHaveWhite, kMediumWhite, kWeakGivesWay));
  EXPECT_TRUE(ColoursAllowPair(kMustHaveWhite, kMediumWhite, kMediumGivesWay));
  EXPECT_TRUE(ColoursAllowPair(kMediumBlack, kMustHaveBlack, kMediumGivesWay));
}

TEST(ColourRules, TwoWeakWishesMeetFromTheMiddleLevelOn) {
  EXPECT_FALSE(ColoursAllowPair(kWeakWhite, kWeakWhite, kNoConflict));
  EXPECT_TRUE(ColoursAllowPair(kWeakWhite, kWeakWhite, kWeakGivesWay));
  EXPECT_TRUE(ColoursAllowPair(kWeakWhite, kWeakWhite, kMediumGivesWay));
}

TEST(ColourRules, DifferentColoursAndNoWishGoTogetherAtEveryLevel) {
  for (const ColourLevel level : kAllLevels) {
    EXPECT_TRUE(ColoursAllowPair(kMustHaveWhite, kMustHaveBlack, level)) << level;
    EXPECT_TRUE(ColoursAllowPair(kNoColourWish, kMustHaveBlack, level)) << level;
    EXPECT_TRUE(ColoursAllowPair(kNoColourWish, kNoColourWish, level)) << level;
  }
}

TEST(ColourRules, ANewBracketIgnoresColours) {
  EXPECT_TRUE(ColoursAllowPair(kMustHaveWhite, kMustHaveWhite, kIgnoreColours));
}

}  // namespace
}  // namespace tarvendo
