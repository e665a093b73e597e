#include "base/whole_file.h"

#include <gtest/gtest.h>

#include "fakes/memory_file_system.h"

namespace tarvendo {
namespace {

using Names = std::vector<std::string>;

constexpr const char* kTemporary = "a.txt.tarvendo.new";

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

TEST(WholeFile, AFailureLeavesNothingWhereNothingWas) {
  MemoryFileSystem files;
  files.FailAt(FileOperation::kWrite, 1);
  EXPECT_FALSE(SaveWholeFile(files, "a.txt", "a new text\n"));
  EXPECT_EQ(files.FileNames(), Names{});
}

TEST(WholeFile, WithoutRoomForANewFileTheOldOneIsWrittenInPlace) {
  MemoryFileSystem files;
  files.Put("a.txt", "old\n");
  files.Deny(FileOperation::kOpen, kTemporary);
  EXPECT_TRUE(SaveWholeFile(files, "a.txt", "new\n"));
  EXPECT_EQ(files.Count(FileOperation::kRename), 0);
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

TEST(WholeFile, AFileThatMayNotBeChangedIsNotReplaced) {
  MemoryFileSystem files;
  files.Put("a.txt", "old\n");
  files.Deny(FileOperation::kOpen, "a.txt");
  EXPECT_FALSE(SaveWholeFile(files, "a.txt", "new\n"));
  EXPECT_EQ(files.Bytes("a.txt"), "old\n");
  EXPECT_EQ(files.FileNames(), Names{"/home/a.txt"});
}

TEST(WholeFile, AFileOfTheUsersWithTheTemporarysNameIsLeftAlone) {
  MemoryFileSystem files;
  files.Put("a.txt", "old\n");
  files.Put("a.txt.new", "mine\n");
  files.MakeLink(kTemporary, "elsewhere");
  EXPECT_TRUE(SaveWholeFile(files, "a.txt", "new\n"));
  EXPECT_EQ(files.Bytes("a.txt"), "new\n");
  EXPECT_EQ(files.Bytes("a.txt.new"), "mine\n");
  EXPECT_EQ(files.FileNames(), (Names{"/home/a.txt", "/home/a.txt.new"}));
  EXPECT_EQ(files.Count(FileOperation::kRename), 1) << "replaced, not written in place";
}

TEST(WholeFile, AHundredFilesThatEarlierSavesHaveLeftMakeNoSaveGoInPlace) {
  MemoryFileSystem files;
  files.Put("a.txt", "old\n");
  files.Put("a.txt.new", "");
  for (int n = 2; n <= 100; ++n)
    files.Put("a.txt.new" + std::to_string(n), "");
  EXPECT_TRUE(SaveWholeFile(files, "a.txt", "new\n"));
  EXPECT_EQ(files.Bytes("a.txt"), "new\n");
  EXPECT_EQ(files.Count(FileOperation::kRename), 1);
}

TEST(WholeFile, WhatAnEndedProcessHasLeftGoesAtTheNextSave) {
  MemoryFileSystem files;
  files.Put("a.txt", "old\n");
  files.Put(kTemporary, "half of wh");
  files.Put(kTemporary + std::string("2"), "half of wh");
  files.Put(kTemporary + std::string("9"), "");
  EXPECT_TRUE(SaveWholeFile(files, "a.txt", "new\n"));
  EXPECT_EQ(files.Bytes("a.txt"), "new\n");
  EXPECT_EQ(files.FileNames(), Names{"/home/a.txt"});
}

TEST(WholeFile, WhatAnotherProcessIsWritingStays) {
  MemoryFileSystem files;
  files.Put("a.txt", "old\n");
  files.HoldLock(kTemporary, "another");
  files.PutMore(kTemporary, "half of its");
  EXPECT_TRUE(SaveWholeFile(files, "a.txt", "new\n"));
  EXPECT_EQ(files.Bytes("a.txt"), "new\n");
  EXPECT_EQ(files.Bytes(kTemporary), "half of its");
  EXPECT_EQ(files.FileNames(), (Names{"/home/a.txt", "/home/a.txt.tarvendo.new"}));
}

TEST(WholeFile, WhenEveryNameIsHeldTheSaveFailsAndTheOldFileStays) {
  MemoryFileSystem files;
  files.Put("a.txt", "old\n");
  files.HoldLock(kTemporary, "another");
  for (int n = 2; n <= 9; ++n)
    files.HoldLock(kTemporary + std::to_string(n), "another");
  EXPECT_FALSE(SaveWholeFile(files, "a.txt", "new\n"));
  EXPECT_EQ(files.Bytes("a.txt"), "old\n");
}

TEST(WholeFile, AMomentWithoutRoomForAnotherFileIsAFailureAndNotASaveInPlace) {
  MemoryFileSystem files;
  files.Put("a.txt", "old\n");
  files.FailAt(FileOperation::kOpen, 2);
  files.FailAt(FileOperation::kWrite, 1);
  EXPECT_FALSE(SaveWholeFile(files, "a.txt", "new\n"));
  EXPECT_EQ(files.Bytes("a.txt"), "old\n");
  EXPECT_EQ(files.FileNames(), Names{"/home/a.txt"});
}

TEST(WholeFile, ADurableSaveIsOnTheDiskBeforeItTakesTheOldOnesPlace) {
  MemoryFileSystem files;
  files.Put("/t/a.txt", "old\n");
  EXPECT_EQ(SaveDurably(files, "/t/a.txt", "new\n"), SaveOutcome::kSaved);
  EXPECT_EQ(files.Changes(), (Names{"write /t/a.txt.tarvendo.new", "sync /t/a.txt.tarvendo.new",
                                    "rename /t/a.txt.tarvendo.new /t/a.txt", "sync names of /t"}));
}

TEST(WholeFile, ADurableSaveThatCannotBeSyncedHasFailed) {
  for (int n = 1; n <= 2; ++n) {
    MemoryFileSystem files;
    files.Put("a.txt", "old\n");
    files.FailAt(FileOperation::kSync, n);
    EXPECT_EQ(SaveDurably(files, "a.txt", "new\n"), SaveOutcome::kFailed);
    EXPECT_EQ(files.Bytes("a.txt"), n == 1 ? "old\n" : "new\n");
    EXPECT_EQ(files.FileNames(), Names{"/home/a.txt"});
  }
}

TEST(WholeFile, ADurableSaveTellsWhenItWentInPlace) {
  MemoryFileSystem files;
  files.Put("a.txt", "old\n");
  files.Deny(FileOperation::kOpen, kTemporary);
  EXPECT_EQ(SaveDurably(files, "a.txt", "new\n"), SaveOutcome::kInPlace);
  EXPECT_EQ(files.Changes(), (Names{"write /home/a.txt", "sync /home/a.txt"}));
  files.MakeSpecial("device");
  EXPECT_EQ(SaveDurably(files, "device", "new\n"), SaveOutcome::kSaved) << "as everybody expects";
}

TEST(WholeFile, ASaveThatNeedsNoDiskDoesNotWaitForIt) {
  MemoryFileSystem files;
  EXPECT_TRUE(SaveWholeFile(files, "a.txt", "new\n"));
  EXPECT_EQ(files.Count(FileOperation::kSync), 0);
}

TEST(WholeFile, TheNewFileTakesAfterTheOldOne) {
  MemoryFileSystem files;
  files.Put("a.txt", "old\n");
  EXPECT_TRUE(SaveWholeFile(files, "a.txt", "new\n"));
  EXPECT_EQ(files.ModelOf("a.txt"), "/home/a.txt");
}

TEST(WholeFile, ALinkIsFollowedAndItsTargetReplacedWhole) {
  MemoryFileSystem files;
  files.Put("/other/a.txt", "old\n");
  files.MakeLink("middle", "/other/a.txt");
  files.MakeLink("link", "middle");
  EXPECT_TRUE(SaveWholeFile(files, "link", "new\n"));
  EXPECT_EQ(files.Bytes("/other/a.txt"), "new\n");
  EXPECT_EQ(files.ModelOf("/other/a.txt"), "/other/a.txt");
  EXPECT_EQ(files.FollowLinks("link"), "/other/a.txt") << "it is a link as before";
  files.FailAt(FileOperation::kWrite, 1);
  EXPECT_FALSE(SaveWholeFile(files, "link", "newer\n"));
  EXPECT_EQ(files.Bytes("link"), "new\n");
  EXPECT_EQ(files.FileNames(), Names{"/other/a.txt"});
}

TEST(WholeFile, ALinkThatLeadsNowhereMakesTheFileThatItNames) {
  MemoryFileSystem files;
  files.MakeLink("link", "a.txt");
  EXPECT_TRUE(SaveWholeFile(files, "link", "new\n"));
  EXPECT_EQ(files.Bytes("a.txt"), "new\n");
  EXPECT_EQ(files.FollowLinks("link"), "/home/a.txt");
}

TEST(WholeFile, ALinkToADeviceIsWrittenInPlace) {
  MemoryFileSystem files;
  files.MakeSpecial("device");
  files.MakeLink("link", "device");
  EXPECT_TRUE(SaveWholeFile(files, "link", "new\n"));
  EXPECT_FALSE(files.IsPlainFile("device"));
  EXPECT_EQ(files.Bytes("device"), "new\n");
  EXPECT_EQ(files.Count(FileOperation::kRename), 0);
}

TEST(HalfSavedFiles, AreTheNewFilesBesideAFileAndNoOthers) {
  MemoryFileSystem files;
  for (const char* name :
       {"a.txt", "a.txt.tarvendo.new", "a.txt.tarvendo.new2", "a.txt.tarvendo.new17",
        "a.txt.tarvendo.newer", "a.txt.tarvendo.new2x", "b.txt.tarvendo.new", "a.tx.new"})
    files.Put(name, "");
  EXPECT_EQ(HalfSavedFiles(files, "a.txt"),
            (Names{"a.txt.tarvendo.new", "a.txt.tarvendo.new17", "a.txt.tarvendo.new2"}));
  EXPECT_EQ(HalfSavedFiles(files, "c.txt"), Names());
}

TEST(HalfSavedFiles, LieBesideTheFileThatALinkLeadsTo) {
  MemoryFileSystem files;
  files.Put("/there/a.txt", "");
  files.Put("/there/a.txt.tarvendo.new", "");
  files.MakeLink("a.txt", "/there/a.txt");
  EXPECT_EQ(HalfSavedFiles(files, "a.txt"), Names{"/there/a.txt.tarvendo.new"});
}

}  // namespace
}  // namespace tarvendo
