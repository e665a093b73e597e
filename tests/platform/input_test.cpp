#include "platform/input.h"

#include <gtest/gtest.h>

#include "platform/scratch_directory.h"

namespace tarvendo {
namespace {

std::string ReadAll(InputStream& input) {
  std::string text;
  for (int byte = input.Get(); byte != -1; byte = input.Get()) {
    text += static_cast<char>(byte);
  }
  return text;
}

/// What comes out of a script with these bytes.
std::string Through(const std::string& bytes) {
  const ScratchDirectory directory;
  directory.Put("script", bytes);
  const auto script = OpenScript(directory.File("script"));
  return script == nullptr ? "(null)" : ReadAll(*script);
}

TEST(Input, AScriptGivesItsBytes) {
  const std::string bytes("a\n\0\xff b", 6);
  EXPECT_EQ(Through(bytes), bytes);
  EXPECT_EQ(Through(""), "");
}

TEST(Input, CarriageReturnAndLineFeedArriveAsLineFeed) {
  EXPECT_EQ(Through("a\r\nb\r\r\n\r\n\rc\r"), "a\nb\r\n\n\rc\r");
}

TEST(Input, AnyLengthIsReadWhereverTheLineEndsLie) {
  // One byte more or less in front moves a line end over each place of the buffer.
  for (const std::size_t length : {4093U, 4094U, 4095U, 4096U, 8191U, 8192U}) {
    const std::string front(length, 'x');
    EXPECT_EQ(Through(front + "\r\ny"), front + "\ny") << length;
    EXPECT_EQ(Through(front + "\r"), front + "\r") << length;
  }
}

TEST(Input, TheEndStays) {
  const ScratchDirectory directory;
  directory.Put("script", "a");
  const auto script = OpenScript(directory.File("script"));
  ASSERT_NE(script, nullptr);
  EXPECT_EQ(script->Get(), 'a');
  EXPECT_EQ(script->Get(), -1);
  directory.Put("script", "ab");
  EXPECT_EQ(script->Get(), -1);
}

TEST(Input, WhatIsNoReadableFileIsNoScript) {
  const ScratchDirectory directory;
  EXPECT_EQ(OpenScript(directory.File("missing")), nullptr);
  EXPECT_EQ(OpenScript(directory.Path()), nullptr);
  EXPECT_EQ(OpenScript(""), nullptr);
}

}  // namespace
}  // namespace tarvendo
