#include "reports/table_driver.h"

#include <gtest/gtest.h>

#include "tourney/table_tourney.h"

namespace tarvendo {
namespace {

class TableDriver : public TableTourney {
 protected:
  void SetUp() override {
    MakeRoundRobin();
    AddPlayer("Bishop");
    AddPlayer("Rook");
    Play(1, 2, kBlackWins);
  }

  static constexpr const char* kTable =
      "Rank|No  |Name  |1|2|Pts |S-B  |\n"
      "----|----|------|-|-|----|-----|\n"
      "  1.|  2.|Rook  |+|X| 1.0| 0.00|\n"
      "  2.|  1.|Bishop|X|-| 0.0| 0.00|\n";
};

TEST_F(TableDriver, TheNameStdoutPrintsTheTable) {
  EXPECT_TRUE(UpdateAndWriteTable(tourney, machine.files, "stdout", TextTableDefaults()));
  EXPECT_EQ(machine.TakeOutput(), kTable);
  EXPECT_TRUE(machine.files.FileNames().empty());
}

TEST_F(TableDriver, AnyOtherNameIsAFileThatIsReplaced) {
  machine.files.Put("cup.txt", std::string(10000, 'x'));
  EXPECT_TRUE(UpdateAndWriteTable(tourney, machine.files, "cup.txt", TextTableDefaults()));
  EXPECT_EQ(machine.files.Bytes("cup.txt"), kTable);
  EXPECT_TRUE(UpdateAndWriteTable(tourney, machine.files, "STDOUT", TextTableDefaults()));
  EXPECT_EQ(machine.files.Bytes("STDOUT"), kTable);
  EXPECT_EQ(machine.files.FileNames().size(), 2U);
  EXPECT_EQ(machine.TakeOutput(), "");
}

TEST_F(TableDriver, WithoutANameItIsTableHtmBehindFilesPath) {
  EXPECT_TRUE(UpdateAndWriteTable(tourney, machine.files, "", TextTableDefaults()));
  EXPECT_EQ(machine.files.Bytes("table.htm"), kTable);
  machine.files.MakeDirectory("/t");
  tourney.ChangeSettings()->files_path = "/t\\cup_";
  EXPECT_TRUE(UpdateAndWriteTable(tourney, machine.files, "", HtmlTableDefaults(tourney)));
  EXPECT_EQ(machine.files.Bytes("/t/cup_table.htm").substr(0, 6), "<html>");
}

TEST_F(TableDriver, ComputesTheStandingsAndTheRounds) {
  tourney.ChangeSettings()->rounds = 99;
  UpdateAndWriteTable(tourney, machine.files, "stdout", TextTableDefaults());
  EXPECT_EQ(P(2).points, 4);
  EXPECT_EQ(P(2).rank, 1);
  EXPECT_EQ(tourney.Settings().rounds, 1);
  EXPECT_EQ(tourney.name_width, 6);
}

TEST_F(TableDriver, TheRoundsOfASwissAreAdjustedBeforeTheTable) {
  tourney.ChangeSettings()->type = kSwiss;
  tourney.ChangeSettings()->rounds = 9;
  UpdateAndWriteTable(tourney, machine.files, "stdout", TextTableDefaults());
  EXPECT_EQ(machine.TakeOutput(),
            "Number of rounds adjusted to 1 (maximum).\n"
            "Rank|No  |Name  |   1|Pts |Buch |S-B  |\n"
            "----|----|------|----|----|-----|-----|\n"
            "  1.|  2.|Rook  |+B1 | 1.0|  0.0| 0.00|\n"
            "  2.|  1.|Bishop|-W2 | 0.0|  1.0| 0.00|\n");
  EXPECT_EQ(tourney.State().round, 2) << "the standings look at Rounds before it is adjusted";
}

TEST_F(TableDriver, AFileThatCannotBeOpenedIsAMessageAndNothingIsComputed) {
  tourney.ChangeSettings()->rounds = 99;
  EXPECT_FALSE(
      UpdateAndWriteTable(tourney, machine.files, "/nowhere/cup%s.txt", TextTableDefaults()));
  EXPECT_EQ(machine.TakeOutput(), "Can't open file /nowhere/cup%s.txt!\n");
  EXPECT_EQ(P(2).points, 0);
  EXPECT_EQ(tourney.Settings().rounds, 99);
}

TEST_F(TableDriver, ADirectoryOfThatNameIsAMessage) {
  machine.files.PutDirectory("/t/table.htm");
  tourney.ChangeSettings()->files_path = "/t/";
  EXPECT_FALSE(UpdateAndWriteTable(tourney, machine.files, "", TextTableDefaults()));
  EXPECT_EQ(machine.TakeOutput(), "Can't open file /t/table.htm!\n");
}

TEST_F(TableDriver, AFileThatMayNotBeWrittenStaysAsItWas) {
  machine.files.Put("cup.txt", "old");
  machine.files.Deny(FileOperation::kOpen, "cup.txt");
  EXPECT_FALSE(UpdateAndWriteTable(tourney, machine.files, "cup.txt", TextTableDefaults()));
  EXPECT_EQ(machine.TakeOutput(), "Can't open file cup.txt!\n");
  EXPECT_EQ(machine.files.Bytes("cup.txt"), "old");
}

TEST_F(TableDriver, ASaveThatFailsLeavesTheOldTableOrNone) {
  for (const FileOperation operation :
       {FileOperation::kWrite, FileOperation::kClose, FileOperation::kRename}) {
    machine.files.Put("old.txt", "old");
    machine.files.FailAt(operation, 1);
    EXPECT_FALSE(UpdateAndWriteTable(tourney, machine.files, "old.txt", TextTableDefaults()));
    EXPECT_EQ(machine.files.Bytes("old.txt"), "old");
    EXPECT_EQ(machine.TakeOutput(), "Can't open file old.txt!\n");
    machine.files.FailAt(operation, 1);
    EXPECT_FALSE(UpdateAndWriteTable(tourney, machine.files, "new.txt", TextTableDefaults()));
    EXPECT_EQ(machine.files.FileNames(), std::vector<std::string>{"/home/old.txt"});
    machine.TakeOutput();
  }
}

TEST_F(TableDriver, ADeviceIsWrittenInPlaceAndOpenedOnce) {
  machine.files.Put("/dev/lp", "");
  machine.files.MakeSpecial("/dev/lp");
  EXPECT_TRUE(UpdateAndWriteTable(tourney, machine.files, "/dev/lp", TextTableDefaults()));
  EXPECT_EQ(machine.files.Bytes("/dev/lp"), kTable);
  EXPECT_EQ(machine.files.Count(FileOperation::kOpen), 1);
  machine.files.FailAt(FileOperation::kWrite, 1);
  EXPECT_FALSE(UpdateAndWriteTable(tourney, machine.files, "/dev/lp", TextTableDefaults()));
  EXPECT_EQ(machine.TakeOutput(), "Can't open file /dev/lp!\n");
  EXPECT_TRUE(machine.files.Has("/dev/lp"));
}

}  // namespace
}  // namespace tarvendo
