#include "base/long_read.h"

#include <gtest/gtest.h>

#include <string>

#include "fakes/memory_file_system.h"

namespace tarvendo {
namespace {

constexpr std::size_t kTwentyMegabytes = 20U << 20U;

std::string LongText() {
  std::string text(kTwentyMegabytes, 'x');
  text += "the end\r\n";
  return text;
}

TEST(LongRead, AFileOfSeveralPartsIsReadWhole) {
  MemoryFileSystem files;
  files.Put("f", LongText());
  const BoundedText read = ReadLongFile(files, "f", kTwentyMegabytes + 9);
  ASSERT_TRUE(read.text);
  EXPECT_EQ(read.text->size(), kTwentyMegabytes + 8) << "CR LF folded to LF";
  EXPECT_TRUE(read.text->ends_with("xthe end\n"));
}

TEST(LongRead, AFileBeyondTheLimitIsNotRead) {
  MemoryFileSystem files;
  files.Put("f", LongText());
  const BoundedText read = ReadLongFile(files, "f", kTwentyMegabytes + 8);
  EXPECT_FALSE(read.text);
  EXPECT_TRUE(read.is_too_long);
}

TEST(LongRead, WhatIsNotThereIsNotRead) {
  MemoryFileSystem files;
  const BoundedText read = ReadLongFile(files, "f", 10);
  EXPECT_FALSE(read.text);
  EXPECT_FALSE(read.is_too_long);
}

/// Another program replaces the file as soon as its first part was read.
class ReplacedFiles : public MemoryFileSystem {
 public:
  std::optional<std::string> ReadPart(const std::string& path, std::uint64_t offset,
                                      std::size_t most) override {
    auto part = MemoryFileSystem::ReadPart(path, offset, most);
    if (offset == 0 && !is_replaced_) Put(path, std::string(kTwentyMegabytes, 'y'));
    is_replaced_ = true;
    return part;
  }

 private:
  bool is_replaced_ = false;
};

TEST(LongRead, OfAFileThatIsReplacedMeanwhileNoMixtureIsRead) {
  ReplacedFiles files;
  files.Put("f", LongText());
  const BoundedText read = ReadLongFile(files, "f", kTwentyMegabytes * 2);
  EXPECT_EQ(read.text, std::string(kTwentyMegabytes, 'y'));
}

}  // namespace
}  // namespace tarvendo
