#include "base/log.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

#include "base/text.h"
#include "fakes/captured_log.h"
#include "platform/faults.h"

namespace tarvendo {
namespace {

constexpr const char* kCreatingFailed =
    "\n**********************************************\n"
    "Error creating temporary file!\n"
    "**********************************************\n";
constexpr const char* kReopeningFailed =
    "\n**********************************************\n"
    "Error reopening temporary file!\n"
    "**********************************************\n";

/// "line 0001\n" and so on: ten bytes each.
std::string NumberedLines(int first, int last) {
  std::string text;
  for (int i = first; i <= last; ++i)
    text += Format("line %04d\n", i);
  return text;
}

class LogTest : public testing::Test {
 protected:
  CapturedLog machine;
  MemoryFileSystem& files = machine.files;
  Log& log = machine.log;
};

TEST_F(LogTest, AMessageGoesToEveryLogFileAndToTheConsole) {
  EXPECT_TRUE(log.AddFile("a.log"));
  EXPECT_TRUE(log.AddFile("b.log"));
  Print("Player %s has %d points, 100%%.\n", "Alpha", 3);
  EXPECT_EQ(machine.TakeOutput(), "Player Alpha has 3 points, 100%.\n");
  EXPECT_EQ(files.Bytes("a.log"), "Player Alpha has 3 points, 100%.\n");
  EXPECT_EQ(files.Bytes("b.log"), "Player Alpha has 3 points, 100%.\n");
  EXPECT_EQ(machine.TakeErrors(), "");
}

TEST_F(LogTest, TheLogFilesHaveAMessageBeforeTheConsole) {
  std::string in_file;
  Log own(
      machine.host, [&](const std::string&) { in_file = files.Bytes("a.log"); },
      [](const std::string&) {});
  own.AddFile("a.log");
  own.Write("message\n");
  EXPECT_EQ(in_file, "message\n");
}

TEST_F(LogTest, PercentSignsInAFinishedTextAreNoFormats) {
  PrintText("%s%n%d\n");
  EXPECT_EQ(machine.TakeOutput(), "%s%n%d\n");
}

TEST_F(LogTest, WithoutALogNothingIsPrintedAndNothingBreaks) {
  TheLog = nullptr;
  Print("%d\n", 1);
  PrintText("text\n");
  TheLog = &log;
  EXPECT_EQ(machine.TakeOutput(), "");
}

TEST_F(LogTest, AnEchoedLineGoesToTheLogFilesOnly) {
  log.AddFile("a.log");
  log.Echo("ShowGames\n");
  EXPECT_EQ(files.Bytes("a.log"), "ShowGames\n");
  EXPECT_EQ(machine.TakeOutput(), "");
}

TEST_F(LogTest, ALogFileIsEmptiedWhenItIsAdded) {
  files.Put("a.log", "what the last session left\n");
  EXPECT_TRUE(log.AddFile("a.log"));
  EXPECT_EQ(files.Bytes("a.log"), "");
}

TEST_F(LogTest, AFileInTheListIsEmptiedButNotAddedAgain) {
  EXPECT_TRUE(log.AddFile("a.log"));
  log.Write("once\n");
  EXPECT_TRUE(log.AddFile("/home/../home/a.log"));
  EXPECT_EQ(files.Bytes("a.log"), "");
  log.Write("twice?\n");
  EXPECT_EQ(files.Bytes("a.log"), "twice?\n");
}

TEST_F(LogTest, AFileThatCannotBeOpenedIsNotAdded) {
  EXPECT_FALSE(log.AddFile("nowhere\\a.log"));
  Print("still on the console\n");
  EXPECT_EQ(machine.TakeOutput(), "still on the console\n");
  EXPECT_TRUE(files.FileNames().empty());
}

TEST_F(LogTest, ALogFileIsTheSameOneAfterTheCurrentDirectoryHasChanged) {
  files.MakeDirectory("elsewhere");
  log.AddFile("a.log");
  files.ChangeDirectory("elsewhere");
  log.Write(NumberedLines(1, 300));
  log.Housekeep(2048);
  log.Write("end\n");
  EXPECT_EQ(files.FileNames(), std::vector<std::string>{"/home/a.log"});
  EXPECT_EQ(files.Bytes("/home/a.log"), NumberedLines(152, 300) + "line 0300\nend\n");
}

TEST_F(LogTest, AFullDiskDoesNotKeepMessagesFromTheConsole) {
  log.AddFile("a.log");
  files.FailAt(FileOperation::kWrite, 1);
  Print("first\n");
  Print("second\n");
  EXPECT_EQ(machine.TakeOutput(), "first\nsecond\n");
}

TEST_F(LogTest, TwoThreadsNeverMixInsideOneMessage) {
  log.AddFile("a.log");
  const auto print_many = [](char letter) {
    for (int i = 0; i < 200; ++i)
      PrintText(std::string(9, letter) + "\n");
  };
  std::thread other(print_many, 'a');
  print_many('b');
  other.join();
  const std::string console = machine.TakeOutput();
  ASSERT_EQ(console.size(), 4000U);
  for (std::size_t i = 0; i < console.size(); i += 10) {
    EXPECT_EQ(console.substr(i, 10), std::string(9, console[i]) + "\n");
  }
  EXPECT_EQ(files.Bytes("a.log"), console);
}

TEST_F(LogTest, TheLastLineOfAShellCommandComesTwice) {
  log.AddFile("a.log");
  machine.processes.on_shell = [](const std::string&) { return "a\nb\n"; };
  EXPECT_TRUE(log.RunShellCommand("dir  /b > x"));
  EXPECT_EQ(machine.TakeOutput(), "a\nb\nb\n");
  EXPECT_EQ(files.Bytes("a.log"), "a\nb\nb\n");
  ASSERT_EQ(machine.processes.ShellCalls().size(), 1U);
  EXPECT_EQ(machine.processes.ShellCalls()[0].line, "dir  /b > x");
}

TEST_F(LogTest, ALastLineWithoutLineFeedComesOnce) {
  machine.processes.on_shell = [](const std::string&) { return "a\nb"; };
  EXPECT_TRUE(log.RunShellCommand("dir"));
  EXPECT_EQ(machine.TakeOutput(), "a\nb");
}

TEST_F(LogTest, ACommandWithoutOutputPrintsNothing) {
  EXPECT_TRUE(log.RunShellCommand("cd"));
  EXPECT_EQ(machine.TakeOutput(), "");
  EXPECT_EQ(machine.TakeErrors(), "");
}

TEST_F(LogTest, LongShellOutputComesInPiecesOf510Characters) {
  const std::string line(1300, 'x');
  machine.processes.on_shell = [&](const std::string&) { return line + "\n"; };
  EXPECT_TRUE(log.RunShellCommand("long"));
  // The last piece, 280 characters and the line feed, is the one that comes twice.
  EXPECT_EQ(machine.TakeOutput(), line + "\n" + std::string(280, 'x') + "\n");
}

TEST_F(LogTest, OutputThatFillsItsLastPieceHasThatPieceTwice) {
  const std::string full(510, 'x');
  machine.processes.on_shell = [&](const std::string&) { return full; };
  EXPECT_TRUE(log.RunShellCommand("full"));
  EXPECT_EQ(machine.TakeOutput(), full + full);
}

TEST_F(LogTest, NulBytesAndPercentSignsOfShellOutputDoNoHarm) {
  machine.processes.on_shell = [](const std::string&) { return std::string("50%s\0hid\nz\n", 11); };
  EXPECT_TRUE(log.RunShellCommand("odd"));
  EXPECT_EQ(machine.TakeOutput(), "50%sz\nz\n");
}

TEST_F(LogTest, TheTemporaryFileIsInTheCurrentDirectoryAndGoesAway) {
  files.MakeDirectory("/games");
  files.ChangeDirectory("/games");
  log.RunShellCommand("dir");
  EXPECT_EQ(machine.processes.ShellCalls()[0].output, "/games/tmpfile.$$$");
  EXPECT_TRUE(files.FileNames().empty());
}

TEST_F(LogTest, ACommandThatChangesTheDirectoryOfTheProgramLosesNothing) {
  files.MakeDirectory("/games");
  machine.processes.on_shell = [&](const std::string&) {
    files.ChangeDirectory("/games");
    return "done\n";
  };
  EXPECT_TRUE(log.RunShellCommand("run"));
  EXPECT_EQ(machine.TakeOutput(), "done\ndone\n");
  EXPECT_TRUE(files.FileNames().empty());
}

TEST_F(LogTest, WithoutATemporaryFileTheCommandRunsUncaptured) {
  log.AddFile("a.log");
  machine.processes.shell_outcome = ShellOutcome::kNoOutputFile;
  EXPECT_FALSE(log.RunShellCommand("dir"));
  const auto calls = machine.processes.ShellCalls();
  ASSERT_EQ(calls.size(), 2U);
  EXPECT_EQ(calls[1].line, "dir");
  EXPECT_EQ(calls[1].output, "");
  EXPECT_EQ(machine.TakeErrors(), kCreatingFailed);
  EXPECT_EQ(machine.TakeOutput(), "");
  EXPECT_EQ(files.Bytes("a.log"), "");
}

TEST_F(LogTest, ACommandProcessorThatDoesNotStartPrintsNothing) {
  machine.processes.shell_outcome = ShellOutcome::kNotStarted;
  EXPECT_TRUE(log.RunShellCommand("dir"));
  EXPECT_EQ(machine.TakeOutput(), "");
  EXPECT_EQ(machine.TakeErrors(), "");
  EXPECT_TRUE(files.FileNames().empty());
}

TEST_F(LogTest, ATemporaryFileThatCannotBeReadIsLeftBehind) {
  files.Deny(FileOperation::kRead, "tmpfile.$$$");
  machine.processes.on_shell = [](const std::string&) { return "lost\n"; };
  EXPECT_FALSE(log.RunShellCommand("dir"));
  EXPECT_EQ(machine.TakeErrors(), kReopeningFailed);
  EXPECT_EQ(machine.TakeOutput(), "");
  EXPECT_TRUE(files.Has("tmpfile.$$$"));
}

TEST_F(LogTest, TheOutputOfACommandThatWasBrokenOffCanBeDropped) {
  machine.processes.on_shell = [](const std::string&) -> std::string { throw Terminated("told"); };
  EXPECT_THROW(log.RunShellCommand("dir"), Terminated);
  EXPECT_TRUE(files.Has("tmpfile.$$$"));
  log.DropShellOutput();
  EXPECT_EQ(files.Removed(), std::vector<std::string>{"/home/tmpfile.$$$"});
}

TEST_F(LogTest, AFileThatNoCommandHasLeftIsNotDropped) {
  files.Put("tmpfile.$$$", "mine\n");
  log.DropShellOutput();
  machine.processes.shell_outcome = ShellOutcome::kNoOutputFile;
  log.RunShellCommand("dir");
  log.DropShellOutput();
  files.Deny(FileOperation::kRead, "tmpfile.$$$");
  machine.processes.shell_outcome = ShellOutcome::kRan;
  log.RunShellCommand("dir");
  log.DropShellOutput();
  EXPECT_TRUE(files.Removed().empty());
}

class HousekeepTest : public LogTest {
 protected:
  HousekeepTest() { log.AddFile("a.log"); }

