#include "players/text_limit.h"

#include <gtest/gtest.h>

#include <string>

#include "fakes/captured_log.h"
#include "players/player.h"

namespace tarvendo {
namespace {

TEST(TextLimit, TextsThatFitIntoALineOfARecordAreKept) {
  CapturedLog machine;
  const std::string longest(254, 'x');
  PlayerTexts texts{longest, longest, longest, longest, longest, longest, longest};
  CutToLines(texts);
  EXPECT_EQ(machine.TakeOutput(), "");
  EXPECT_EQ(texts.name + texts.dir + texts.group, longest + longest + longest);
}

TEST(TextLimit, EveryTextThatDoesNotFitIsCutAndNamed) {
  CapturedLog machine;
  const std::string too_long(255, 'x');
  const std::string cut(254, 'x');
  PlayerTexts texts{too_long, too_long, too_long, too_long, too_long, too_long, too_long};
  CutToLines(texts);
  std::string expected;
  for (const std::string field :
       {"Name", "ProgramExe", "Group", "WhiteOptions", "BlackOptions", "Dir", "InitString"}) {
    expected += field + " of player '" + cut + "' cut to 254 characters.\n";
  }
  EXPECT_EQ(machine.TakeOutput(), expected);
  for (const std::string& text : {texts.name, texts.dir, texts.init_string, texts.white_options,
                                  texts.black_options, texts.program_exe, texts.group}) {
    EXPECT_EQ(text, cut);
  }
}

TEST(TextLimit, ANameWithPercentSignsIsPrintedAsItIs) {
  CapturedLog machine;
  PlayerTexts texts;
  texts.name = "100%s%n";
  texts.dir = std::string(1000, 'd');
  CutToLines(texts);
  EXPECT_EQ(machine.TakeOutput(), "Dir of player '100%s%n' cut to 254 characters.\n");
}

}  // namespace
}  // namespace tarvendo
