// Who holds a game's lock, and how a game is ended with all that belongs to it.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <thread>

#include "platform/files.h"
#include "platform/paths.h"
#include "platform/posix/batch_watch.h"
#include "platform/posix/child_setup.h"
#include "platform/processes.h"
#include "platform/scratch_directory.h"

namespace tarvendo {
namespace {

class BatchLock : public testing::Test {
 protected:
  BatchLock() {
    unsetenv("COMSPEC");
    directory_.Put("wait", "");
  }

  std::string Host(const std::string& name) const { return HostPath(directory_.File(name)); }

  /// Makes a program of these lines; `$D` is the test's directory.
  std::string MakeProgram(const std::string& name, const std::string& script) {
    directory_.Put(name, "#!/bin/sh\nD='" + directory_.Path() + "'\n" + script);
    std::filesystem::permissions(Host(name), std::filesystem::perms::owner_all);
    return Host(name);
  }

  /// Starts a batch file that runs the program, handing the claim on.
  BatchId Start(const std::string& program) {
    directory_.Put("g1.BAT", program + "\n");
    const auto batch = processes_->StartBatch(directory_.File("g1.BAT"), claim_.file.get());
    EXPECT_TRUE(batch.has_value());
    return batch.value_or(0);
  }

  void AwaitEnd(BatchId batch) {
    while (processes_->IsRunning(batch)) {
      std::this_thread::yield();
    }
  }

  void AwaitFile(const std::string& name) {
    while (directory_.Bytes(name) == "(missing)" || directory_.Bytes(name).empty()) {
      std::this_thread::yield();
    }
  }

  void AwaitFree() {
    while (files_->IsLocked(path_)) {
      std::this_thread::yield();
    }
  }

