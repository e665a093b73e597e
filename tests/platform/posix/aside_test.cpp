// Command lines that run beside the program, and the batch reader's steps without a file.

#include <gtest/gtest.h>

#include <condition_variable>
#include <cstdlib>
#include <mutex>
#include <string>
#include <thread>

#include "platform/batch_plan.h"
#include "platform/files.h"
#include "platform/processes.h"
#include "platform/scratch_directory.h"

namespace tarvendo {
namespace {

class Aside : public testing::Test {
 protected:
  Aside() {
    processes_->SetEndListener([this] {
      const std::lock_guard<std::mutex> guard(mutex_);
      told_.notify_all();
    });
  }

  void AwaitEnd(BatchId id) {
    std::unique_lock<std::mutex> held(mutex_);
    told_.wait(held, [&] { return !processes_->IsRunning(id); });
  }

  std::string PathOf(const std::string& name) const { return directory_.Path() + "/" + name; }

  ScratchDirectory directory_;
  std::unique_ptr<FileSystem> files_ = MakeFileSystem();
  std::mutex mutex_;
  std::condition_variable told_;
  std::unique_ptr<Processes> processes_ = MakeProcesses();
};

TEST_F(Aside, WhatALinePrintsIsInTheFileWhenItHasEnded) {
  const auto id =
      processes_->StartShell("echo one; echo two >&2; cat; exit 3", PathOf("said"), nullptr);
  ASSERT_TRUE(id);
  AwaitEnd(*id);
  EXPECT_EQ(files_->ReadText(PathOf("said")), "one\n") << "nothing is read, errors go elsewhere";
}

TEST_F(Aside, ALineHoldsItsLockUntilItHasEnded) {
  const std::string go = PathOf("go");
  auto lock = files_->Lock(PathOf("claim")).file;
  const auto id = processes_->StartShell("until [ -e '" + go + "' ]; do sleep 0.01; done",
                                         PathOf("said"), lock.get());
  lock.reset();
  ASSERT_TRUE(id);
  EXPECT_TRUE(processes_->IsRunning(*id));
  EXPECT_TRUE(files_->IsLocked(PathOf("claim")));
  directory_.Put("go", "");
  AwaitEnd(*id);
  while (files_->IsLocked(PathOf("claim")))
    std::this_thread::yield();
}

TEST_F(Aside, ALineIsEndedWithWhatItHasStarted) {
  const auto id = processes_->StartShell("sleep 1000 & sleep 1000", PathOf("said"), nullptr);
  ASSERT_TRUE(id);
  processes_->EndBatch(*id);
  AwaitEnd(*id);
}

TEST_F(Aside, ALineWhoseOutputCannotBeKeptIsNotStarted) {
  EXPECT_FALSE(processes_->StartShell("true", PathOf("missing/said"), nullptr));
}

TEST_F(Aside, StepsAreRunByTheBatchReaderWhateverComspecSays) {
  setenv("COMSPEC", "/bin/false", 1);
  const auto id =
      processes_->StartSteps(ParseBatch("@rem nothing\n@if NOT EXIST " + PathOf("there") +
                                        " cp /dev/null " + PathOf("there") + "\n"));
  unsetenv("COMSPEC");
  ASSERT_TRUE(id);
  AwaitEnd(*id);
  EXPECT_TRUE(files_->Exists(PathOf("there")));
}

}  // namespace
}  // namespace tarvendo