  /// The size of the log file after it had `size` bytes and was kept with `limit`.
  std::size_t SizeAfter(std::size_t size, std::int64_t limit) {
    log.AddFile("a.log");
    log.Write(std::string(size - 1, '.') + "\n");
    log.Housekeep(limit);
    return files.Bytes("a.log").size();
  }
};

TEST_F(HousekeepTest, ALogOf3000BytesKeepsTheLinesThatBeginBehindByte1500) {
  log.Write(NumberedLines(1, 300));
  log.Housekeep(2048);
  // Line 151 begins at byte 1500 itself and goes; the last line is there twice.
  EXPECT_EQ(files.Bytes("a.log"), NumberedLines(152, 300) + "line 0300\n");
  EXPECT_EQ(files.FileNames(), std::vector<std::string>{"/home/a.log"});
}

TEST_F(HousekeepTest, TheLogGoesOnBehindWhatWasKept) {
  log.Write(NumberedLines(1, 300));
  log.Housekeep(2048);
  log.Write("next\n");
  EXPECT_EQ(files.Bytes("a.log"), NumberedLines(152, 300) + "line 0300\nnext\n");
}

TEST_F(HousekeepTest, SmallLimitsCountAs2048) {
  EXPECT_EQ(SizeAfter(2047, 100), 2047U);
  EXPECT_LT(SizeAfter(2048, 100), 2048U);
  EXPECT_EQ(SizeAfter(2047, 1), 2047U);
  EXPECT_LT(SizeAfter(2048, 1), 2048U);
}

TEST_F(HousekeepTest, ZeroAndLessStandFor1048578) {
  EXPECT_EQ(SizeAfter(1048577, 0), 1048577U);
  EXPECT_LT(SizeAfter(1048578, 0), 1048578U);
  EXPECT_EQ(SizeAfter(1048577, -5), 1048577U);
  EXPECT_LT(SizeAfter(1048578, -5), 1048578U);
}

TEST_F(HousekeepTest, ALogBelowTheLimitIsNotTouched) {
  log.Write(NumberedLines(1, 300));
  log.Housekeep(3001);
  EXPECT_EQ(files.Bytes("a.log"), NumberedLines(1, 300));
  EXPECT_EQ(files.Count(FileOperation::kOpen), 1);
}

TEST_F(HousekeepTest, ALogThatHasJustReachedTheLimitIsCut) {
  log.Write(NumberedLines(1, 300));
  log.Housekeep(3000);
  EXPECT_EQ(files.Bytes("a.log"), NumberedLines(152, 300) + "line 0300\n");
}

TEST_F(HousekeepTest, OnlyTheFirstLogFileIsCut) {
  log.AddFile("b.log");
  log.Write(NumberedLines(1, 300));
  log.Housekeep(2048);
  EXPECT_EQ(files.Bytes("b.log"), NumberedLines(1, 300));
}

TEST_F(HousekeepTest, AFileThatCannotBeReplacedStaysAndGoesOn) {
  log.Write(NumberedLines(1, 300));
  files.FailAt(FileOperation::kRename, 1);
  log.Housekeep(2048);
  log.Write("next\n");
  EXPECT_EQ(files.Bytes("a.log"), NumberedLines(1, 300) + "next\n");
  EXPECT_FALSE(files.Has("a.$$$"));
}

TEST_F(HousekeepTest, WithoutAWorkingFileTheLogStaysAndGoesOn) {
  log.Write(NumberedLines(1, 300));
  files.Deny(FileOperation::kOpen, "a.$$$");
  log.Housekeep(2048);
  log.Write("next\n");
  EXPECT_EQ(files.Bytes("a.log"), NumberedLines(1, 300) + "next\n");
}

TEST_F(HousekeepTest, AFullDiskWhileCuttingCostsNothing) {
  log.Write(NumberedLines(1, 300));
  files.FailAt(FileOperation::kWrite, 1);
  log.Housekeep(2048);
  EXPECT_EQ(files.Bytes("a.log"), NumberedLines(1, 300));
  EXPECT_FALSE(files.Has("a.$$$"));
}

TEST_F(LogTest, HousekeepingWithoutALogFileDoesNothing) {
  log.Housekeep(0);
  EXPECT_TRUE(files.FileNames().empty());
}

}  // namespace
}  // namespace tarvendo
