#include "console/name_list.h"

#include <gtest/gtest.h>

#include <array>

#include "fakes/captured_log.h"

namespace tarvendo {
namespace {

constexpr const char* kIntroduction = "What do you want?\nCurrently available are:\n";

TEST(NameList, NamesStandTwoToALine) {
  CapturedLog machine;
  PrintNameList(std::array{"AutoRun", "Get", "Name", "AVeryLongNameIndeed"});
  EXPECT_EQ(machine.TakeOutput(),
            std::string(kIntroduction) +
                "  AutoRun        \t  Get            \n  Name           \t  AVeryLongNameIndeed\n");
}

TEST(NameList, AnOddNameOutLeavesItsLineOpen) {
  CapturedLog machine;
  PrintNameList(std::array{"Get"});
  EXPECT_EQ(machine.TakeOutput(), std::string(kIntroduction) + "  Get            \t");
}

TEST(NameList, NoNamesAreOnlyTheIntroduction) {
  CapturedLog machine;
  PrintNameList({});
  EXPECT_EQ(machine.TakeOutput(), kIntroduction);
}

}  // namespace
}  // namespace tarvendo
