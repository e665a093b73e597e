#include "platform/paths.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace tarvendo {
namespace {

TEST(Paths, ANameWithABackslashIsNotBare) {
  EXPECT_TRUE(IsBareName("table.htm"));
  EXPECT_TRUE(IsBareName(""));
  EXPECT_FALSE(IsBareName("c:\\table.htm"));
}

TEST(Paths, TheLastSeparatorIsFound) {
  EXPECT_EQ(LastSeparator("a\\b\\c"), 3U);
  EXPECT_EQ(LastSeparator("abc"), std::string::npos);
}

TEST(Paths, TheProgramLiesInTheExecutablesDirectory) {
  const std::string directory = ExecutableDirectory();
  ASSERT_FALSE(directory.empty());
  EXPECT_EQ(LastSeparator(directory), directory.size() - 1);
  EXPECT_TRUE(std::filesystem::is_directory(directory));
}

}  // namespace
}  // namespace tarvendo
