#include "base/line_reader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tarvendo {
namespace {

std::vector<std::string> AllPieces(const std::string& text, std::size_t size) {
  std::vector<std::string> pieces;
  LineReader reader(text);
  while (const auto piece = reader.Read(size))
    pieces.push_back(*piece);
  return pieces;
}

using Pieces = std::vector<std::string>;

TEST(LineReader, LinesComeWithTheirLineFeed) {
  EXPECT_EQ(AllPieces("one\n\ntwo\n", kRecordLine), (Pieces{"one\n", "\n", "two\n"}));
}

TEST(LineReader, ALastLineWithoutLineFeedComesAsItIs) {
  EXPECT_EQ(AllPieces("one\ntwo", kRecordLine), (Pieces{"one\n", "two"}));
}

TEST(LineReader, TheFirstPieceOfALineIsToldFromTheOthers) {
  LineReader reader("abcdefg\nh\n");
  std::string firsts;
  while (reader.Read(3))
    firsts += reader.IsFirstPiece() ? '1' : '0';
  EXPECT_EQ(firsts, "1001");
}

TEST(LineReader, AnEmptyTextHasNoLines) {
  EXPECT_EQ(AllPieces("", kRecordLine), Pieces{});
}

TEST(LineReader, ALineThatFillsTheRoomWithItsLineFeedIsOnePiece) {
  const std::string line = std::string(254, 'x') + "\n";
  EXPECT_EQ(AllPieces(line + "y\n", 255), (Pieces{line, "y\n"}));
}

TEST(LineReader, ALineOneByteTooLongGivesItsLineFeedAsAPieceOfItsOwn) {
  const std::string full(255, 'x');
  EXPECT_EQ(AllPieces(full + "\ny\n", 255), (Pieces{full, "\n", "y\n"}));
}

TEST(LineReader, ALineOf1000BytesComesInFourPieces) {
  const std::string full(255, 'x');
  EXPECT_EQ(AllPieces(std::string(1000, 'x') + "\n", 255),
            (Pieces{full, full, full, std::string(235, 'x') + "\n"}));
}

TEST(LineReader, WhatStandsBehindANulByteOfALineIsNotSeen) {
  const std::string text("ab\0cd\nef\n\0gh\nij", 15);
  EXPECT_EQ(AllPieces(text, 255), (Pieces{"ab", "ef\n", "", "ij"}));
}

TEST(LineReader, TheEndIsMetByTheReadThatFindsNothing) {
  const std::string text = "one\n";
  LineReader reader(text);
  EXPECT_EQ(reader.Read(255), "one\n");
  EXPECT_FALSE(reader.AtEnd());
  EXPECT_EQ(reader.Read(255), std::nullopt);
  EXPECT_TRUE(reader.AtEnd());
}

TEST(LineReader, TheEndIsMetByALastLineWithoutLineFeed) {
  const std::string text = "one";
  LineReader reader(text);
  EXPECT_EQ(reader.Read(255), "one");
  EXPECT_TRUE(reader.AtEnd());
}

TEST(LineReader, AReadThatFillsItsRoomHasNotYetMetTheEnd) {
  const std::string text = "abc";
  LineReader reader(text);
  EXPECT_EQ(reader.Read(3), "abc");
  EXPECT_FALSE(reader.AtEnd());
  EXPECT_EQ(reader.Read(3), std::nullopt);
  EXPECT_TRUE(reader.AtEnd());
}

TEST(LineReader, PositionCountsEveryByteThatWasReadAlsoBehindANul) {
  const std::string text("a\0b\ncd", 6);
  LineReader reader(text);
  EXPECT_EQ(reader.Position(), 0U);
  reader.Read(255);
  EXPECT_EQ(reader.Position(), 4U);
  reader.Read(255);
  EXPECT_EQ(reader.Position(), 6U);
}

TEST(LineReader, SingleBytesAndLinesCanBeMixed) {
  const std::string text = "\xFFx\nrest\n";
  LineReader reader(text);
  EXPECT_EQ(reader.ReadByte(), 255);
  EXPECT_EQ(reader.Read(255), "x\n");
  EXPECT_EQ(reader.ReadByte(), 'r');
  EXPECT_EQ(reader.Read(255), "est\n");
  EXPECT_EQ(reader.ReadByte(), -1);
  EXPECT_TRUE(reader.AtEnd());
}

TEST(LineReader, WithoutLineFeedTakesOneLineFeedOnly) {
  EXPECT_EQ(WithoutLineFeed("a\n"), "a");
  EXPECT_EQ(WithoutLineFeed("a\n\n"), "a\n");
  EXPECT_EQ(WithoutLineFeed("a"), "a");
  EXPECT_EQ(WithoutLineFeed("\n"), "");
  EXPECT_EQ(WithoutLineFeed(""), "");
}

}  // namespace
}  // namespace tarvendo
