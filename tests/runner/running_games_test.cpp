#include "runner/running_games.h"

#include <gtest/gtest.h>

namespace tarvendo {
namespace {

GameOrder OrderOf(int number, const char* white) {
  GameOrder order;
  order.number = number;
  order.white = white;
  return order;
}

TEST(GamesUnderWay, AreKnownByTheirNumbersHoweverThoseAreChosen) {
  RunningGames running;
  for (const int number : {0, 7, 4000000, 4000001, 2147483647, -1, -2147483647}) {
    EXPECT_FALSE(running.HasNumber(number)) << number;
    running.Add(OrderOf(number, "Alpha"));
    EXPECT_TRUE(running.HasNumber(number)) << number;
    EXPECT_FALSE(running.HasNumber(6)) << number;
    running.Remove(OrderOf(number, "Alpha"));
    EXPECT_FALSE(running.HasNumber(number)) << number;
  }
  EXPECT_TRUE(running.IsEmpty());
}

TEST(GamesUnderWay, OfOneNumberAreKnownUntilTheLastOfThemGoes) {
  for (const int number : {5, -5}) {
    RunningGames running;
    running.Add(OrderOf(number, "Alpha"));
    running.Add(OrderOf(number, "Beta"));
    running.Remove(OrderOf(number, "Gamma"));
    running.Remove(OrderOf(number, "Alpha"));
    EXPECT_TRUE(running.HasNumber(number));
    EXPECT_EQ(running.Orders().size(), 1U);
    running.Remove(OrderOf(number, "Beta"));
    EXPECT_FALSE(running.HasNumber(number));
  }
}

}  // namespace
}  // namespace tarvendo
