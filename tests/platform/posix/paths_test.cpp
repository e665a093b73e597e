#include "platform/paths.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace tarvendo {
namespace {

TEST(PosixPaths, BackslashesAreReadAsSlashes) {
  EXPECT_EQ(HostPath("\\tmp\\a b/c"), "/tmp/a b/c");
  EXPECT_EQ(HostPath(""), "");
}

TEST(PosixPaths, ASlashSeparatesToo) {
  EXPECT_FALSE(IsBareName("a/b"));
  EXPECT_EQ(LastSeparator("a\\b/c"), 3U);
  EXPECT_EQ(LastSeparator("a/b\\c"), 3U);
}

TEST(PosixPaths, TheExecutableLiesInTheExecutablesDirectory) {
  const auto executable = std::filesystem::read_symlink("/proc/self/exe");
  EXPECT_EQ(ExecutableDirectory(), executable.parent_path().string() + "/");
}

}  // namespace
}  // namespace tarvendo
