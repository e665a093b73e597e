#include "platform/posix/full_path.h"

#include <gtest/gtest.h>

namespace tarvendo {
namespace {

TEST(FullPath, ARelativePathStandsBehindTheCurrentDirectory) {
  EXPECT_EQ(FullHostPath("x", "/home/me"), "/home/me/x");
  EXPECT_EQ(FullHostPath("./d//x", "/home/me"), "/home/me/d/x");
  EXPECT_EQ(FullHostPath("x", "/"), "/x");
}

TEST(FullPath, StepsUpFoldOnlyIntoTheCurrentDirectory) {
  EXPECT_EQ(FullHostPath("../x", "/home/me"), "/home/x");
  EXPECT_EQ(FullHostPath("../../../../x", "/home/me"), "/x");
  EXPECT_EQ(FullHostPath("link/../x", "/home/me"), "/home/me/link/../x");
  EXPECT_EQ(FullHostPath("/link/../x", "/home/me"), "/link/../x");
}

TEST(FullPath, AnAbsolutePathKeepsItsPlace) {
  EXPECT_EQ(FullHostPath("/a/./b", "/home/me"), "/a/b");
  EXPECT_EQ(FullHostPath("/", "/home/me"), "/");
}

TEST(FullPath, ALastSeparatorIsKept) {
  EXPECT_EQ(FullHostPath("d/", "/home"), "/home/d/");
}

}  // namespace
}  // namespace tarvendo
