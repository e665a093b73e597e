#include "pairing/chain_outlook.h"

#include <gtest/gtest.h>

#include <numeric>

#include "pairing/hand_made_field.h"

namespace tarvendo {
namespace {

/// The limits of a chain of brackets with so many players each; `most` is k.
std::vector<std::size_t> Limits(const Numbers& sizes, std::size_t most) {
  int players = 0;
  std::vector<Numbers> brackets;
  for (const int size : sizes) {
    brackets.emplace_back(static_cast<std::size_t>(size));
    std::iota(brackets.back().begin(), brackets.back().end(), players + 1);
    players += size;
  }
  const PairingField field = FreshField(static_cast<std::size_t>(players));
  const FloaterLimits limits(ChainOf(field, brackets), 0, most);
  std::vector<std::size_t> found;
  for (std::size_t i = 0; i < sizes.size(); ++i)
    found.push_back(limits.Of(i));
  return found;
}

using Counts = std::vector<std::size_t>;

TEST(FloaterLimits, TheFirstPassFloatsOnePlayerWhereTheCountIsOdd) {
  EXPECT_EQ(Limits({3, 4, 5, 4}, 0), (Counts{1, 1, 0, 0}));
}

TEST(FloaterLimits, EachBracketHandsOnTheLargestNumberOfItsParityWithinThatBeforeIt) {
  EXPECT_EQ(Limits({20, 21, 21, 20}, 6), (Counts{6, 5, 4, 4}));
}

TEST(FloaterLimits, ABracketLetsNoMoreGoThanTheFirstCountAboveHalfOfItsEntries) {
  EXPECT_EQ(Limits({4, 20}, 10).front(), 4U);
  EXPECT_EQ(Limits({6, 20}, 10).front(), 4U);
  EXPECT_EQ(Limits({7, 20}, 10).front(), 5U);
  EXPECT_EQ(Limits({1, 20}, 10).front(), 1U);
}

TEST(FloaterLimits, ASmallBracketBoundsWhatALargeOneBehindItGetsFromFarAbove) {
  // Ten come into the bracket of four, which is one of 14 then: eight are the most that go on.
  EXPECT_EQ(Limits({16, 4, 16}, 10), (Counts{10, 8, 10}));
}

}  // namespace
}  // namespace tarvendo
