#include "base/whole_file.h"

#include <gtest/gtest.h>

#include "fakes/memory_file_system.h"

namespace tarvendo {
namespace {

using Names = std::vector<std::string>;

TEST(WholeFile, ANewFileIsMade) {
  MemoryFileSystem files;
  EXPECT_TRUE(SaveWholeFile(files, "a.txt", "new\n"));
  EXPECT_EQ(files.Bytes("a.txt"), "new\n");
  EXPECT_EQ(files.FileNames(), Names{"/home/a.txt"});
}

TEST(WholeFile, AnOldFileIsReplacedWhole) {
  MemoryFileSystem files;
  files.Put("a.txt", "an old and much longer text\n");
  EXPECT_TRUE(SaveWholeFile(files, "a.txt", "new\n"));
  EXPECT_EQ(files.Bytes("a.txt"), "new\n");
  EXPECT_EQ(files.FileNames(), Names{"/home/a.txt"});
}

TEST(WholeFile, AFileWithoutNameIsRefused) {
  MemoryFileSystem files;
  EXPECT_FALSE(SaveWholeFile(files, "", "new\n"));
  EXPECT_EQ(files.FileNames(), Names{});
}

TEST(WholeFile, AMissingDirectoryIsAFailure) {
  MemoryFileSystem files;
  EXPECT_FALSE(SaveWholeFile(files, "nowhere\\a.txt", "new\n"));
  EXPECT_EQ(files.FileNames(), Names{});
}

class WholeFileFaults : public testing::TestWithParam<FileOperation> {};

TEST_P(WholeFileFaults, AFailureLeavesTheOldFileWholeAndNothingBesides) {
  MemoryFileSystem files;
  files.Put("a.txt", "old\n");
  files.FailAt(GetParam(), 1);
  EXPECT_FALSE(SaveWholeFile(files, "a.txt", "a new text\n"));
  EXPECT_EQ(files.Bytes("a.txt"), "old\n");
  EXPECT_EQ(files.FileNames(), Names{"/home/a.txt"});
}

INSTANTIATE_TEST_SUITE_P(EveryOperation, WholeFileFaults,
                         testing::Values(FileOperation::kWrite, FileOperation::kClose,
                                         FileOperation::kRename));

TEST(WholeFile, WithoutRoomForANewFileTheOldOneIsWrittenInPlace) {
  MemoryFileSystem files;
  files.Put("a.txt", "old\n");
  files.FailAt(FileOperation::kOpen, 1);
  EXPECT_TRUE(SaveWholeFile(files, "a.txt", "new\n"));
  EXPECT_EQ(files.Bytes("a.txt"), "new\n");
  EXPECT_EQ(files.FileNames(), Names{"/home/a.txt"});
}

TEST(WholeFile, WhatIsNoOrdinaryFileIsWrittenInPlace) {
  MemoryFileSystem files;
  files.MakeSpecial("device");
  EXPECT_TRUE(SaveWholeFile(files, "device", "new\n"));
  EXPECT_EQ(files.Bytes("device"), "new\n");
  EXPECT_FALSE(files.IsPlainFile("device"));
  EXPECT_EQ(files.Count(FileOperation::kRename), 0);
}

TEST(WholeFile, AFailureInPlaceIsReported) {
  MemoryFileSystem files;
  files.MakeSpecial("device");
  files.FailAt(FileOperation::kWrite, 1);
  EXPECT_FALSE(SaveWholeFile(files, "device", "new\n"));
  files.FailAt(FileOperation::kClose, 1);
  EXPECT_FALSE(SaveWholeFile(files, "device", "new\n"));
  files.Deny(FileOperation::kOpen, "device");
  EXPECT_FALSE(SaveWholeFile(files, "device", "new\n"));
}

}  // namespace
}  // namespace tarvendo
