#include "platform/processes.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <thread>

#include "platform/files.h"
#include "platform/paths.h"
#include "platform/scratch_directory.h"
#include "platform/waiting_batch.h"

namespace tarvendo {
namespace {

class WindowsProcessesTest : public testing::Test {
 protected:
  std::string OutputOf(const std::string& line) {
    EXPECT_EQ(processes_->RunShell(line, directory_.File("out")), ShellOutcome::kRan);
    return directory_.Bytes("out");
  }

  void RunBatch(const std::string& name, const std::string& text) {
    directory_.Put(name, text);
    const auto batch = processes_->StartBatch(directory_.File(name), nullptr);
    ASSERT_TRUE(batch.has_value());
    AwaitEnd(*batch);
  }

  void AwaitEnd(BatchId batch) {
    while (processes_->IsRunning(batch)) {
      std::this_thread::yield();
    }
  }

  ScratchDirectory directory_;
  std::unique_ptr<Processes> processes_ = MakeProcesses();
};

TEST_F(WindowsProcessesTest, ALineWithSeveralQuotedWordsReachesTheProcessorWhole) {
  directory_.Put("a b.txt", "first\r\n");
  directory_.Put("c d.txt", "second\r\n");
  const std::string names =
      processes_->ShellWords({directory_.File("a b.txt"), directory_.File("c d.txt")});
  const std::string text = OutputOf("type " + names);
  EXPECT_NE(text.find("first\r\n"), std::string::npos) << text;
  EXPECT_NE(text.find("second\r\n"), std::string::npos) << text;
}

TEST_F(WindowsProcessesTest, AProgramInADirectoryWithABlankIsRun) {
  std::filesystem::create_directory(directory_.Path() + "/my tools");
  directory_.Put("my tools/say.bat", "@echo [%~1]\r\n");
  EXPECT_EQ(OutputOf(processes_->ShellWords({directory_.File("my tools\\say.bat"), "a b"})),
            "[a b]\r\n");
}

TEST_F(WindowsProcessesTest, WithoutComspecTheSystemsProcessorIsUsed) {
  const std::string before = std::getenv("COMSPEC");
  _putenv("COMSPEC=");
  EXPECT_EQ(OutputOf("echo a"), "a\r\n");
  _putenv(("COMSPEC=" + before).c_str());
}

TEST_F(WindowsProcessesTest, TheProgramsDirectoryIsTheLastPlaceToLookForAProgram) {
  const std::string before = std::getenv("PATH");
  _putenv("PATH=c:\\windows\\system32");
  PrepareChildEnvironment();
  EXPECT_EQ(OutputOf("echo %PATH%"), "c:\\windows\\system32;" + ExecutableDirectory() + "\r\n");
  _putenv(("PATH=" + before).c_str());
}

TEST_F(WindowsProcessesTest, AMissingProcessorIsReported) {
  const std::string before = std::getenv("COMSPEC");
  _putenv("COMSPEC=c:\\no such processor.exe");
  EXPECT_EQ(processes_->RunShell("echo a", ""), ShellOutcome::kNotStarted);
  directory_.Put("g1.BAT", "@rem\r\n");
  EXPECT_FALSE(processes_->StartBatch(directory_.File("g1.BAT"), nullptr).has_value());
  _putenv(("COMSPEC=" + before).c_str());
}

TEST_F(WindowsProcessesTest, ABatchFileIsRunAndSeenToEnd) {
  RunBatch("g 1.BAT", "@if NOT EXIST \"" + directory_.File("out") + "\" echo made> \"" +
                          directory_.File("out") + "\"\r\n");
  EXPECT_EQ(directory_.Bytes("out").substr(0, 4), "made");
}

TEST_F(WindowsProcessesTest, TheGameGoesOnAndKeepsItsLockWhenTheProgramGoes) {
  const std::string path = directory_.File("g1.run");
  const auto files = MakeFileSystem();
  LockAttempt claim = files->Lock(path);
  ASSERT_NE(claim.file, nullptr);
  directory_.Put("wait", "");
  const auto batch = processes_->StartBatch(MakeWaitingBatch(directory_, "wait"), claim.file.get());
  ASSERT_TRUE(batch.has_value());
  claim.file.reset();
  processes_.reset();
  EXPECT_TRUE(files->IsLocked(path));
  EXPECT_TRUE(files->Lock(path).is_held);
  EXPECT_FALSE(files->Remove(path)) << "nobody deletes it meanwhile";
  std::filesystem::remove(directory_.Path() + "/wait");
  while (files->IsLocked(path)) {
    std::this_thread::yield();
  }
  EXPECT_TRUE(files->Remove(path));
}

TEST_F(WindowsProcessesTest, ABatchFileOfTheCurrentDirectoryIsRun) {
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(directory_.Path());
  directory_.Put("g1.BAT", "@echo made> out\r\n");
  const auto batch = processes_->StartBatch("g1.BAT", nullptr);
  ASSERT_TRUE(batch.has_value());
  AwaitEnd(*batch);
  std::filesystem::current_path(before);
  EXPECT_EQ(directory_.Bytes("out").substr(0, 4), "made");
}

}  // namespace
}  // namespace tarvendo
