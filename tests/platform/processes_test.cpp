#include "platform/processes.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "platform/files.h"
#include "platform/input.h"
#include "platform/scratch_directory.h"

namespace tarvendo {
namespace {

class ProcessesOfAnyHost : public testing::Test {
 protected:
  std::string OutputText() {
    return MakeFileSystem()->ReadText(directory_.File("out")).value_or("(missing)");
  }

  ScratchDirectory directory_;
  std::unique_ptr<Processes> processes_ = MakeProcesses();
};

TEST_F(ProcessesOfAnyHost, AShellCommandWritesToTheFile) {
  EXPECT_EQ(processes_->RunShell("echo a&& echo b", directory_.File("out")), ShellOutcome::kRan);
  EXPECT_EQ(OutputText(), "a\nb\n");
}

TEST_F(ProcessesOfAnyHost, TheOutputReplacesWhatIsInTheFile) {
  directory_.Put("out", "something that is longer than the output\n");
  EXPECT_EQ(processes_->RunShell("echo a", directory_.File("out")), ShellOutcome::kRan);
  EXPECT_EQ(OutputText(), "a\n");
}

TEST_F(ProcessesOfAnyHost, ACommandThatFailsHasRunAllTheSame) {
  EXPECT_EQ(processes_->RunShell("exit 3", directory_.File("out")), ShellOutcome::kRan);
  EXPECT_EQ(OutputText(), "");
}

TEST_F(ProcessesOfAnyHost, WithoutItsOutputFileNothingIsRun) {
  const std::string made = directory_.File("made");
  EXPECT_EQ(processes_->RunShell("echo a> " + processes_->ShellWords({made}),
                                 directory_.File("missing\\out")),
            ShellOutcome::kNoOutputFile);
  EXPECT_FALSE(MakeFileSystem()->Exists(made));
}

TEST_F(ProcessesOfAnyHost, WithoutAFileTheOutputGoesWhereTheProgramsOwnGoes) {
  testing::internal::CaptureStdout();
  EXPECT_EQ(processes_->RunShell("echo a", ""), ShellOutcome::kRan);
  const std::string text = testing::internal::GetCapturedStdout();
  EXPECT_EQ(text.substr(0, 1), "a");
}

TEST_F(ProcessesOfAnyHost, OnlyTheChildsOutputGoesToTheFile) {
  testing::internal::CaptureStdout();
  std::atomic<bool> done{false};
  std::atomic<int> printed{0};
  std::thread printer([&] {
    do {
      WriteConsole("from the program\n");
      ++printed;
    } while (!done);
  });
  while (printed == 0) {
    std::this_thread::yield();
  }
  EXPECT_EQ(processes_->RunShell("echo a&& echo b", directory_.File("out")), ShellOutcome::kRan);
  done = true;
  printer.join();
  const std::string text = testing::internal::GetCapturedStdout();
  EXPECT_EQ(OutputText(), "a\nb\n");
  EXPECT_EQ(text.find("b\n"), std::string::npos);
  EXPECT_NE(text.find("from the program"), std::string::npos);
}

TEST_F(ProcessesOfAnyHost, AMissingBatchFileIsNotStarted) {
  EXPECT_FALSE(processes_->StartBatch(directory_.File("missing.BAT"), nullptr).has_value());
}

TEST_F(ProcessesOfAnyHost, NothingRunsThatWasNeverStarted) {
  EXPECT_FALSE(processes_->IsRunning(0));
  EXPECT_FALSE(processes_->IsRunning(1));
  processes_->EndBatch(1);
}

}  // namespace
}  // namespace tarvendo