  ScratchDirectory directory_;
  std::string path_ = directory_.File("g1.run");
  std::unique_ptr<FileSystem> files_ = MakeFileSystem();
  LockAttempt claim_ = files_->Lock(path_);
  std::unique_ptr<Processes> processes_ = MakeProcesses();
};

/// A process in a session of its own that writes its number into a file and goes on.
constexpr const char* kHandOn =
    "setsid sh -c 'echo $$ > \"$0\"/pid; while [ -e \"$0\"/wait ]; do sleep 0.01; done' \"$D\" &\n";

TEST_F(BatchLock, ItIsHeldUntilTheLastProcessOfTheGameHasEnded) {
  const BatchId batch = Start(MakeProgram("launcher", kHandOn));
  claim_.file.reset();
  AwaitEnd(batch);
  EXPECT_TRUE(files_->IsLocked(path_));
  EXPECT_TRUE(files_->Lock(path_).is_held);
  std::filesystem::remove(Host("wait"));
  AwaitFree();
}

TEST_F(BatchLock, TheGameGoesOnWhenTheProgramGoes) {
  Start(MakeProgram("plays", "while [ -e $D/wait ]; do sleep 0.01; done\n"));
  claim_.file.reset();
  processes_.reset();
  EXPECT_TRUE(files_->IsLocked(path_));
  std::filesystem::remove(Host("wait"));
  EXPECT_GT(waitpid(-1, nullptr, 0), 0);
  AwaitFree();
}

TEST_F(BatchLock, AScriptThatUsesTheSmallDescriptorsItselfStillHoldsIt) {
  const BatchId batch = Start(
      MakeProgram("script",
                  "exec 3>$D/three 4>$D/four 5>$D/five 6>$D/six 7>$D/seven 8>$D/eight 9>$D/nine\n"
                  "echo > $D/ready; while [ -e $D/wait ]; do sleep 0.01; done\n"));
  claim_.file.reset();
  AwaitFile("ready");
  EXPECT_TRUE(files_->IsLocked(path_));
  std::filesystem::remove(Host("wait"));
  AwaitEnd(batch);
  AwaitFree();
}

TEST_F(BatchLock, TheGameGetsItsLockAndNothingElseThatIsOpen) {
  const LockAttempt other = files_->Lock(directory_.File("g2.run"));
  const auto log = files_->Create(directory_.File("log"));
  const int left_open = open("/dev/null", O_RDONLY);  // as if a library had forgotten it
  const std::string lists = MakeProgram("lists", "readlink /proc/$$/fd/* > $D/list\n");
  const BatchId batch = Start(lists);
  AwaitEnd(batch);
  close(left_open);
  const std::string list = directory_.Bytes("list");
  EXPECT_NE(list.find("/g1.run\n"), std::string::npos) << list;
  EXPECT_EQ(list.find("/g2.run"), std::string::npos) << list;
  EXPECT_EQ(list.find("/log"), std::string::npos) << list;
  EXPECT_EQ(list.find("anon_inode"), std::string::npos) << list;
  EXPECT_EQ(list.find("/dev/null"), list.rfind("/dev/null")) << list;
}

TEST_F(BatchLock, AProcessorOfTheUsersGetsItTooAndNothingElse) {
  const LockAttempt other = files_->Lock(directory_.File("g2.run"));
  const auto log = files_->Create(directory_.File("log"));
  setenv("COMSPEC", MakeProgram("lists", "readlink /proc/$$/fd/* > $D/list\n").c_str(), 1);
  const BatchId batch = Start("anything");
  unsetenv("COMSPEC");
  AwaitEnd(batch);
  const std::string list = directory_.Bytes("list");
  EXPECT_NE(list.find("/g1.run\n"), std::string::npos) << list;
  EXPECT_EQ(list.find("/g2.run"), std::string::npos) << list;
  EXPECT_EQ(list.find("/log"), std::string::npos) << list;
  EXPECT_EQ(list.find("anon_inode"), std::string::npos) << list;
}

TEST_F(BatchLock, ACommandThatGoesOnDoesNotHoldIt) {
  const std::string line =
      processes_->ShellWords({MakeProgram("goes_on", std::string(kHandOn) + "true\n")});
  EXPECT_EQ(processes_->RunShell(line, ""), ShellOutcome::kRan);
  AwaitFile("pid");
  claim_.file.reset();
  EXPECT_FALSE(files_->IsLocked(path_));
  std::filesystem::remove(Host("wait"));
}

TEST_F(BatchLock, AFileThatIsRemovedWhileItIsHeldIsLockedAnewByTheNext) {
  EXPECT_TRUE(files_->Remove(path_));
  EXPECT_FALSE(files_->IsLocked(path_));
  EXPECT_NE(files_->Lock(path_).file, nullptr);
}

TEST_F(BatchLock, WhoLooksIsNotTakenForAHolder) {
  claim_.file.reset();
  std::atomic<bool> is_over = false;
  std::thread looks([&] {
    while (!is_over) {
      files_->IsLocked(path_);
    }
  });
  int taken = 0;
  while (taken < 5000 && files_->Lock(path_).file != nullptr) {
    ++taken;
  }
  is_over = true;
  looks.join();
  EXPECT_EQ(taken, 5000);
}

TEST_F(BatchLock, APipeOrADeviceIsNoFileToLock) {
  ASSERT_EQ(mkfifo(Host("pipe").c_str(), 0600), 0);
  for (const std::string& path : {directory_.File("pipe"), std::string("/dev/null")}) {
    EXPECT_EQ(files_->Lock(path).file, nullptr) << path;
    EXPECT_FALSE(files_->Lock(path).is_held) << path;
    EXPECT_FALSE(files_->IsLocked(path)) << path;
  }
}

TEST_F(BatchLock, EndingTheGameReachesWhatHasLeftItsGroupAndKeepsTheLock) {
  const BatchId batch = Start(MakeProgram("launcher", kHandOn));
  claim_.file.reset();
  AwaitEnd(batch);
  AwaitFile("pid");
  processes_->EndBatch(batch);
  AwaitFree();
}

TEST_F(BatchLock, WhoOnlyReadsTheClaimIsLeftAlone) {
  const BatchId batch = Start(MakeProgram("plays", "while :; do sleep 0.01; done\n"));
  const std::string reader =
      MakeProgram("reader",
                  "exec < $D/g1.run; echo > $D/reads; while [ -e $D/wait ]; do sleep 0.01; done\n"
                  "echo > $D/read\n");
  directory_.Put("g2.BAT", reader + "\n");
  const auto reading = processes_->StartBatch(directory_.File("g2.BAT"), nullptr);
  AwaitFile("reads");
  processes_->EndBatch(batch);
  AwaitEnd(batch);
  claim_.file.reset();
  AwaitFree();
  EXPECT_TRUE(processes_->IsRunning(reading.value_or(0)));
  std::filesystem::remove(Host("wait"));
  AwaitEnd(reading.value_or(0));
  EXPECT_EQ(directory_.Bytes("read"), "\n");
}

TEST_F(BatchLock, TheGameIsAskedToEndBeforeItIsKilled) {
  const BatchId batch = Start(MakeProgram(
      "polite",
      "trap 'echo > $D/asked; exit 0' TERM; echo > $D/ready\nwhile :; do sleep 0.01; done\n"));
  AwaitFile("ready");
  processes_->EndBatch(batch);
  AwaitEnd(batch);
  EXPECT_EQ(directory_.Bytes("asked"), "\n");
}

/// A deaf process, started as a batch file is, and watched with no time to end by itself.
class DeafGame : public BatchLock {
 protected:
  DeafGame() {
    EXPECT_TRUE(watch_.Start());
    std::string program =
        MakeProgram("deaf",
                    "trap '' TERM; setsid sh -c 'trap \"\" TERM; echo > \"$0\"/ready; while [ -e "
                    "\"$0\"/wait ]; do sleep 0.01; done' \"$D\" & wait\n");
    ChildSetup setup;
    setup.LeaveProcessGroup();
    setup.HandOn(static_cast<int>(claim_.file->HostHandle()));
    const std::array<char*, 2> arguments = {program.data(), nullptr};
    batch_ = watch_.Add(setup.Spawn(arguments.data()).value_or(-1), IdentityOf(*claim_.file));
    claim_.file.reset();
    AwaitFile("ready");
  }

