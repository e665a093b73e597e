#include "console/options.h"

#include <gtest/gtest.h>

#include "console/command_args.h"
#include "fakes/captured_log.h"

namespace tarvendo {
namespace {

const std::vector<OptionForm> kForms = {{"-pla", true}, {"-all", false}, {"-bar", false, true}};

class Options : public ::testing::Test {
 protected:
  std::optional<GivenOptions> Read(const std::string& line) {
    args_.Fill(line);
    return ReadOptions(args_, kForms);
  }

  CapturedLog machine_;
  CommandArgs args_;
};

TEST_F(Options, AnOptionIsKnownByItsBeginningInAnyCase) {
  const auto given = Read("cmd -PLAyer 3 -allofthem");
  ASSERT_TRUE(given);
  EXPECT_EQ(given->Number("-pla"), 3);
  EXPECT_TRUE(given->Has("-all"));
  EXPECT_FALSE(given->Has("-bar"));
}

TEST_F(Options, ASwitchIsKnownByItsWholeLengthOnly) {
  EXPECT_TRUE(Read("cmd -BAR")->Has("-bar"));
  EXPECT_FALSE(Read("cmd -bars"));
}

TEST_F(Options, TheFirstUnknownOptionIsNamedAndNothingRead) {
  EXPECT_FALSE(Read("cmd -pla 3 -foo -bar2"));
  EXPECT_EQ(machine_.TakeOutput(), "I just don't know what you mean by '-foo'.\n");
}

TEST_F(Options, ALoneMinusIsAnUnknownOption) {
  EXPECT_FALSE(Read("cmd -"));
  EXPECT_EQ(machine_.TakeOutput(), "I just don't know what you mean by '-'.\n");
}

TEST_F(Options, AValueNeverBeginsWithAMinus) {
  const auto given = Read("cmd -pla -all");
  ASSERT_TRUE(given);
  EXPECT_EQ(given->Find("-pla")->value, "");
  EXPECT_TRUE(given->Has("-all"));
  EXPECT_FALSE(Read("cmd -pla -3"));
}

TEST_F(Options, TheValueIsOneWordTheRestGoesOnToTheNextOption) {
  const auto given = Read("cmd -pla My  Engine x -all");
  ASSERT_TRUE(given);
  EXPECT_EQ(given->Find("-pla")->value, "My");
  EXPECT_EQ(given->Find("-pla")->rest, "My  Engine x");
}

TEST_F(Options, WordsThatAreNeitherAreKept) {
  const auto given = Read("cmd file -pla 3 both -all more");
  ASSERT_TRUE(given);
  EXPECT_EQ(given->others, (std::vector<std::string>{"file", "both", "more"}));
}

TEST_F(Options, OfSeveralTheLastCounts) {
  EXPECT_EQ(Read("cmd -pla 3 -pla 4")->Number("-pla"), 4);
}

TEST_F(Options, AMissingOptionIsZero) {
  EXPECT_EQ(Read("cmd")->Number("-pla"), 0);
  EXPECT_EQ(Read("cmd -pla")->Number("-pla"), 0);
  EXPECT_EQ(Read("cmd -pla x")->Number("-pla"), 0);
}

}  // namespace
}  // namespace tarvendo
