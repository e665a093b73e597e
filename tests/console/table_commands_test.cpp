#include <gtest/gtest.h>

#include "console/typed_commands.h"
#include "console/unknown_word_text.h"
#include "reports/table_driver.h"

namespace tarvendo {
namespace {

class TableCommands : public TypedCommands {
 protected:
  /// The text table with these options.
  std::string Expected(const TableOptions& options) {
    machine.TakeOutput();
    UpdateAndWriteTable(tourney, machine.files, "stdout", options);
    return machine.TakeOutput();
  }
};

TEST_F(TableCommands, TheTextTableGoesToTheConsole) {
  const std::string table = Expected(TextTableDefaults());
  EXPECT_NE(table.find("Alpha"), std::string::npos);
  EXPECT_EQ(Type("texttable"), table);
  EXPECT_EQ(Type("tex stdout"), table);
}

TEST_F(TableCommands, TheTextTableGoesToAFile) {
  EXPECT_EQ(Type("tex /t/out.txt"), "");
  EXPECT_EQ(machine.files.Bytes("/t/out.txt"), Expected(TextTableDefaults()));
}

TEST_F(TableCommands, TheHtmlTableGoesToTheFilesPathOrToAFile) {
  EXPECT_EQ(Type("table"), "");
  EXPECT_EQ(Type("tab /t/other.htm"), "");
  const std::string html = machine.files.Bytes("/t/table.htm");
  EXPECT_NE(html.find("<"), std::string::npos);
  EXPECT_EQ(machine.files.Bytes("/t/other.htm"), html);
}

TEST_F(TableCommands, SwitchesAreKnownByTheirWholeLengthInAnyCase) {
  TableOptions options = TextTableDefaults();
  options.rank = false;
  options.games = true;
  EXPECT_EQ(Type("tex -NoRank -games"), Expected(options));
  EXPECT_EQ(Type("tex -noran"), Unknown("-noran"));
  EXPECT_EQ(Type("tex -games -gamesx"), Unknown("-gamesx"));
}

TEST_F(TableCommands, OfTwoOppositeSwitchesTheLaterCounts) {
  TableOptions options = TextTableDefaults();
  options.rank = false;
  EXPECT_EQ(Type("tex -rank -norank"), Expected(options));
  EXPECT_EQ(Type("tex -norank -rank"), Expected(TextTableDefaults()));
}

TEST_F(TableCommands, AnUnknownSwitchWritesNothing) {
  EXPECT_EQ(Type("table /t/other.htm -foo"), Unknown("-foo"));
  EXPECT_FALSE(machine.files.Has("/t/other.htm"));
}

TEST_F(TableCommands, AFileThatCannotBeWrittenIsReported) {
  EXPECT_EQ(Type("table /nowhere/table.htm"), "Can't open file /nowhere/table.htm!\n");
}

}  // namespace
}  // namespace tarvendo
