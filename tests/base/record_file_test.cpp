#include "base/record_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <string>

namespace tarvendo {
namespace {

TEST(RecordWriter, WritesNumbersAndTextsOneALine) {
  RecordWriter writer;
  writer.WriteInt(-7);
  writer.WriteString("100%s of it");
  writer.WriteString("");
  writer.WriteInt(10000000000);
  EXPECT_EQ(writer.Text(), "-7\n100%s of it\n\n10000000000\n");
  EXPECT_TRUE(writer.CutTexts().empty());
}

TEST(RecordWriter, CutsATextForWhichALineHasNoRoomAndTellsWhich) {
  const std::string fits(254, 'x');
  const std::string too_long = fits + "y";
  RecordWriter writer;
  writer.WriteString(fits);
  writer.WriteString(too_long);
  writer.WriteString("next");
  EXPECT_EQ(writer.Text(), fits + "\n" + fits + "\nnext\n");
  EXPECT_EQ(writer.CutTexts(), std::vector<std::string>{too_long});
}

TEST(RecordWriter, WritesNothingThatIsNotReadBack) {
  for (const std::size_t size : {0U, 1U, 253U, 254U, 255U, 256U, 510U, 1000U}) {
    SCOPED_TRACE(size);
    RecordWriter writer;
    writer.WriteString(std::string(size, 'x'));
    writer.WriteInt(5);
    RecordReader reader(writer.Text());
    std::string text = "?";
    int number = 0;
    reader.ReadString(text);
    reader.ReadInt(number);
    EXPECT_EQ(text, std::string(std::min<std::size_t>(size, 254), 'x'));
    EXPECT_EQ(number, 5);
  }
}

class RecordReaderTest : public testing::Test {
 protected:
  void Read(const std::string& bytes) {
    text = bytes;
    reader.emplace(text);
  }

  int NextInt(int before) {
    reader->ReadInt(before);
    return before;
  }

  std::string NextString(std::string before) {
    reader->ReadString(before);
    return before;
  }

  std::string text;
  std::optional<RecordReader> reader;
};

TEST_F(RecordReaderTest, AnEmptyTextLeavesEveryFieldAsItWas) {
  Read("");
  EXPECT_TRUE(reader->NothingLeft());
  EXPECT_EQ(NextInt(3), 3);
  EXPECT_EQ(NextString("kept"), "kept");
}

TEST_F(RecordReaderTest, NumbersAreReadFromTheStartOfTheirLine) {
  Read("12\n  -3 and more\n+4\n");
  EXPECT_EQ(NextInt(0), 12);
  EXPECT_EQ(NextInt(0), -3);
  EXPECT_EQ(NextInt(0), 4);
}

TEST_F(RecordReaderTest, ALineWithoutNumberLeavesTheFieldAsItWas) {
  Read("\nabc\n-\n5\n");
  EXPECT_EQ(NextInt(9), 9);
  EXPECT_EQ(NextInt(8), 8);
  EXPECT_EQ(NextInt(7), 7);
  EXPECT_EQ(NextInt(6), 5);
  EXPECT_EQ(NextInt(4), 4);
}

TEST_F(RecordReaderTest, NumbersOutOfRangeGiveTheNearestOnes) {
  Read("99999999999\n-99999999999\n99999999999\n");
  EXPECT_EQ(NextInt(0), std::numeric_limits<int>::max());
  EXPECT_EQ(NextInt(0), std::numeric_limits<int>::min());
  long long value = 0;
  reader->ReadLong(value);
  EXPECT_EQ(value, 99999999999);
}

TEST_F(RecordReaderTest, TextsAreReadWithoutTheirLastCharacter) {
  Read("one\n\n two \nthree");
  EXPECT_EQ(NextString("x"), "one");
  EXPECT_EQ(NextString("x"), "");
  EXPECT_EQ(NextString("x"), " two ");
  // A line that has lost its line feed gives up a character of its own.
  EXPECT_EQ(NextString("x"), "thre");
  EXPECT_EQ(NextString("kept"), "kept");
}

TEST_F(RecordReaderTest, ATextOf254BytesSurvives) {
  const std::string longest(254, 'x');
  Read(longest + "\nnext\n");
  EXPECT_EQ(NextString(""), longest);
  EXPECT_EQ(NextString(""), "next");
}

TEST_F(RecordReaderTest, ATextOf255BytesLosesOneAndLeavesAnEmptyLine) {
  Read(std::string(255, 'x') + "\nnext\n");
  EXPECT_EQ(NextString(""), std::string(254, 'x'));
  EXPECT_EQ(NextString("?"), "");
  EXPECT_EQ(NextString(""), "next");
}

TEST_F(RecordReaderTest, ATextOf256BytesIsCutInTwo) {
  Read(std::string(256, 'x') + "\nnext\n");
  EXPECT_EQ(NextString(""), std::string(254, 'x'));
  EXPECT_EQ(NextString("?"), "x");
  EXPECT_EQ(NextString(""), "next");
}

TEST_F(RecordReaderTest, NulBytesEndATextAndNeverTheFile) {
  Read(std::string("ab\0cd\n\0x\n12\0\n7\n", 15));
  EXPECT_EQ(NextString(""), "a");
  EXPECT_EQ(NextString("?"), "");
  EXPECT_EQ(NextInt(0), 12);
  EXPECT_EQ(NextInt(0), 7);
}

TEST_F(RecordReaderTest, NothingIsLeftBehindTheLastByte) {
  Read("1\n");
  EXPECT_FALSE(reader->NothingLeft());
  NextInt(0);
  EXPECT_TRUE(reader->NothingLeft());
}

}  // namespace
}  // namespace tarvendo
