#include "platform/posix/screen.h"

#include <gtest/gtest.h>

namespace tarvendo {
namespace {

/// "row:column"
std::string Place(const std::vector<int>& widths, int columns) {
  const ScreenPlace place = PlaceBehind(widths, columns);
  return std::to_string(place.row) + ":" + std::to_string(place.column);
}

TEST(Screen, ATextGoesOnInTheNextRow) {
  EXPECT_EQ(Place({}, 10), "0:0");
  EXPECT_EQ(Place(std::vector<int>(9, 1), 10), "0:9");
  EXPECT_EQ(Place(std::vector<int>(10, 1), 10), "1:0");
  EXPECT_EQ(Place(std::vector<int>(25, 1), 10), "2:5");
}

TEST(Screen, AWideCharacterWithoutRoomGoesToTheNextRow) {
  EXPECT_EQ(Place({1, 1, 1, 2}, 4), "1:2");
  EXPECT_EQ(Place({1, 1, 2}, 4), "1:0");
}

TEST(Screen, ATabLeadsToTheNextMultipleOfEight) {
  EXPECT_EQ(Place({1, kTabWidth, 1}, 80), "0:9");
}

TEST(Screen, WhatTakesNoRoomMovesNothing) {
  EXPECT_EQ(Place({1, 0, 0, 1}, 80), "0:2");
}

}  // namespace
}  // namespace tarvendo
