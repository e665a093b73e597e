#include "platform/line_ends.h"

#include <gtest/gtest.h>

namespace tarvendo {
namespace {

std::string Folded(std::string text) {
  FoldLineEnds(text);
  return text;
}

TEST(LineEnds, OnlyACarriageReturnBeforeALineFeedGoes) {
  EXPECT_EQ(Folded("a\r\nb\n\r\nc\rd\r\r\n\r"), "a\nb\n\nc\rd\r\n\r");
  EXPECT_EQ(Folded(""), "");
}

TEST(LineEnds, EveryLineFeedGetsItsCarriageReturn) {
  EXPECT_EQ(WithCrLf("a\n\nb\r\nc"), "a\r\n\r\nb\r\r\nc");
  EXPECT_EQ(WithCrLf(""), "");
}

}  // namespace
}  // namespace tarvendo
