#include "platform/paths.h"

#include <gtest/gtest.h>

#include "platform/files.h"

namespace tarvendo {
namespace {

TEST(WindowsPaths, PathsAreTakenAsTheyAre) {
  EXPECT_EQ(HostPath("c:\\t\\a b/c"), "c:\\t\\a b/c");
  EXPECT_TRUE(IsBareName("a/b"));
  EXPECT_EQ(LastSeparator("a\\b/c"), 1U);
}

TEST(WindowsPaths, AFullPathHasItsDrive) {
  const std::string full = MakeFileSystem()->FullPath("x");
  EXPECT_EQ(full.substr(1, 2), ":\\");
  EXPECT_EQ(MakeFileSystem()->FullPath("c:\\a\\..\\.\\b"), "c:\\b");
}

TEST(WindowsPaths, DevicesAreNoPlainFiles) {
  EXPECT_FALSE(MakeFileSystem()->IsPlainFile("NUL"));
}

}  // namespace
}  // namespace tarvendo
