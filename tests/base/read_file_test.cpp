#include "base/read_file.h"

#include <gtest/gtest.h>

#include "fakes/captured_log.h"

namespace tarvendo {
namespace {

class ReadFileTest : public testing::Test {
 protected:
  CapturedLog machine;
};

TEST_F(ReadFileTest, AFileUpToItsLimitIsReadAndItsLineEndsFolded) {
  machine.files.Put("a", "one\r\ntwo\n");
  EXPECT_EQ(ReadFile(machine.files, "a", 9), "one\ntwo\n");
  EXPECT_EQ(machine.TakeOutput(), "");
}

TEST_F(ReadFileTest, AFileBeyondItsLimitIsNotReadAndSaidSo) {
  machine.files.Put("a", std::string((3U << 20U) + 1, 'x'));
  EXPECT_EQ(ReadFile(machine.files, "a", 3U << 20U), std::nullopt);
  EXPECT_EQ(machine.TakeOutput(), "The file 'a' has more than 3 megabytes, so it is not read.\n");
}

TEST_F(ReadFileTest, AFileThatIsNotThereGivesNothingAndNoMessage) {
  EXPECT_EQ(ReadFile(machine.files, "a", 9), std::nullopt);
  EXPECT_EQ(machine.TakeOutput(), "");
}

}  // namespace
}  // namespace tarvendo