  BatchWatch watch_{std::chrono::milliseconds(1)};
  BatchId batch_ = 0;
};

TEST_F(DeafGame, WhatDoesNotEndByItselfIsKilledWithAllThatHoldsTheLock) {
  watch_.End(batch_);
  while (watch_.IsRunning(batch_)) {
    std::this_thread::yield();
  }
  AwaitFree();
}

TEST_F(BatchLock, AGameIsSeenToEndWhereTheKernelDoesNotTellOfIt) {
  std::string program = MakeProgram("plays", "while [ -e $D/wait ]; do sleep 0.01; done\n");
  const std::array<char*, 2> arguments = {program.data(), nullptr};
  ChildSetup setup;
  setup.LeaveProcessGroup();
  BatchWatch watch{std::chrono::milliseconds(1)};
  ASSERT_TRUE(watch.Start());
  const auto child = setup.Spawn(arguments.data());
  ASSERT_TRUE(child.has_value());
  rlimit before{};
  ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
  const rlimit none{3, before.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
  const BatchId batch = watch.Add(*child, std::nullopt);
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &before), 0);
  EXPECT_TRUE(watch.IsRunning(batch));
  std::filesystem::remove(Host("wait"));
  while (watch.IsRunning(batch)) {
    std::this_thread::yield();
  }
  EXPECT_EQ(waitpid(*child, nullptr, WNOHANG), -1) << "it is reaped";
}

TEST(DeafGameAtTheEnd, WhatWasToEndIsKilledBeforeTheProgramGoes) {
  const ScratchDirectory directory;
  std::string sleeps = "sleep";
  std::string long_time = "100000";
  const std::array<char*, 3> arguments = {sleeps.data(), long_time.data(), nullptr};
  ChildSetup setup;
  setup.LeaveProcessGroup();
  signal(SIGTERM, SIG_IGN);  // The child inherits that.
  const auto child = setup.Spawn(arguments.data());
  signal(SIGTERM, SIG_DFL);
  ASSERT_TRUE(child.has_value());
  {
    BatchWatch watch(std::chrono::hours(1));
    ASSERT_TRUE(watch.Start());
    watch.End(watch.Add(*child, std::nullopt));
  }
  siginfo_t end{};
  ASSERT_EQ(waitid(P_PID, static_cast<id_t>(*child), &end, WEXITED), 0);
  EXPECT_EQ(end.si_code, CLD_KILLED);
  EXPECT_EQ(end.si_status, SIGKILL);
}

}  // namespace
}  // namespace tarvendo
