// Batch files of any host: told apart, seen to end, and the locks that they are handed.
#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>
#include <thread>

#include "platform/files.h"
#include "platform/processes.h"
#include "platform/scratch_directory.h"
#include "platform/waiting_batch.h"

namespace tarvendo {
namespace {

class Batches : public testing::Test {
 protected:
  Batches() {
    processes_->SetEndListener([this] {
      const std::lock_guard<std::mutex> guard(mutex_);
      ++ends_told_;
      told_.notify_all();
    });
  }

  /// Starts a batch file that runs until Finish is called with the same name.
  BatchId Start(const std::string& name, const LockedFile* lock = nullptr) {
    directory_.Put(name, "");
    const auto batch = processes_->StartBatch(MakeWaitingBatch(directory_, name), lock);
    EXPECT_TRUE(batch.has_value());
    return batch.value_or(0);
  }

  void Finish(const std::string& name) { std::filesystem::remove(directory_.Path() + "/" + name); }

  /// Until the end has been told.
  void AwaitEnd(BatchId batch) {
    std::unique_lock<std::mutex> held(mutex_);
    told_.wait(held, [&] { return !processes_->IsRunning(batch) && ends_told_ > 0; });
  }

  /// What a process holds it lets go a moment after its end.
  void AwaitFree(const std::string& path) {
    while (files_->IsLocked(path)) {
      std::this_thread::yield();
    }
  }

  int EndsTold() {
    const std::lock_guard<std::mutex> guard(mutex_);
    return ends_told_;
  }

  ScratchDirectory directory_;
  std::unique_ptr<FileSystem> files_ = MakeFileSystem();
  std::mutex mutex_;
  std::condition_variable told_;
  int ends_told_ = 0;  ///< guarded by mutex_
  std::unique_ptr<Processes> processes_ = MakeProcesses();
};

TEST_F(Batches, ABatchFileRunsUntilItEndsAndItsEndIsTold) {
  const BatchId batch = Start("a");
  EXPECT_TRUE(processes_->IsRunning(batch));
  EXPECT_EQ(EndsTold(), 0);
  Finish("a");
  AwaitEnd(batch);
  EXPECT_EQ(EndsTold(), 1);
  EXPECT_FALSE(processes_->IsRunning(batch));
}

TEST_F(Batches, OneThatHangsSaysNothingAboutTheOthers) {
  const BatchId hanging = Start("a");
  for (const char* name : {"b", "c"}) {
    const BatchId other = Start(name);
    EXPECT_NE(other, hanging);
    Finish(name);
    AwaitEnd(other);
    EXPECT_TRUE(processes_->IsRunning(hanging));
  }
  Finish("a");
  AwaitEnd(hanging);
}

TEST_F(Batches, WithoutAListenerNobodyIsTold) {
  processes_->SetEndListener(nullptr);
  const BatchId batch = Start("a");
  Finish("a");
  while (processes_->IsRunning(batch)) {
    std::this_thread::yield();
  }
  EXPECT_EQ(EndsTold(), 0);
}

TEST_F(Batches, TheLockIsHeldUntilTheBatchFileHasEnded) {
  const std::string path = directory_.File("g1.run");
  LockAttempt claim = files_->Lock(path);
  ASSERT_NE(claim.file, nullptr);
  const BatchId batch = Start("a", claim.file.get());
  claim.file.reset();
  EXPECT_TRUE(files_->IsLocked(path));
  EXPECT_TRUE(files_->Lock(path).is_held);
  Finish("a");
  AwaitEnd(batch);
  AwaitFree(path);
  EXPECT_NE(files_->Lock(path).file, nullptr);
}

TEST_F(Batches, TheLockOutlivesTheBatchFileWhereTheProgramHoldsItToo) {
  const std::string path = directory_.File("g1.run");
  const LockAttempt claim = files_->Lock(path);
  ASSERT_NE(claim.file, nullptr);
  const BatchId batch = Start("a", claim.file.get());
  Finish("a");
  AwaitEnd(batch);
  EXPECT_TRUE(files_->IsLocked(path));
  EXPECT_TRUE(claim.file->Replace("still ours\n"));
}

TEST_F(Batches, AnotherBatchFileGetsNoneOfIt) {
  const std::string path = directory_.File("g1.run");
  LockAttempt claim = files_->Lock(path);
  ASSERT_NE(claim.file, nullptr);
  const BatchId first = Start("a", claim.file.get());
  const BatchId second = Start("b");
  claim.file.reset();
  Finish("a");
  AwaitEnd(first);
  AwaitFree(path);
  EXPECT_TRUE(processes_->IsRunning(second));
  Finish("b");
  AwaitEnd(second);
}

TEST_F(Batches, EndingOneEndsWhatItHasStartedAndNoOther) {
  const std::string path = directory_.File("g1.run");
  LockAttempt claim = files_->Lock(path);
  ASSERT_NE(claim.file, nullptr);
  const BatchId ended = Start("a", claim.file.get());
  const BatchId other = Start("b");
  claim.file.reset();
  processes_->EndBatch(ended);
  AwaitEnd(ended);
  AwaitFree(path);
  EXPECT_TRUE(processes_->IsRunning(other));
  Finish("b");
  AwaitEnd(other);
}

TEST_F(Batches, EndingOneThatHasEndedChangesNothing) {
  const BatchId batch = Start("a");
  Finish("a");
  AwaitEnd(batch);
  processes_->EndBatch(batch);
  EXPECT_FALSE(processes_->IsRunning(batch));
}

}  // namespace
}  // namespace tarvendo
