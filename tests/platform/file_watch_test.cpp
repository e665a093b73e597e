#include "platform/file_watch.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>
#include <vector>

#include "platform/files.h"
#include "platform/scratch_directory.h"

namespace tarvendo {
namespace {

/// Counts notices, and lets the test wait for them.
class Bell {
 public:
  std::function<void()> Ring() {
    return [this] {
      const std::lock_guard<std::mutex> guard(mutex_);
      ++count_;
      rung_.notify_all();
    };
  }

  /// Waits for a notice that nobody has waited for.
  void Await() {
    std::unique_lock<std::mutex> held(mutex_);
    rung_.wait(held, [this] { return count_ > 0; });
    count_ = 0;
  }

  int Count() {
    const std::lock_guard<std::mutex> guard(mutex_);
    return count_;
  }

 private:
  std::mutex mutex_;
  std::condition_variable rung_;
  int count_ = 0;
};

class Watches : public testing::Test {
 protected:
  std::unique_ptr<FileWatch> Watch(const std::string& name, Bell& bell) {
    auto watch = watches_->Watch(directory_.File(name), bell.Ring());
    EXPECT_NE(watch, nullptr);
    return watch;
  }

  ScratchDirectory directory_;
  std::unique_ptr<FileSystem> files_ = MakeFileSystem();
  std::unique_ptr<FileWatches> watches_ = MakeFileWatches();
};

TEST_F(Watches, AFileIsToldOfWhenItAppearsGrowsAndGoes) {
  Bell bell;
  const auto watch = Watch("winboard.debug", bell);
  const auto file = files_->Create(directory_.File("winboard.debug"));
  ASSERT_NE(file, nullptr);
  bell.Await();
  EXPECT_TRUE(file->Write("GameEnds\n") && file->Flush());
  bell.Await();
  EXPECT_TRUE(file->Close());
  EXPECT_TRUE(files_->Rename(directory_.File("winboard.debug"), directory_.File("other")));
  bell.Await();
  EXPECT_TRUE(files_->Rename(directory_.File("other"), directory_.File("winboard.debug")));
  bell.Await();
  EXPECT_TRUE(files_->Remove(directory_.File("winboard.debug")));
  bell.Await();
}

TEST_F(Watches, OtherFilesOfTheDirectoryAreNotToldOf) {
  Bell bell;
  Bell end;
  const auto watch = Watch("a", bell);
  const auto last = Watch("z", end);
  directory_.Put("b", "text");
  directory_.Put("a2", "text");
  directory_.Put("z", "text");
  end.Await();
  EXPECT_EQ(bell.Count(), 0);
}

TEST_F(Watches, EverybodyWhoWatchesIsTold) {
  Bell one;
  Bell two;
  const auto first = Watch("a", one);
  auto second = Watch("a", two);
  directory_.Put("a", "text");
  one.Await();
  two.Await();
  second.reset();
  EXPECT_TRUE(files_->Remove(directory_.File("a")));
  one.Await();
}

TEST_F(Watches, AWatchThatHasEndedTellsNothingMore) {
  Bell ended;
  Bell bell;
  Watch("a", ended).reset();
  const auto watch = Watch("a", bell);
  directory_.Put("a", "text");
  bell.Await();
  EXPECT_EQ(ended.Count(), 0);
}

TEST_F(Watches, AFileOfTheCurrentDirectoryIsWatchedThereWhateverIsTheCurrentOneLater) {
  const std::string before = files_->FullPath("x");
  ASSERT_TRUE(files_->ChangeDirectory(directory_.Path()));
  Bell bell;
  const auto watch = watches_->Watch("a", bell.Ring());
  ASSERT_TRUE(files_->ChangeDirectory(before.substr(0, before.size() - 1)));
  ASSERT_NE(watch, nullptr);
  directory_.Put("a", "text");
  bell.Await();
}

TEST_F(Watches, WithoutItsDirectoryNothingIsWatched) {
  Bell bell;
  EXPECT_EQ(watches_->Watch(directory_.File("missing\\a"), bell.Ring()), nullptr);
  EXPECT_EQ(watches_->Watch(directory_.File("a") + std::string(1, '\0'), bell.Ring()), nullptr);
}

TEST_F(Watches, WatchesCanEndInAnyOrderAndBeginAnew) {
  for (int i = 0; i < 200; ++i) {
    Bell bell;
    auto first = Watch("a", bell);
    auto second = Watch("b", bell);
    auto third = Watch("a", bell);
    (i % 2 == 0 ? first : third).reset();
    directory_.Put("a", "text");
    bell.Await();
  }
}

}  // namespace
}  // namespace tarvendo
