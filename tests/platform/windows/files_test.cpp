#include "platform/files.h"

#include <gtest/gtest.h>

#include "platform/scratch_directory.h"

namespace tarvendo {
namespace {

TEST(WindowsFiles, LinesAreWrittenWithCarriageReturns) {
  const ScratchDirectory directory;
  const auto file = MakeFileSystem()->Create(directory.File("x"));
  ASSERT_NE(file, nullptr);
  EXPECT_TRUE(file->Write("a\nb\n"));
  EXPECT_EQ(file->Size(), 6);
  EXPECT_TRUE(file->Close());
  EXPECT_EQ(directory.Bytes("x"), "a\r\nb\r\n");
}

TEST(WindowsFiles, AFileThatIsBeingWrittenCanBeRead) {
  const ScratchDirectory directory;
  const auto file = MakeFileSystem()->Create(directory.File("x"));
  ASSERT_NE(file, nullptr);
  EXPECT_TRUE(file->Write("a\n"));
  EXPECT_TRUE(file->Flush());
  EXPECT_EQ(MakeFileSystem()->ReadText(directory.File("x")), "a\n");
}

}  // namespace
}  // namespace tarvendo
