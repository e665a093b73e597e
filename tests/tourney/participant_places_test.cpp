#include "tourney/participant_places.h"

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

TEST(ParticipantPlaces, FindsEveryParticipantInItsPlace) {
  const auto players = PlayersWithNumbers({1, 2, 3});
  const ParticipantPlaces places(players);
  EXPECT_EQ(places.Of(1), 0);
  EXPECT_EQ(places.Of(3), 2);
}

TEST(ParticipantPlaces, KnowsWhoIsNotThere) {
  const auto players = PlayersWithNumbers({1, 2});
  const ParticipantPlaces places(players);
  for (const int number :
       {0, 3, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    EXPECT_EQ(places.Of(number), -1) << number;
  }
  EXPECT_EQ(ParticipantPlaces({}).Of(1), -1);
}

TEST(ParticipantPlaces, FindsOddNumbersAnywhereAndTheFirstOfTwoAlike) {
  const auto players = PlayersWithNumbers({7, 7, 1, std::numeric_limits<int>::min(), 5});
  const ParticipantPlaces places(players);
  EXPECT_EQ(places.Of(7), 0);
  EXPECT_EQ(places.Of(1), 2);
  EXPECT_EQ(places.Of(std::numeric_limits<int>::min()), 3);
  EXPECT_EQ(places.Of(5), 4);
  EXPECT_EQ(places.Of(2), -1);
}

}  // namespace
}  // namespace tarvendo
