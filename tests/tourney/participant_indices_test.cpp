#include "tourney/participant_indices.h"

#include <gtest/gtest.h>

#include <limits>

namespace tarvendo {
namespace {

std::vector<Player> PlayersWithNumbers(const std::vector<int>& numbers) {
  std::vector<Player> players;
  for (const int number : numbers) {
    players.emplace_back();
    players.back().number = number;
  }
  return players;
}

TEST(ParticipantIndices, FindsEveryParticipantInOrder) {
  const auto players = PlayersWithNumbers({1, 2, 3});
  const ParticipantIndices indices(players);
  EXPECT_EQ(indices.Of(1), 0);
  EXPECT_EQ(indices.Of(3), 2);
}

TEST(ParticipantIndices, KnowsWhoIsNotThere) {
  const auto players = PlayersWithNumbers({1, 2});
  const ParticipantIndices indices(players);
  for (const int number :
       {0, 3, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    EXPECT_EQ(indices.Of(number), -1) << number;
  }
  EXPECT_EQ(ParticipantIndices({}).Of(1), -1);
}

TEST(ParticipantIndices, FindsOddNumbersAnywhereAndTheFirstOfTwoAlike) {
  const auto players = PlayersWithNumbers({7, 7, 1, std::numeric_limits<int>::min(), 5});
  const ParticipantIndices indices(players);
  EXPECT_EQ(indices.Of(7), 0);
  EXPECT_EQ(indices.Of(1), 2);
  EXPECT_EQ(indices.Of(std::numeric_limits<int>::min()), 3);
  EXPECT_EQ(indices.Of(5), 4);
  EXPECT_EQ(indices.Of(2), -1);
}

}  // namespace
}  // namespace tarvendo
