#include "platform/windows/command_line.h"

#include <gtest/gtest.h>

namespace tarvendo {
namespace {

TEST(CommandLine, CmdGetsTheLineInQuotesOfOurs) {
  EXPECT_EQ(ProcessorCommandLine("C:\\Windows\\cmd.exe", "\"a b\" \"c\""),
            "\"C:\\Windows\\cmd.exe\" /s /c \"\"a b\" \"c\"\"");
  EXPECT_EQ(ProcessorCommandLine("CMD", "dir"), "\"CMD\" /s /c \"dir\"");
}

TEST(CommandLine, AnyOtherProcessorGetsTheLineAsItStands) {
  EXPECT_EQ(ProcessorCommandLine("c:\\my tools\\xcmd.exe", "\"a b\" c"),
            "\"c:\\my tools\\xcmd.exe\" /c \"a b\" c");
}

TEST(CommandLine, TheLineEndIsNoPartOfTheCommand) {
  EXPECT_EQ(ProcessorCommandLine("cmd.exe", "dir\n"), "\"cmd.exe\" /s /c \"dir\"");
  EXPECT_EQ(ProcessorCommandLine("other.exe", "dir x\r\n"), "\"other.exe\" /c dir x");
  EXPECT_EQ(ProcessorCommandLine("other.exe", "\n"), "\"other.exe\" /c ");
}

TEST(CommandLine, WordsAreHeldTogetherByQuotes) {
  EXPECT_EQ(QuotedWord("c:\\my files\\x&y.exe"), "\"c:\\my files\\x&y.exe\"");
  EXPECT_EQ(QuotedWord(""), "\"\"");
}

TEST(CommandLine, BackslashesBeforeAQuoteAreDoubled) {
  EXPECT_EQ(QuotedWord("c:\\t\\"), "\"c:\\t\\\\\"");
}

TEST(CommandLine, PercentSignsAndQuotesStandOutsideOfTheQuotes) {
  EXPECT_EQ(QuotedWord("50%"), "\"50\"^%\"\"");
  EXPECT_EQ(QuotedWord("a\"b"), "\"a\"\\^\"\"b\"");
}

}  // namespace
}  // namespace tarvendo
