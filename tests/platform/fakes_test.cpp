// What the fakes of processes, locks and notices do for the tests that use them.
#include <gtest/gtest.h>

#include "fakes/memory_file_system.h"
#include "fakes/scripted_processes.h"
#include "fakes/scripted_watches.h"

namespace tarvendo {
namespace {

class Fakes : public testing::Test {
 protected:
  MemoryFileSystem files_;
  ScriptedProcesses processes_{files_};
  ScriptedWatches watches_;
};

TEST_F(Fakes, ABatchFileRunsUntilTheTestEndsItAndKeepsItsLock) {
  int told = 0;
  processes_.SetEndListener([&] { ++told; });
  LockAttempt claim = files_.Lock("g1.run");
  EXPECT_EQ(processes_.StartBatch("g1.BAT", claim.file.get()), BatchId{1});
  EXPECT_EQ(processes_.StartBatch("g2.BAT", nullptr), BatchId{2});
  claim.file.reset();
  EXPECT_TRUE(processes_.IsRunning(1));
  EXPECT_TRUE(files_.IsLocked("g1.run"));
  processes_.EndOf(1);
  EXPECT_FALSE(processes_.IsRunning(1));
  EXPECT_TRUE(processes_.IsRunning(2));
  EXPECT_FALSE(files_.IsLocked("g1.run"));
  EXPECT_EQ(told, 1);
}

TEST_F(Fakes, WhatABatchFileHasStartedMayOutliveIt) {
  LockAttempt claim = files_.Lock("g1.run");
  processes_.StartBatch("g1.BAT", claim.file.get());
  claim.file.reset();
  processes_.LeaderEnds(1);
  EXPECT_FALSE(processes_.IsRunning(1));
  EXPECT_TRUE(files_.IsLocked("g1.run"));
  processes_.EndBatch(1);
  EXPECT_FALSE(files_.IsLocked("g1.run"));
  EXPECT_EQ(processes_.EndedBatches(), std::vector<BatchId>{1});
}

TEST_F(Fakes, ABatchFileMayEndBeforeItsStartIsOver) {
  processes_.on_batch = [&](const std::string&) {
    processes_.EndOf(processes_.LastBatch());
    return true;
  };
  EXPECT_EQ(processes_.StartBatch("g1.BAT", nullptr), BatchId{1});
  EXPECT_FALSE(processes_.IsRunning(1));
}

TEST_F(Fakes, OneThatDoesNotStartHoldsNothing) {
  processes_.on_batch = [](const std::string&) { return false; };
  LockAttempt claim = files_.Lock("g1.run");
  EXPECT_FALSE(processes_.StartBatch("g1.BAT", claim.file.get()).has_value());
  claim.file.reset();
  EXPECT_FALSE(files_.IsLocked("g1.run"));
}

TEST_F(Fakes, AnotherProcessHoldsALockUntilItEnds) {
  files_.HoldLock("g1.run", "the other program");
  files_.HoldLock("g2.run", "the other program");
  EXPECT_TRUE(files_.Lock("g1.run").is_held);
  files_.EndProcess("the other program");
  EXPECT_FALSE(files_.IsLocked("g2.run"));
  EXPECT_NE(files_.Lock("g1.run").file, nullptr);
}

TEST_F(Fakes, LocksAndDirectoriesCanFail) {
  files_.Deny(FileOperation::kLock, "g1.run");
  EXPECT_EQ(files_.Lock("g1.run").file, nullptr);
  EXPECT_FALSE(files_.Lock("g1.run").is_held);
  EXPECT_FALSE(files_.Has("g1.run"));
  files_.FailAt(FileOperation::kLock, 2);
  EXPECT_NE(files_.Lock("g2.run").file, nullptr);
  EXPECT_EQ(files_.Lock("g2.run").file, nullptr);
  const LockAttempt claim = files_.Lock("g2.run");
  files_.FailAt(FileOperation::kWrite, 1);
  EXPECT_FALSE(claim.file->Replace("12345678"));
  EXPECT_EQ(files_.Bytes("g2.run"), "1234");
  files_.FailAt(FileOperation::kMakeDirectory, 1);
  EXPECT_FALSE(files_.MakeDirectory("d"));
  EXPECT_TRUE(files_.MakeDirectory("d"));
}

TEST_F(Fakes, NoticesComeWhenTheTestSaysSo) {
  int told = 0;
  auto watch = watches_.Watch("/t\\winboard.debug", [&] { ++told; });
  EXPECT_EQ(watches_.Watched(), std::vector<std::string>{"/t/winboard.debug"});
  watches_.Notify("/t/other");
  watches_.Notify("/t/winboard.debug");
  EXPECT_EQ(told, 1);
  watch.reset();
  watches_.Notify("/t/winboard.debug");
  EXPECT_EQ(told, 1);
  watches_.gives_notices = false;
  EXPECT_EQ(watches_.Watch("/t/a", [] {}), nullptr);
}

}  // namespace
}  // namespace tarvendo
