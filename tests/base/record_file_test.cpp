#include "base/record_file.h"

#include <gtest/gtest.h>

#include <limits>

#include "fakes/memory_file_system.h"

namespace tarvendo {
namespace {

/// A record whose single values a test can write and read.
class OpenRecord : public RecordFile {
 public:
  using RecordFile::ReadInt;
  using RecordFile::ReadLong;
  using RecordFile::ReadString;
  using RecordFile::WriteInt;
  using RecordFile::WriteString;
};

class RecordFileTest : public testing::Test {
 protected:
  /// Opens a file with these bytes for reading.
  void Read(const std::string& bytes) {
    files.Put("r", bytes);
    ASSERT_TRUE(record.OpenRead(files, "r"));
  }

  int NextInt(int before) {
    record.ReadInt(before);
    return before;
  }

  std::string NextString(std::string before) {
    record.ReadString(before);
    return before;
  }

  MemoryFileSystem files;
  OpenRecord record;
};

TEST_F(RecordFileTest, NumbersAndTextsAreWrittenOneALine) {
  ASSERT_TRUE(record.OpenWrite(files, "r"));
  record.WriteInt(-7);
  record.WriteString("100%s of it");
  record.WriteString("");
  record.WriteInt(10000000000);
  EXPECT_TRUE(record.Close());
  EXPECT_EQ(files.Bytes("r"), "-7\n100%s of it\n\n10000000000\n");
}

TEST_F(RecordFileTest, NothingIsInTheFileBeforeItIsClosed) {
  files.Put("r", "old\n");
  ASSERT_TRUE(record.OpenWrite(files, "r"));
  record.WriteInt(1);
  EXPECT_EQ(files.Bytes("r"), "old\n");
  EXPECT_TRUE(record.Close());
  EXPECT_EQ(files.Bytes("r"), "1\n");
}

TEST_F(RecordFileTest, OpeningAnotherFileClosesTheFirst) {
  ASSERT_TRUE(record.OpenWrite(files, "a"));
  record.WriteInt(1);
  ASSERT_TRUE(record.OpenWrite(files, "b"));
  EXPECT_EQ(files.Bytes("a"), "1\n");
  EXPECT_FALSE(record.OpenRead(files, "missing"));
  EXPECT_EQ(files.Bytes("b"), "");
}

TEST_F(RecordFileTest, AFileWithoutNameCannotBeWritten) {
  EXPECT_FALSE(record.OpenWrite(files, ""));
  record.WriteInt(1);
  EXPECT_TRUE(record.Close());
  EXPECT_TRUE(files.FileNames().empty());
}

TEST_F(RecordFileTest, CloseSaysWhenTheFileCouldNotBeSaved) {
  ASSERT_TRUE(record.OpenWrite(files, "nowhere/r"));
  record.WriteInt(1);
  EXPECT_FALSE(record.Close());
}

TEST_F(RecordFileTest, AMissingFileCannotBeRead) {
  EXPECT_FALSE(record.OpenRead(files, "missing"));
  EXPECT_TRUE(record.NothingLeft());
  EXPECT_EQ(NextInt(3), 3);
  EXPECT_EQ(NextString("kept"), "kept");
}

TEST_F(RecordFileTest, NumbersAreReadFromTheStartOfTheirLine) {
  Read("12\n  -3 and more\n+4\n");
  EXPECT_EQ(NextInt(0), 12);
  EXPECT_EQ(NextInt(0), -3);
  EXPECT_EQ(NextInt(0), 4);
}

TEST_F(RecordFileTest, ALineWithoutNumberLeavesTheFieldAsItWas) {
  Read("\nabc\n-\n5\n");
  EXPECT_EQ(NextInt(9), 9);
  EXPECT_EQ(NextInt(8), 8);
  EXPECT_EQ(NextInt(7), 7);
  EXPECT_EQ(NextInt(6), 5);
  EXPECT_EQ(NextInt(4), 4);
}

TEST_F(RecordFileTest, NumbersOutOfRangeGiveTheNearestOnes) {
  Read("99999999999\n-99999999999\n99999999999\n");
  EXPECT_EQ(NextInt(0), std::numeric_limits<int>::max());
  EXPECT_EQ(NextInt(0), std::numeric_limits<int>::min());
  long long value = 0;
  record.ReadLong(value);
  EXPECT_EQ(value, 99999999999);
}

TEST_F(RecordFileTest, TextsAreReadWithoutTheirLastCharacter) {
  Read("one\n\n two \nthree");
  EXPECT_EQ(NextString("x"), "one");
  EXPECT_EQ(NextString("x"), "");
  EXPECT_EQ(NextString("x"), " two ");
  // A line that has lost its line feed gives up a character of its own.
  EXPECT_EQ(NextString("x"), "thre");
  EXPECT_EQ(NextString("kept"), "kept");
}

TEST_F(RecordFileTest, ATextOf254BytesSurvives) {
  const std::string text(254, 'x');
  Read(text + "\nnext\n");
  EXPECT_EQ(NextString(""), text);
  EXPECT_EQ(NextString(""), "next");
}

TEST_F(RecordFileTest, ATextOf255BytesLosesOneAndLeavesAnEmptyLine) {
  Read(std::string(255, 'x') + "\nnext\n");
  EXPECT_EQ(NextString(""), std::string(254, 'x'));
  EXPECT_EQ(NextString("?"), "");
  EXPECT_EQ(NextString(""), "next");
}

TEST_F(RecordFileTest, ATextOf256BytesIsCutInTwo) {
  Read(std::string(256, 'x') + "\nnext\n");
  EXPECT_EQ(NextString(""), std::string(254, 'x'));
  EXPECT_EQ(NextString("?"), "x");
  EXPECT_EQ(NextString(""), "next");
}

TEST_F(RecordFileTest, NulBytesEndATextAndNeverTheFile) {
  Read(std::string("ab\0cd\n\0x\n12\0\n7\n", 15));
  EXPECT_EQ(NextString(""), "a");
  EXPECT_EQ(NextString("?"), "");
  EXPECT_EQ(NextInt(0), 12);
  EXPECT_EQ(NextInt(0), 7);
}

TEST_F(RecordFileTest, NothingIsLeftBehindTheLastByte) {
  Read("1\n");
  EXPECT_FALSE(record.NothingLeft());
  NextInt(0);
  EXPECT_TRUE(record.NothingLeft());
}

TEST_F(RecordFileTest, AnAttachedRecordReadsAndWritesInTheOpenersFile) {
  OpenRecord nested;
  ASSERT_TRUE(record.OpenWrite(files, "r"));
  record.WriteInt(1);
  nested.Attach(record);
  nested.WriteInt(2);
  EXPECT_TRUE(nested.Close());
  EXPECT_FALSE(files.Has("r"));
  record.WriteInt(3);
  EXPECT_TRUE(record.Close());
  EXPECT_EQ(files.Bytes("r"), "1\n2\n3\n");

  ASSERT_TRUE(record.OpenRead(files, "r"));
  EXPECT_EQ(NextInt(0), 1);
  nested.Attach(record);
  int value = 0;
  nested.ReadInt(value);
  EXPECT_EQ(value, 2);
  nested.Detach();
  EXPECT_TRUE(nested.NothingLeft());
  EXPECT_EQ(NextInt(0), 3);
}

TEST_F(RecordFileTest, CopiesDoNotShareTheOpenFile) {
  ASSERT_TRUE(record.OpenWrite(files, "r"));
  OpenRecord copy(record);
  copy.WriteInt(1);
  record.WriteInt(2);
  EXPECT_TRUE(record.Close());
  EXPECT_EQ(files.Bytes("r"), "2\n");
}

TEST_F(RecordFileTest, ATextCanTakeThePlaceOfAFile) {
  record.OpenText();
  record.WriteInt(1);
  record.WriteString("two");
  EXPECT_EQ(record.TakeText(), "1\ntwo\n");
  EXPECT_EQ(record.TakeText(), "");
  EXPECT_TRUE(files.FileNames().empty());
}

}  // namespace
}  // namespace tarvendo
