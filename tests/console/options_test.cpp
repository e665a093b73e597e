#include "console/options.h"

#include <gtest/gtest.h>

#include <array>

#include "console/command_args.h"
#include "console/unknown_word_text.h"
#include "fakes/captured_log.h"

namespace tarvendo {
namespace {

constexpr OptionForm kPla{"-pla", true};
constexpr OptionForm kAll{"-all", false};
constexpr OptionForm kBar{"-bar", false, true};
constexpr std::array kForms = {kPla, kAll, kBar};

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
  EXPECT_EQ(given->Number(kPla), 3);
  EXPECT_TRUE(given->Has(kAll));
  EXPECT_FALSE(given->Has(kBar));
}

TEST_F(Options, ASwitchIsKnownByItsWholeLengthOnly) {
  EXPECT_TRUE(Read("cmd -BAR")->Has(kBar));
  EXPECT_FALSE(Read("cmd -bars"));
}

TEST_F(Options, TheFirstUnknownOptionIsNamedAndNothingRead) {
  EXPECT_FALSE(Read("cmd -pla 3 -foo -bar2"));
  EXPECT_EQ(machine_.TakeOutput(), Unknown("-foo"));
}

TEST_F(Options, ALoneMinusIsAnUnknownOption) {
  EXPECT_FALSE(Read("cmd -"));
  EXPECT_EQ(machine_.TakeOutput(), Unknown("-"));
}

TEST_F(Options, AValueNeverBeginsWithAMinus) {
  const auto given = Read("cmd -pla -all");
  ASSERT_TRUE(given);
  EXPECT_EQ(given->Find(kPla)->value, "");
  EXPECT_TRUE(given->Has(kAll));
  EXPECT_FALSE(Read("cmd -pla -3"));
}

TEST_F(Options, TheValueIsOneWordTheRestGoesOnToTheNextOption) {
  const auto given = Read("cmd -pla My  Engine x -all");
  ASSERT_TRUE(given);
  EXPECT_EQ(given->Find(kPla)->value, "My");
  EXPECT_EQ(given->Find(kPla)->rest, "My  Engine x");
}

TEST_F(Options, WordsThatAreNeitherAreKept) {
  const auto given = Read("cmd file -pla 3 both -all more");
  ASSERT_TRUE(given);
  EXPECT_EQ(given->others, (std::vector<std::string>{"file", "both", "more"}));
}

TEST_F(Options, OfSeveralTheLastCounts) {
  EXPECT_EQ(Read("cmd -pla 3 -pla 4")->Number(kPla), 4);
}

TEST_F(Options, AMissingOptionIsZero) {
  EXPECT_EQ(Read("cmd")->Number(kPla), 0);
  EXPECT_EQ(Read("cmd -pla")->Number(kPla), 0);
  EXPECT_EQ(Read("cmd -pla x")->Number(kPla), 0);
}

}  // namespace
}  // namespace tarvendo
