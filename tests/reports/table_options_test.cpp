#include "reports/table_options.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tourney/table_tourney.h"

namespace tarvendo {
namespace {

class TableDefaults : public TableTourney {};

TEST_F(TableDefaults, TheTextTableShowsAllButGamesLongCellsAndBar) {
  const TableOptions options = TextTableDefaults();
  EXPECT_FALSE(options.html);
  for (const TableSwitch& one : kTableSwitches) {
    const bool is_off =
        one.on == "-games" || one.on == "-long" || one.on == "-bar" || one.on == "-pics";
    EXPECT_EQ(options.*one.option, !is_off) << one.on;
  }
}

TEST_F(TableDefaults, TheHtmlTableHasTheBarToo) {
  const TableOptions options = HtmlTableDefaults(tourney);
  EXPECT_TRUE(options.html);
  EXPECT_TRUE(options.bar);
  EXPECT_FALSE(options.games);
  EXPECT_FALSE(options.long_cells);
  EXPECT_TRUE(options.rank && options.number && options.by_rank && options.cross &&
              options.points && options.tie_breaks);
}

TEST_F(TableDefaults, PicturesAreOnWhenPicsDirIsSet) {
  EXPECT_FALSE(HtmlTableDefaults(tourney).pictures);
  tourney.ChangeSettings()->pics_dir = "pics/";
  EXPECT_TRUE(HtmlTableDefaults(tourney).pictures);
}

TEST(TableSwitches, EachTurnsItsOwnOptionOnAndOff) {
  for (const TableSwitch& one : kTableSwitches) {
    TableOptions options;
    options.*one.option = false;
    EXPECT_TRUE(SetTableSwitch(options, one.on));
    EXPECT_TRUE(options.*one.option) << one.on;
    EXPECT_TRUE(SetTableSwitch(options, one.off));
    EXPECT_FALSE(options.*one.option) << one.off;
    const auto changed =
        std::count_if(kTableSwitches.begin(), kTableSwitches.end(), [&](const TableSwitch& other) {
          return options.*other.option != TableOptions().*other.option;
        });
    EXPECT_EQ(changed, TableOptions().*one.option ? 1 : 0) << one.on;
  }
}

TEST(TableSwitches, AreTakenInAnyCaseButByTheirWholeLength) {
  TableOptions options;
  EXPECT_TRUE(SetTableSwitch(options, "-NoRank"));
  EXPECT_FALSE(options.rank);
  for (const char* word : {"-ran", "-rankx", "rank", "-", "", "--rank", "-no"}) {
    EXPECT_FALSE(SetTableSwitch(options, word)) << word;
  }
  EXPECT_FALSE(options.rank);
}

}  // namespace
}  // namespace tarvendo
