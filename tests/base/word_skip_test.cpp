#include "base/word_skip.h"

#include <gtest/gtest.h>

namespace tarvendo {
namespace {

TEST(SkipWord, GivesTheStartOfTheNextWord) {
  EXPECT_EQ(SkipWord("set  ponder on"), 5U);
  EXPECT_EQ(SkipWord("set  ponder on", 5), 12U);
}

TEST(SkipWord, ALeadingBlankIsSkipped) {
  EXPECT_EQ(SkipWord("   set ponder"), 3U);
}

TEST(SkipWord, NoBlankGivesNothing) {
  EXPECT_EQ(SkipWord("quit\n"), std::nullopt);
  EXPECT_EQ(SkipWord("set ponder", 4), std::nullopt);
}

TEST(SkipWord, BlanksUpToTheEndGiveNothing) {
  EXPECT_EQ(SkipWord("help  "), std::nullopt);
}

TEST(SkipWord, TheLineFeedOfARawLineCountsAsAWord) {
  EXPECT_EQ(SkipWord("help \n"), 5U);
}

TEST(SkipWord, ATabSeparatesNothing) {
  EXPECT_EQ(SkipWord("addplayer\tAlpha\n"), std::nullopt);
  EXPECT_EQ(SkipWord("a\tb c"), 4U);
}

TEST(SkipWord, AnEmptyTextGivesBackThePosition) {
  EXPECT_EQ(SkipWord(""), 0U);
  EXPECT_EQ(SkipWord("abc", 3), 3U);
}

}  // namespace
}  // namespace tarvendo
