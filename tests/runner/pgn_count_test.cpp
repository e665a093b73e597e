#include "runner/pgn_count.h"

#include <gtest/gtest.h>

namespace tarvendo {
namespace {

std::size_t GamesIn(std::string_view text) {
  const PgnCount count = CountPgnGames(text);
  EXPECT_EQ(count.bad_line, 0) << count.why;
  return count.games;
}

/// "3: a comment that does not end"; empty for a good text.
std::string FaultIn(std::string_view text) {
  const PgnCount count = CountPgnGames(text);
  return count.bad_line == 0 ? "" : std::to_string(count.bad_line) + ": " + count.why;
}

// Each text was given to XBoard 4.9.1, which found the same games.
TEST(PgnCountTest, CountsTheGamesThatWinBoardFinds) {
  EXPECT_EQ(GamesIn(""), 0U);
  EXPECT_EQ(GamesIn("[Event \"A\"]\n\n1. a3 *\n"), 1U);
  EXPECT_EQ(GamesIn("[Event \"A\"]\n\n1. a3 *\n\n[Event \"B\"]\n\n1. b3 $4 1-0\n"), 2U);
  EXPECT_EQ(GamesIn("[Event \"A\"] [Site \"x\"]\n\n1. a3 *\n[Event \"B\"]\n{a comment}\n"
                    "[Site \"y\"]\n\n1. b3 *\n[Event \"C\"]\n1. c3 1-0 [Event \"D\"]\n1. d3\n"),
            4U);
  EXPECT_EQ(GamesIn("[Event \"A\"]\n1. a3\n[Event \"B\"]\n1... c6"), 2U) << "no results";
  EXPECT_EQ(GamesIn("[Event \"A\"]\n\n*\n\n[Event \"B\"]\n\n*\n"), 2U) << "no moves";
}

TEST(PgnCountTest, TagsWithoutAnythingBehindThemBelongToTheNextOnes) {
  EXPECT_EQ(GamesIn("[Event \"A\"]\n[Result \"*\"]\n\n[Event \"B\"]\n\n1. a3 *\n"), 1U);
}

TEST(PgnCountTest, WhatLooksLikeATagInAnotherThingIsNone) {
  EXPECT_EQ(GamesIn("[Event \"A\"]\n1. d3 {x [Event \"no\"]\n[Event \"no\"]} d6 *\n"), 1U);
  EXPECT_EQ(GamesIn("[Event \"A\"]\n1. d3 ; [Event \"no\"] { ( \nd6 *\n"), 1U);
  EXPECT_EQ(GamesIn("[Event \"A\"]\n1. d3 (1. e3 {x ) [Event \"no\"]} (1. f3 [x) e5) d6 *\n"), 1U);
  EXPECT_EQ(GamesIn("[Event \"A [x] 1. h3\"]\n[Site \"a \\\"] b\\\\\"]\n1. d3 *\n"), 1U);
}

TEST(PgnCountTest, AByteOrderMarkIsPassedOver) {
  EXPECT_EQ(GamesIn("\xEF\xBB\xBF[Event \"A\"]\n1. a3 *\n"), 1U);
}

TEST(PgnCountTest, AGameWithoutTagsIsNotUnderstood) {
  EXPECT_EQ(FaultIn("1. a3 *\n"), "1: a game without tags");
  EXPECT_EQ(FaultIn("[Event \"A\"]\n1. a3 *\n\n1. b3 *\n"), "4: a game without tags");
  EXPECT_EQ(FaultIn("PLAYER_FILE\n"), "1: a game without tags");
}

TEST(PgnCountTest, ARemarkThatWinBoardDoesNotKnowIsNotUnderstood) {
  EXPECT_EQ(FaultIn("[Event \"A\"]\n1. a3\n% [Event \"no\"]\na6 *\n"),
            "3: a remark behind a '%', which WinBoard does not know");
}

TEST(PgnCountTest, WhatDoesNotEndIsNotUnderstood) {
  EXPECT_EQ(FaultIn("[Event \"A\"]\n1. a3 {c\n\n"), "2: a comment that does not end");
  EXPECT_EQ(FaultIn("[Event \"A\"]\n1. a3 (1. b3\n\n"), "2: a variation that does not end");
  EXPECT_EQ(FaultIn("[Event \"A\n]\n1. a3\n"), "1: a tag that does not end");
  EXPECT_EQ(FaultIn("[Event \"A\"\n"), "1: a tag that does not end");
  EXPECT_EQ(FaultIn("[Event \"A\\"), "1: a tag that does not end");
  EXPECT_EQ(FaultIn("[Event \"A\"]\n1. a3 [%clk]\n"), "2: no tag");
  EXPECT_EQ(FaultIn("["), "1: no tag");
  EXPECT_EQ(FaultIn("[Event \"A\"]\n1. a3 ) b3\n"), "2: a bracket where there is none to be");
  EXPECT_EQ(FaultIn("[Event \"A\"]\n(1. a3)\n"), "2: a bracket where there is none to be");
  EXPECT_EQ(FaultIn("[Event \"A\"]\n1. a3 } b3\n"), "2: a bracket that nothing has opened");
}

TEST(PgnCountTest, AnyBytesComeToAnEnd) {
  std::string bytes;
  for (int i = 0; i < 5000; ++i)
    bytes += static_cast<char>((i * 131 + i / 7) % 256);
  for (std::size_t length = 0; length < bytes.size(); length += 13) {
    CountPgnGames(std::string_view(bytes).substr(length));
    CountPgnGames("[A \"" + bytes.substr(length));
  }
}

}  // namespace
}  // namespace tarvendo
