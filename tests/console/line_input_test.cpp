#include "console/line_input.h"

#include <gtest/gtest.h>

#include "console/typed_commands.h"

namespace tarvendo {
namespace {

TEST(LineInput, GivesLinesWithTheirLineFeeds) {
  TextInput bytes("one\n\ntwo\n");
  LineInput input(bytes, false);
  EXPECT_EQ(input.Read(), "one\n");
  EXPECT_EQ(input.Read(), "\n");
  EXPECT_EQ(input.Read(), "two\n");
  EXPECT_FALSE(input.AtEnd());
  EXPECT_EQ(input.Read(), std::nullopt);
  EXPECT_TRUE(input.AtEnd());
}

TEST(LineInput, ALastLineWithoutLineFeedIsGivenAndIsTheEnd) {
  TextInput bytes("one\ntwo");
  LineInput input(bytes, false);
  input.Read();
  EXPECT_EQ(input.Read(), "two");
  EXPECT_TRUE(input.AtEnd());
}

TEST(LineInput, ALongLineComesInPiecesOf254Characters) {
  TextInput bytes(std::string(300, 'x') + "\n");
  LineInput input(bytes, false);
  EXPECT_EQ(input.Read(), std::string(254, 'x'));
  EXPECT_EQ(input.Read(), std::string(46, 'x') + "\n");
}

TEST(LineInput, AFullPieceAtTheEndHasNotMetTheEnd) {
  TextInput bytes(std::string(254, 'x'));
  LineInput input(bytes, false);
  EXPECT_EQ(input.Read(), std::string(254, 'x'));
  EXPECT_FALSE(input.AtEnd());
  EXPECT_EQ(input.Read(), std::nullopt);
  EXPECT_TRUE(input.AtEnd());
}

TEST(LineInput, ANulByteHidesTheRestOfItsLine) {
  TextInput bytes(std::string("a\0b\n\0\nc\n", 8));
  LineInput input(bytes, false);
  EXPECT_EQ(input.Read(), "a");
  EXPECT_EQ(input.Read(), "");
  EXPECT_EQ(input.Read(), "c\n");
}

}  // namespace
}  // namespace tarvendo
