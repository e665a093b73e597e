#include "publish/utf8.h"

#include <gtest/gtest.h>

namespace tarvendo {
namespace {

TEST(Utf8, WhatIsUtf8StaysAsItIs) {
  for (const char* text :
       {"", "Plain", "Größe", "Шахматы", "国際象棋", "♞ \xF0\x9F\x98\x80", "a\tb\nc"}) {
    EXPECT_TRUE(IsUtf8(text)) << text;
    EXPECT_EQ(ToUtf8(text), text);
  }
}

TEST(Utf8, AnythingElseIsTakenForIso88591) {
  EXPECT_EQ(ToUtf8("Gr\xF6\xDF"
                   "e"),
            "Größe");
  EXPECT_EQ(ToUtf8("\xE9\xA0"), "é\xC2\xA0");
  // The UTF-8 in a text that is none is taken byte by byte as well.
  EXPECT_EQ(ToUtf8("\xC3\xB6\xFF"), "Ã¶ÿ");
}

TEST(Utf8, FormsThatAreForbiddenAreNoUtf8) {
  for (const char* text : {"\xC0\xAF", "\xE0\x80\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80",
                           "\xF0\x8F\xBF\xBF", "\xF5\x80\x80\x80", "\xE2\x82", "\x80"}) {
    EXPECT_FALSE(IsUtf8(text));
    EXPECT_TRUE(IsUtf8(ToUtf8(text)));
  }
}

TEST(Utf8, ControlCharactersAreReplaced) {
  EXPECT_EQ(ToUtf8(std::string("a\0b", 3)),
            "a\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(ToUtf8("\x1B[1m\x7F"), "\xEF\xBF\xBD[1m\xEF\xBF\xBD");
  EXPECT_EQ(ToUtf8("\x85"), "\xEF\xBF\xBD") << "of ISO 8859-1 too";
}

}  // namespace
}  // namespace tarvendo
