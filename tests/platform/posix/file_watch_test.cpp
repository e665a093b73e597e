#include "platform/file_watch.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <future>
#include <iterator>

#include "platform/posix/open_descriptors.h"
#include "platform/scratch_directory.h"

namespace tarvendo {
namespace {

TEST(PosixWatches, ManyWatchesLeaveNoDescriptorBehind) {
  const ScratchDirectory directory;
  const auto watches = MakeFileWatches();
  const auto kept = watches->Watch(directory.File("kept"), [] {});
  ASSERT_NE(kept, nullptr);
  const auto before = OpenDescriptors();
  for (int i = 0; i < 20000; ++i) {
    ASSERT_NE(watches->Watch(directory.File("a"), [] {}), nullptr) << i;
  }
  EXPECT_EQ(OpenDescriptors(), before);
}

TEST(PosixWatches, NothingIsOpenedBeforeTheFirstWatchButWhatWakesTheThread) {
  const auto before = OpenDescriptors();
  const auto watches = MakeFileWatches();
  EXPECT_EQ(OpenDescriptors(), before + 1);
}

/// The kernel keeps so many notices at the most, and then throws away what comes.
int MostNotices() {
  int most = 0;
  std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> most;
  return most;
}

TEST(PosixWatches, WhenNoticesAreLostEverybodyIsTold) {
  const ScratchDirectory directory;
  const auto watches = MakeFileWatches();
  std::promise<void> is_blocked;
  std::promise<void> go_on;
  std::promise<void> told;
  std::atomic<bool> is_first = true;
  std::atomic<bool> is_told = false;
  const auto blocking = watches->Watch(directory.File("first"), [&] {
    if (!is_first.exchange(false)) return;
    is_blocked.set_value();
    go_on.get_future().wait();
  });
  const auto watch = watches->Watch(directory.File("last"), [&] {
    if (!is_told.exchange(true)) told.set_value();
  });
  ASSERT_NE(watch, nullptr);
  directory.Put("first", "");
  is_blocked.get_future().wait();
  std::ofstream one(directory.Path() + "/one");
  std::ofstream two(directory.Path() + "/two");
  for (int i = 0; i < MostNotices(); ++i) {
    one << 'x' << std::flush;
    two << 'x' << std::flush;
  }
  directory.Put("last", "lost");
  go_on.set_value();
  told.get_future().wait();
}

TEST(PosixWatches, TheEndOfTheDirectoryIsTold) {
  const ScratchDirectory directory;
  std::filesystem::create_directory(directory.Path() + "/d");
  const auto watches = MakeFileWatches();
  std::promise<void> told;
  std::atomic<bool> is_told = false;
  auto watch = watches->Watch(directory.File("d\\a"), [&] {
    if (!is_told.exchange(true)) told.set_value();
  });
  ASSERT_NE(watch, nullptr);
  std::filesystem::remove(directory.Path() + "/d");
  told.get_future().wait();
  watch.reset();
  std::filesystem::create_directory(directory.Path() + "/d");
  EXPECT_NE(watches->Watch(directory.File("d\\a"), [] {}), nullptr);
}

}  // namespace
}  // namespace tarvendo
