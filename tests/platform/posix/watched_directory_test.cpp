#include "platform/file_watch.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <string>

#include "platform/scratch_directory.h"

namespace tarvendo {
namespace {

/// The numbers of the directories that the kernel watches for this process.
std::set<std::string> WatchedNumbers() {
  std::set<std::string> numbers;
  for (const auto& info : std::filesystem::directory_iterator("/proc/self/fdinfo")) {
    std::ifstream lines(info.path());
    for (std::string line; std::getline(lines, line);) {
      if (line.starts_with("inotify wd:")) numbers.insert(line.substr(0, line.find(" ino:")));
    }
  }
  return numbers;
}

class WatchedDirectory : public testing::Test {
 protected:
  std::unique_ptr<FileWatch> Watch(const std::string& path) {
    auto watch = watches_->Watch(path, [] {});
    EXPECT_NE(watch, nullptr);
    return watch;
  }

  ScratchDirectory directory_;
  std::unique_ptr<FileWatches> watches_ = MakeFileWatches();
};

TEST_F(WatchedDirectory, ADirectoryIsWatchedOnFromOneGameToTheNext) {
  auto watch = Watch(directory_.File("winboard.debug"));
  const auto first = WatchedNumbers();
  ASSERT_EQ(first.size(), 1U);
  for (int game = 2; game < 9; ++game) {
    watch.reset();
    const std::string place = directory_.Path() + "/g" + std::to_string(game) + ".place";
    std::filesystem::create_directory(place);
    Watch(place + "/winboard.debug").reset();
    EXPECT_EQ(WatchedNumbers(), first) << "a game's own directory is not kept";
    watch = Watch(directory_.File("winboard.debug"));
    EXPECT_EQ(WatchedNumbers(), first);
  }
}

TEST_F(WatchedDirectory, ADirectoryThatHasGoneIsNotKept) {
  const std::string place = directory_.Path() + "/place";
  for (int i = 0; i < 5; ++i) {
    std::filesystem::create_directory(place);
    auto watch = Watch(place + "/winboard.debug");
    if (i % 2 == 0) watch.reset();
    std::filesystem::remove(place);
    while (!WatchedNumbers().empty())
      usleep(100);
  }
}

}  // namespace
}  // namespace tarvendo
