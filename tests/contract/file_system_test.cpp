// The files in memory that the tests work with keep what the real ones promise.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "base/whole_file.h"
#include "fakes/memory_file_system.h"
#include "platform/files.h"

namespace tarvendo {
namespace {

/// A path with one kind of separator.
std::string WithSlashes(std::string path) {
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

/// A file system and a directory in it that is the test's own.
class Disk {
 public:
  virtual ~Disk() = default;
  virtual FileSystem& Files() = 0;
  virtual std::string Directory() const = 0;  ///< ends in "/"
  virtual void MakeDirectory(const std::string& name) = 0;

  /// Makes a file with these bytes, whatever the host's text form is.
  virtual void Put(const std::string& name, const std::string& bytes) = 0;
};

class MemoryDisk : public Disk {
 public:
  FileSystem& Files() override { return files_; }
  std::string Directory() const override { return "/home/"; }
  void MakeDirectory(const std::string& name) override { files_.MakeDirectory("/home/" + name); }
  void Put(const std::string& name, const std::string& bytes) override {
    files_.Put("/home/" + name, bytes);
  }

 private:
  MemoryFileSystem files_;
};

class RealDisk : public Disk {
 public:
  RealDisk()
      : before_(std::filesystem::current_path()),
        path_(std::filesystem::temp_directory_path() /
              ("tarvendo-contract-" + std::to_string(std::random_device()()))),
        files_(MakeFileSystem()) {
    std::filesystem::create_directory(path_);
    path_ = std::filesystem::canonical(path_);
  }
  ~RealDisk() override {
    std::filesystem::current_path(before_);
    std::filesystem::remove_all(path_);
  }
  RealDisk(const RealDisk&) = delete;
  RealDisk& operator=(const RealDisk&) = delete;

  FileSystem& Files() override { return *files_; }
  std::string Directory() const override { return path_.generic_string() + "/"; }
  void MakeDirectory(const std::string& name) override {
    std::filesystem::create_directory(path_ / name);
  }
  void Put(const std::string& name, const std::string& bytes) override {
    std::ofstream(path_ / name, std::ios::binary) << bytes;
  }

 private:
  std::filesystem::path before_;
  std::filesystem::path path_;
  std::unique_ptr<FileSystem> files_;
};

template <typename D>
class FileSystemContract : public testing::Test {
 protected:
  std::string Path(const std::string& name) { return disk.Directory() + name; }

  void Make(const std::string& name, const std::string& text) {
    const auto file = files.Create(Path(name));
    ASSERT_NE(file, nullptr);
    EXPECT_TRUE(file->Write(text));
    EXPECT_TRUE(file->Close());
  }

  std::string Text(const std::string& name) {
    return files.ReadText(Path(name)).value_or("(cannot be read)");
  }

  D disk;
  FileSystem& files = disk.Files();
};

using Disks = testing::Types<MemoryDisk, RealDisk>;
TYPED_TEST_SUITE(FileSystemContract, Disks, );

TYPED_TEST(FileSystemContract, WhatIsWrittenIsReadBack) {
  this->Make("a", std::string("one\n\0two\xFF", 9));
  EXPECT_EQ(this->Text("a"), std::string("one\n\0two\xFF", 9));
}

TYPED_TEST(FileSystemContract, CreatingEmptiesAnOldFile) {
  this->Make("a", "long old text\n");
  this->Make("a", "new\n");
  EXPECT_EQ(this->Text("a"), "new\n");
}

TYPED_TEST(FileSystemContract, AppendingMakesTheFileOrGoesOnBehindIt) {
  for (int i = 0; i < 2; ++i) {
    const auto file = this->files.Append(this->Path("a"));
    ASSERT_NE(file, nullptr);
    EXPECT_TRUE(file->Write("line\n"));
    const std::int64_t size = file->Size();
    const auto bytes = this->files.ReadPart(this->Path("a"), 0, std::string::npos);
    ASSERT_TRUE(bytes.has_value());
    EXPECT_EQ(size, static_cast<std::int64_t>(bytes->size())) << i;
    EXPECT_EQ(std::count(bytes->begin(), bytes->end(), '\n'), i + 1);
    EXPECT_TRUE(file->Close());
  }
  EXPECT_EQ(this->Text("a"), "line\nline\n");
}

TYPED_TEST(FileSystemContract, ANewFileIsMadeOnlyWhereNobodyWritesOne) {
  const std::string path = this->Path("a");
  const auto file = this->files.CreateNew(path, this->Path("no model")).file;
  ASSERT_NE(file, nullptr);
  EXPECT_TRUE(file->Write("text"));
  EXPECT_EQ(this->files.CreateNew(path, path).file, nullptr);
  EXPECT_TRUE(this->files.IsLocked(path));
  EXPECT_TRUE(file->Close());
  EXPECT_EQ(this->Text("a"), "text");
  const auto alike = this->files.CreateNew(this->Path("b"), path).file;
  ASSERT_NE(alike, nullptr);
  EXPECT_TRUE(alike->Close());
  EXPECT_EQ(this->Text("b"), "") << "what is in the model is not copied";
  EXPECT_EQ(this->files.CreateNew(this->Path("nowhere/a"), path).file, nullptr);
  EXPECT_EQ(this->files.CreateNew("", path).file, nullptr);
}

TYPED_TEST(FileSystemContract, ANewFileTakesThePlaceOfOneThatWasLeftOver) {
  this->Make("a", "half of somethi");
  const auto file = this->files.CreateNew(this->Path("a"), this->Path("b")).file;
  ASSERT_NE(file, nullptr);
  EXPECT_TRUE(file->Write("x"));
  EXPECT_TRUE(file->Close());
  EXPECT_EQ(this->Text("a"), "x");
  this->disk.MakeDirectory("d");
  EXPECT_EQ(this->files.CreateNew(this->Path("d"), this->Path("b")).file, nullptr);
}

TYPED_TEST(FileSystemContract, AFileIsCutButNeverMadeLonger) {
  this->Make("a", "onetwo");
  EXPECT_TRUE(this->files.CutTo(this->Path("a"), 3));
  EXPECT_EQ(this->Text("a"), "one");
  EXPECT_FALSE(this->files.CutTo(this->Path("a"), 4));
  EXPECT_EQ(this->Text("a"), "one");
  EXPECT_FALSE(this->files.CutTo(this->Path("missing"), 0));
}

TYPED_TEST(FileSystemContract, WhatIsSyncedCanBeReadAndRenamedDurably) {
  const auto file = this->files.Create(this->Path("a"));
  ASSERT_NE(file, nullptr);
  EXPECT_TRUE(file->Write("text"));
  EXPECT_TRUE(file->Sync());
  EXPECT_EQ(this->Text("a"), "text");
  EXPECT_TRUE(this->files.SyncName(this->Path("a")));
  EXPECT_TRUE(file->Close());
  this->Make("b", "old");
  EXPECT_TRUE(this->files.RenameDurably(this->Path("a"), this->Path("b")));
  EXPECT_EQ(this->Text("b"), "text");
  EXPECT_FALSE(this->files.Exists(this->Path("a")));
  EXPECT_FALSE(this->files.RenameDurably(this->Path("a"), this->Path("b")));
}

TYPED_TEST(FileSystemContract, WhatIsNoLinkLeadsToItself) {
  this->Make("a", "text");
  EXPECT_EQ(this->files.FollowLinks(this->Path("a")), this->Path("a"));
  EXPECT_EQ(this->files.FollowLinks("missing"), "missing");
}

TYPED_TEST(FileSystemContract, AWholeFileReplacesTheOldOneAndLeavesNothingBeside) {
  this->Make("a", "old");
  this->Make("a.new", "mine");
  EXPECT_TRUE(SaveWholeFile(this->files, this->Path("a"), "text"));
  EXPECT_EQ(this->Text("a"), "text");
  EXPECT_EQ(this->Text("a.new"), "mine");
  EXPECT_FALSE(this->files.Exists(this->Path("a.new2")));
}

TYPED_TEST(FileSystemContract, FlushedTextCanBeReadWhileTheFileIsOpen) {
  const auto file = this->files.Create(this->Path("a"));
  ASSERT_NE(file, nullptr);
  EXPECT_TRUE(file->Write("text"));
  EXPECT_TRUE(file->Flush());
  EXPECT_EQ(this->Text("a"), "text");
}

TYPED_TEST(FileSystemContract, ReadingFoldsCrLfUnlessItIsReadFromAPlace) {
  const std::string path = this->Path("a");
  this->disk.Put("a", "a\r\nb\rc\n");
  EXPECT_EQ(this->files.ReadText(path), "a\nb\rc\n");
  EXPECT_EQ(this->files.ReadPart(path, 1, std::string::npos), "\r\nb\rc\n");
  EXPECT_EQ(this->files.ReadPart(path, 7, std::string::npos), "");
  EXPECT_EQ(this->files.ReadPart(path, 700, std::string::npos), "");
  EXPECT_EQ(this->files.ReadPart(path, 1, 3), "\r\nb");
  EXPECT_EQ(this->files.ReadPart(path, 5, 300), "c\n");
  EXPECT_EQ(this->files.ReadPart(path, 0, 0), "");
  EXPECT_EQ(this->files.ReadPart(path, 700, 1), "");
}

TYPED_TEST(FileSystemContract, AMissingFileIsNotThereForAnybody) {
  const std::string path = this->Path("a");
  EXPECT_FALSE(this->files.ReadText(path).has_value());
  EXPECT_FALSE(this->files.ReadPart(path, 0, std::string::npos).has_value());
  EXPECT_FALSE(this->files.Exists(path));
  EXPECT_FALSE(this->files.IsReadable(path));
  EXPECT_FALSE(this->files.IsPlainFile(path));
  EXPECT_FALSE(this->files.Remove(path));
  EXPECT_FALSE(this->files.Rename(path, this->Path("b")));
}

TYPED_TEST(FileSystemContract, ADirectoryIsThereButNoFile) {
  this->disk.MakeDirectory("d");
  const std::string path = this->Path("d");
  EXPECT_TRUE(this->files.Exists(path));
  EXPECT_FALSE(this->files.IsReadable(path));
  EXPECT_FALSE(this->files.IsPlainFile(path));
  EXPECT_FALSE(this->files.ReadText(path).has_value());
  EXPECT_EQ(this->files.Create(path), nullptr);
  EXPECT_EQ(this->files.Append(path), nullptr);
  EXPECT_FALSE(this->files.Remove(path));
  EXPECT_TRUE(this->files.Exists(path));
}

TYPED_TEST(FileSystemContract, AFileNeedsItsDirectory) {
  EXPECT_EQ(this->files.Create(this->Path("nowhere/a")), nullptr);
  EXPECT_EQ(this->files.Append(this->Path("nowhere/a")), nullptr);
  EXPECT_EQ(this->files.Create(""), nullptr);
}

TYPED_TEST(FileSystemContract, RemovingTakesTheFileAway) {
  this->Make("a", "");
  EXPECT_TRUE(this->files.IsPlainFile(this->Path("a")));
  EXPECT_TRUE(this->files.Remove(this->Path("a")));
  EXPECT_FALSE(this->files.Exists(this->Path("a")));
}

TYPED_TEST(FileSystemContract, RenamingReplacesTheOtherFile) {
  this->Make("a", "new");
  this->Make("b", "old");
  EXPECT_TRUE(this->files.Rename(this->Path("a"), this->Path("b")));
  EXPECT_EQ(this->Text("b"), "new");
  EXPECT_FALSE(this->files.Exists(this->Path("a")));
  EXPECT_FALSE(this->files.Rename(this->Path("b"), this->Path("nowhere/b")));
  EXPECT_EQ(this->Text("b"), "new");
}

TYPED_TEST(FileSystemContract, ABackslashSeparatesDirectoriesToo) {
  this->disk.MakeDirectory("d");
  this->Make("d\\a", "text");
  EXPECT_EQ(this->Text("d/a"), "text");
}

TYPED_TEST(FileSystemContract, NamesAreTakenAgainstTheCurrentDirectory) {
  this->disk.MakeDirectory("d");
  EXPECT_FALSE(this->files.ChangeDirectory(this->Path("missing")));
  EXPECT_FALSE(this->files.ChangeDirectory(""));
  EXPECT_TRUE(this->files.ChangeDirectory(this->Path("d")));
  const auto file = this->files.Create("a");
  ASSERT_NE(file, nullptr);
  EXPECT_TRUE(file->Close());
  EXPECT_TRUE(this->files.Exists(this->Path("d/a")));
  EXPECT_EQ(WithSlashes(this->files.FullPath("a")), this->Path("d/a"));
  EXPECT_EQ(WithSlashes(this->files.FullPath(this->Path("b"))), this->Path("b"));
}

TYPED_TEST(FileSystemContract, ALockIsTakenByOneAloneAndGoesWithIt) {
  const std::string path = this->Path("g1.run");
  EXPECT_FALSE(this->files.IsLocked(path)) << "there is no such file";
  LockAttempt first = this->files.Lock(path);
  ASSERT_NE(first.file, nullptr);
  EXPECT_FALSE(first.is_held);
  EXPECT_TRUE(this->files.Exists(path)) << "the file is made";
  EXPECT_TRUE(this->files.IsLocked(path));
  const LockAttempt second = this->files.Lock(path);
  EXPECT_EQ(second.file, nullptr);
  EXPECT_TRUE(second.is_held);
  first.file.reset();
  EXPECT_FALSE(this->files.IsLocked(path));
  EXPECT_TRUE(this->files.Exists(path)) << "the file stays";
  EXPECT_NE(this->files.Lock(path).file, nullptr);
}

TYPED_TEST(FileSystemContract, ALockedFileKeepsItsTextAndCanBeReadAndReplaced) {
  const std::string path = this->Path("g1.run");
  this->Make("g1.run", "a long text of old\n");
  LockAttempt attempt = this->files.Lock(path);
  ASSERT_NE(attempt.file, nullptr);
  EXPECT_EQ(this->Text("g1.run"), "a long text of old\n");
  EXPECT_TRUE(attempt.file->Replace("new\ntext\n"));
  EXPECT_EQ(this->Text("g1.run"), "new\ntext\n");
  EXPECT_TRUE(attempt.file->Replace(""));
  EXPECT_EQ(this->Text("g1.run"), "");
  EXPECT_TRUE(attempt.file->Replace("last\n"));
  attempt.file.reset();
  EXPECT_EQ(this->Text("g1.run"), "last\n");
}

TYPED_TEST(FileSystemContract, WhatIsNoFileCannotBeLocked) {
  this->disk.MakeDirectory("d");
  for (const std::string& path : {this->Path("d"), this->Path("nowhere/g1.run"), std::string()}) {
    const LockAttempt attempt = this->files.Lock(path);
    EXPECT_EQ(attempt.file, nullptr) << path;
    EXPECT_FALSE(attempt.is_held) << path;
    EXPECT_FALSE(this->files.IsLocked(path)) << path;
  }
}

TYPED_TEST(FileSystemContract, AFileThatWasRemovedAfterItsLockIsLockedAnew) {
  const std::string path = this->Path("g1.run");
  this->files.Lock(path).file.reset();
  EXPECT_TRUE(this->files.Remove(path));
  EXPECT_FALSE(this->files.IsLocked(path));
  const LockAttempt again = this->files.Lock(path);
  ASSERT_NE(again.file, nullptr);
  EXPECT_EQ(this->Text("g1.run"), "");
}

TYPED_TEST(FileSystemContract, LocksOfTwoFilesAreTwo) {
  const LockAttempt one = this->files.Lock(this->Path("g1.run"));
  const LockAttempt two = this->files.Lock(this->Path("g2.run"));
  EXPECT_NE(one.file, nullptr);
  EXPECT_NE(two.file, nullptr);
}

TYPED_TEST(FileSystemContract, PathsWithAPrefixAreThoseOfFilesInTheOrderOfTheirNames) {
  this->disk.MakeDirectory("d");
  this->disk.MakeDirectory("d/g3");
  for (const char* name : {"d/g2.run", "d/g10.run", "d/g1.BAT", "d/h.run", "g0.run"}) {
    this->Make(name, "");
  }
  using Paths = std::vector<std::string>;
  const std::string directory = this->Path("d\\");
  EXPECT_EQ(this->files.PathsWithPrefix(directory + "g"),
            (Paths{directory + "g1.BAT", directory + "g10.run", directory + "g2.run"}));
  EXPECT_EQ(this->files.PathsWithPrefix(directory + "g1."), Paths{directory + "g1.BAT"});
  EXPECT_EQ(this->files.PathsWithPrefix(directory).size(), 4U) << "no . and no ..";
  EXPECT_EQ(this->files.PathsWithPrefix(directory + "x"), Paths());
  EXPECT_EQ(this->files.PathsWithPrefix(this->Path("nowhere/g")), Paths());
  ASSERT_TRUE(this->files.ChangeDirectory(directory));
  EXPECT_EQ(this->files.PathsWithPrefix("h"), Paths{"h.run"});
  EXPECT_EQ(this->files.PathsWithPrefix("").size(), 4U);
}

TYPED_TEST(FileSystemContract, AStampTellsOfGrowthAndOfAnotherFile) {
  const std::string path = this->Path("a");
  EXPECT_FALSE(this->files.Stamp(path).has_value());
  EXPECT_FALSE(this->files.Stamp(this->disk.Directory()).has_value()) << "a directory";
  this->Make("a", "text");
  const auto first = this->files.Stamp(path);
  ASSERT_TRUE(first.has_value());
  EXPECT_EQ(first->size, 4);
  EXPECT_EQ(this->files.Stamp(path), first);
  const auto more = this->files.Append(path);
  ASSERT_NE(more, nullptr);
  EXPECT_TRUE(more->Write("more") && more->Flush());
  const auto second = this->files.Stamp(path);
  ASSERT_TRUE(second.has_value());
  EXPECT_EQ(second->size, 8);
  EXPECT_EQ(second->identity, first->identity);
  EXPECT_GE(second->changed, first->changed);
  EXPECT_TRUE(more->Close());
  this->Make("b", "moretext");
  EXPECT_NE(this->files.Stamp(this->Path("b"))->identity, first->identity);
  const auto before = this->files.Stamp(this->Path("b"));
  EXPECT_TRUE(this->files.Rename(this->Path("b"), path));
  EXPECT_EQ(this->files.Stamp(path)->identity, before->identity) << "the file goes with its name";
}

TYPED_TEST(FileSystemContract, ADirectoryIsMadeOnceAndRemovedWhenItIsEmpty) {
  const std::string path = this->Path("d");
  EXPECT_TRUE(this->files.MakeDirectory(path));
  EXPECT_TRUE(this->files.MakeDirectory(path)) << "it is there already";
  this->Make("d/a", "");
  EXPECT_FALSE(this->files.RemoveDirectory(path));
  EXPECT_TRUE(this->files.Exists(this->Path("d/a")));
  EXPECT_FALSE(this->files.RemoveDirectory(this->Path("d/a"))) << "a file";
  EXPECT_FALSE(this->files.MakeDirectory(this->Path("d/a"))) << "a file has that name";
  EXPECT_TRUE(this->files.Remove(this->Path("d/a")));
  EXPECT_TRUE(this->files.RemoveDirectory(path));
  EXPECT_FALSE(this->files.RemoveDirectory(path));
  EXPECT_FALSE(this->files.Exists(path));
  EXPECT_FALSE(this->files.MakeDirectory(this->Path("d/e"))) << "without its parent";
  EXPECT_FALSE(this->files.MakeDirectory(""));
}

}  // namespace
}  // namespace tarvendo
