#include <gtest/gtest.h>

#include "console/banner.h"

namespace tarvendo {
namespace {

TEST(Banner, IsABoxFortyCharactersWide) {
  EXPECT_EQ(Banner(),
            "\n ______________________________________\n"
            "|                                      |\n"
            "|   Tarvendo                           |\n"
            "|   ========                           |\n"
            "|                                      |\n"
            "|   version 0.32                       |\n"
            "|   25.09.2001                         |\n"
            "|                                      |\n"
            "|   Author:                            |\n"
            "|   The Tarvendo project               |\n"
            "|                                      |\n"
            "|   Email:                             |\n"
            "|   tarvendo@example.org               |\n"
            "|                                      |\n"
            "|   Download:                          |\n"
            "|   tarvendo.example.org               |\n"
            "|                                      |\n"
            "|______________________________________|\n\n");
}

}  // namespace
}  // namespace tarvendo
