#include "platform/clock.h"

#include <gtest/gtest.h>

#include <ctime>

namespace tarvendo {
namespace {

TEST(PosixClock, TheTextIsThatOfTheCLibrary) {
  for (std::time_t seconds = 0; seconds < 2000000000; seconds += 86400 * 37 + 3671) {
    ASSERT_EQ(LocalTimeText(seconds), std::asctime(std::localtime(&seconds))) << seconds;
  }
}

}  // namespace
}  // namespace tarvendo
