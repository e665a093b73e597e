#include "platform/files.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/scratch_directory.h"

namespace tarvendo {
namespace {

class Files : public testing::Test {
 protected:
  void Write(const std::string& name, const std::string& text) {
    const auto file = files_->Create(directory_.File(name));
    ASSERT_NE(file, nullptr);
    ASSERT_TRUE(file->Write(text));
    ASSERT_TRUE(file->Close());
  }

  ScratchDirectory directory_;
  std::unique_ptr<FileSystem> files_ = MakeFileSystem();
};

TEST_F(Files, AWrittenTextIsReadBack) {
  const std::string text("a\n\nb\0c\x1a d\xff\n", 12);
  Write("a file.txt", text);
  EXPECT_EQ(files_->ReadText(directory_.File("a file.txt")), text);
}

TEST_F(Files, TheBackslashSeparatesDirectoriesOnEveryHost) {
  Write("x", "text\n");
  EXPECT_NE(directory_.Bytes("x"), "(missing)");
}

TEST_F(Files, LongTextsAreWrittenAndReadWhole) {
  std::string text;
  for (int i = 0; i < 50000; ++i) {
    text += "line " + std::to_string(i) + "\n";
  }
  Write("x", text);
  EXPECT_EQ(files_->ReadText(directory_.File("x")), text);
}

TEST_F(Files, CarriageReturnsBeforeLineFeedsAreFoldedWhenATextIsRead) {
  directory_.Put("x", "a\r\nb\nc\r");
  EXPECT_EQ(files_->ReadText(directory_.File("x")), "a\nb\nc\r");
}

TEST_F(Files, WhatIsNotAReadableFileHasNoText) {
  EXPECT_FALSE(files_->ReadText(directory_.File("missing")));
  EXPECT_FALSE(files_->ReadText(directory_.Path()));
  EXPECT_FALSE(files_->ReadText(""));
  EXPECT_FALSE(files_->ReadPart(directory_.File("missing"), 0, std::string::npos));
  EXPECT_FALSE(files_->ReadPart(directory_.Path(), 0, std::string::npos));
}

TEST_F(Files, AGrowingFileIsReadFromWhereItWasReadTo) {
  directory_.Put("x", "one\r\n");
  const std::string name = directory_.File("x");
  const auto writer = files_->Append(name);
  ASSERT_NE(writer, nullptr);
  EXPECT_EQ(files_->ReadPart(name, 0, std::string::npos), "one\r\n");
  EXPECT_EQ(files_->ReadPart(name, 5, std::string::npos), "");
  ASSERT_TRUE(writer->Write("two"));
  ASSERT_TRUE(writer->Flush());
  EXPECT_EQ(files_->ReadPart(name, 5, std::string::npos), "two");
  EXPECT_EQ(files_->ReadPart(name, 7, std::string::npos), "o");
}

TEST_F(Files, BehindTheEndThereIsAnEmptyText) {
  directory_.Put("x", "one");
  EXPECT_EQ(files_->ReadPart(directory_.File("x"), 4, std::string::npos), "");
  EXPECT_EQ(files_->ReadPart(directory_.File("x"), std::numeric_limits<std::uint64_t>::max(),
                             std::string::npos),
            "");
}

TEST_F(Files, CreatingEmptiesAndAppendingKeepsWhatIsThere) {
  Write("x", "old");
  Write("x", "new");
  EXPECT_EQ(directory_.Bytes("x"), "new");
  const auto file = files_->Append(directory_.File("x"));
  ASSERT_NE(file, nullptr);
  EXPECT_TRUE(file->Write("er"));
  EXPECT_EQ(file->Size(), 5);
  EXPECT_TRUE(file->Close());
  EXPECT_EQ(directory_.Bytes("x"), "newer");
}

TEST_F(Files, AppendingMakesTheFileWhenItIsMissing) {
  const auto file = files_->Append(directory_.File("x"));
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(file->Size(), 0);
  EXPECT_TRUE(file->Close());
  EXPECT_EQ(directory_.Bytes("x"), "");
}

TEST_F(Files, AFileThatIsDestroyedHasBeenWritten) {
  files_->Create(directory_.File("x"))->Write("text");
  EXPECT_EQ(directory_.Bytes("x"), "text");
}

TEST_F(Files, AClosedFileTakesNothing) {
  const auto file = files_->Create(directory_.File("x"));
  ASSERT_TRUE(file->Close());
  EXPECT_FALSE(file->Write("text"));
  EXPECT_FALSE(file->Flush());
  EXPECT_FALSE(file->Close());
}

TEST_F(Files, WhatCannotBeOpenedForWritingIsNull) {
  EXPECT_EQ(files_->Create(directory_.Path()), nullptr);
  EXPECT_EQ(files_->Append(directory_.Path()), nullptr);
  EXPECT_EQ(files_->Create(directory_.File("missing\\x")), nullptr);
  EXPECT_EQ(files_->Create(""), nullptr);
}

TEST_F(Files, ANameWithANulByteIsNoFile) {
  Write("x", "text");
  const std::string name = directory_.File(std::string("x\0y", 3));
  EXPECT_FALSE(files_->Exists(name));
  EXPECT_FALSE(files_->ReadText(name));
  EXPECT_FALSE(files_->Remove(name));
  EXPECT_EQ(files_->Create(name), nullptr);
  EXPECT_EQ(directory_.Bytes("x"), "text");
}

TEST_F(Files, FilesAndDirectoriesAreToldApart) {
  Write("x", "");
  EXPECT_TRUE(files_->Exists(directory_.File("x")));
  EXPECT_TRUE(files_->IsReadable(directory_.File("x")));
  EXPECT_TRUE(files_->IsPlainFile(directory_.File("x")));
  EXPECT_TRUE(files_->Exists(directory_.Path()));
  EXPECT_FALSE(files_->IsReadable(directory_.Path()));
  EXPECT_FALSE(files_->IsPlainFile(directory_.Path()));
  EXPECT_FALSE(files_->Exists(directory_.File("missing")));
  EXPECT_FALSE(files_->IsReadable(directory_.File("missing")));
  EXPECT_FALSE(files_->IsPlainFile(directory_.File("missing")));
}

TEST_F(Files, OnlyAFileIsRemoved) {
  Write("x", "");
  EXPECT_TRUE(files_->Remove(directory_.File("x")));
  EXPECT_FALSE(files_->Exists(directory_.File("x")));
  EXPECT_FALSE(files_->Remove(directory_.File("x")));
  std::filesystem::create_directory(directory_.Path() + "/d");
  EXPECT_FALSE(files_->Remove(directory_.File("d")));
  EXPECT_TRUE(files_->Exists(directory_.File("d")));
}

TEST_F(Files, ARenameReplacesTheFileThatIsThere) {
  Write("new", "new");
  Write("old", "old");
  EXPECT_TRUE(files_->Rename(directory_.File("new"), directory_.File("old")));
  EXPECT_EQ(directory_.Bytes("old"), "new");
  EXPECT_FALSE(files_->Exists(directory_.File("new")));
  EXPECT_FALSE(files_->Rename(directory_.File("new"), directory_.File("old")));
  EXPECT_EQ(directory_.Bytes("old"), "new");
}

TEST_F(Files, RelativeNamesFollowTheCurrentDirectory) {
  const std::filesystem::path before = std::filesystem::current_path();
  Write("x", "text");
  EXPECT_TRUE(files_->ChangeDirectory(directory_.Path() + "\\"));
  EXPECT_EQ(files_->ReadText("x"), "text");
  EXPECT_EQ(files_->ReadText(".\\x"), "text");
  const std::string full = files_->FullPath("x");
  EXPECT_FALSE(files_->ChangeDirectory("missing"));
  EXPECT_FALSE(files_->ChangeDirectory(""));
  EXPECT_TRUE(files_->ChangeDirectory(before.string()));
  EXPECT_EQ(files_->ReadText(full), "text");
}

TEST_F(Files, TwoWaysToWriteAPathGiveOneFullPath) {
  EXPECT_EQ(files_->FullPath("x"), files_->FullPath(".\\x"));
  EXPECT_EQ(files_->FullPath("..\\x"), files_->FullPath(".\\..\\.\\x"));
  EXPECT_EQ(files_->FullPath(files_->FullPath("x")), files_->FullPath("x"));
  EXPECT_EQ(files_->FullPath(""), "");
}

}  // namespace
}  // namespace tarvendo
