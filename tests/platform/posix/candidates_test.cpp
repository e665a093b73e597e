#include "platform/posix/candidates.h"

#include <gtest/gtest.h>

namespace tarvendo {
namespace {

TEST(Candidates, OnesTextAndItsBlankAreWhatIsMissing) {
  EXPECT_EQ(Extended({{"ShowGames"}}), "ShowGames ");
  EXPECT_EQ(Extended({{"games/", false}}), "games/");
}

TEST(Candidates, OfSeveralTheCommonBeginningIs) {
  EXPECT_EQ(Extended({{"ShowGames"}, {"ShowPlayers"}}), "Show");
  EXPECT_EQ(Extended({{"ReSpool"}, {"Reset"}}), "ReS");
  EXPECT_EQ(Extended({{"cd"}, {"View"}}), "");
  EXPECT_EQ(Extended({{"Big Engine"}, {"Big Engine 2"}}), "Big Engine");
}

TEST(Candidates, NoCharacterIsCutInTwo) {
  EXPECT_EQ(Extended({{"J\xc3\xa4ger"}, {"J\xc3\xb6rg"}}), "J");
}

TEST(Candidates, AreListedBelowEachOther) {
  EXPECT_EQ(InColumns({{"a"}, {"b"}, {"c"}}, 80), "a  b  c\n");
  EXPECT_EQ(InColumns({{"one"}, {"two"}, {"three"}}, 13), "one    three\ntwo\n");
  EXPECT_EQ(InColumns({{"one"}, {"two"}}, 1), "one\ntwo\n");
}

TEST(Candidates, OfVeryManyTheRestIsCounted) {
  const std::string text = InColumns(std::vector<Candidate>(205, Candidate{"x"}), 4);
  EXPECT_TRUE(text.ends_with("x\n... and 5 more\n"));
}

}  // namespace
}  // namespace tarvendo
