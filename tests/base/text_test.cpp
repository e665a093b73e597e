#include "base/text.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace tarvendo {
namespace {

std::string TrimmedRight(std::string text) {
  TrimRight(text);
  return text;
}

std::string TrimmedBoth(std::string text) {
  TrimBothSides(text);
  return text;
}

TEST(Text, FormatGivesTheTextOfPrintf) {
  EXPECT_EQ(Format("%3d. %-5s|%02d", 7, "ab", 3), "  7. ab   |03");
  EXPECT_EQ(Format("%s", std::string(5000, 'x').c_str()), std::string(5000, 'x'));
  EXPECT_EQ(Format("100%%"), "100%");
}

TEST(Text, PercentSignsInArgumentsStayAsTheyAre) {
  EXPECT_EQ(Format("'%s'", "100%s%n%d"), "'100%s%n%d'");
}

TEST(Text, BeginningsIgnoreTheCaseOfLetters) {
  EXPECT_TRUE(BeginsWithNoCase("Crest", "cR"));
  EXPECT_TRUE(BeginsWithNoCase("crest", ""));
  EXPECT_TRUE(BeginsWithNoCase("cr", "CR"));
  EXPECT_FALSE(BeginsWithNoCase("c", "cr"));
  EXPECT_FALSE(BeginsWithNoCase("brest", "cr"));
}

TEST(Text, OnlyTheLettersAToZHaveNoCase) {
  EXPECT_TRUE(EqualsNoCase("AZaz09", "azAZ09"));
  // The neighbours of the letters in the character table, and letters with accents, keep their
  // case.
  EXPECT_FALSE(EqualsNoCase("@", "`"));
  EXPECT_FALSE(EqualsNoCase("[", "{"));
  EXPECT_FALSE(EqualsNoCase("\xC4", "\xE4"));
  EXPECT_FALSE(EqualsNoCase("ab", "abc"));
}

TEST(Text, TrimRightCutsBlanksTabsAndLineFeeds) {
  EXPECT_EQ(TrimmedRight("ab \t\n \n"), "ab");
  EXPECT_EQ(TrimmedRight("  ab"), "  ab");
  EXPECT_EQ(TrimmedRight("ab\r\n"), "ab\r");
  EXPECT_EQ(TrimmedRight(""), "");
}

TEST(Text, TrimRightEmptiesATextThatBeginsWithALineFeed) {
  EXPECT_EQ(TrimmedRight("\n"), "");
  EXPECT_EQ(TrimmedRight("\nabc"), "");
}

TEST(Text, TrimRightNeverTakesTheFirstCharacter) {
  EXPECT_EQ(TrimmedRight(" "), " ");
  EXPECT_EQ(TrimmedRight(" \t\n"), " ");
  EXPECT_EQ(TrimmedRight("\t"), "\t");
}

TEST(Text, TrimBothSidesCutsAtBothEnds) {
  EXPECT_EQ(TrimmedBoth("\t a b \n"), "a b");
  EXPECT_EQ(TrimmedBoth(" \t\n"), "");
  EXPECT_EQ(TrimmedBoth(""), "");
  EXPECT_EQ(TrimmedBoth("a"), "a");
}

TEST(Text, WordsAreSplitAtEveryKindOfWhiteSpace) {
  EXPECT_EQ(SplitAtWhiteSpace("  a\tb\n\rc\v\fd "), (std::vector<std::string>{"a", "b", "c", "d"}));
  EXPECT_TRUE(SplitAtWhiteSpace(" \t ").empty());
  EXPECT_TRUE(SplitAtWhiteSpace("").empty());
}

TEST(Text, ToIntReadsTheNumberAtTheStart) {
  EXPECT_EQ(ToInt("42"), 42);
  EXPECT_EQ(ToInt(" \t+7x"), 7);
  EXPECT_EQ(ToInt("-12 3"), -12);
  EXPECT_EQ(ToInt("0x10"), 0);
  EXPECT_EQ(ToInt("x1"), 0);
  EXPECT_EQ(ToInt("- 1"), 0);
  EXPECT_EQ(ToInt("+-1"), 0);
  EXPECT_EQ(ToInt(""), 0);
}

TEST(Text, ToIntGivesTheNearestNumberWhenOutOfRange) {
  EXPECT_EQ(ToInt("2147483647"), std::numeric_limits<int>::max());
  EXPECT_EQ(ToInt("2147483648"), std::numeric_limits<int>::max());
  EXPECT_EQ(ToInt("-2147483648"), std::numeric_limits<int>::min());
  EXPECT_EQ(ToInt("-2147483649"), std::numeric_limits<int>::min());
  EXPECT_EQ(ToInt(std::string(1000, '9')), std::numeric_limits<int>::max());
  EXPECT_EQ(ToInt("-" + std::string(1000, '9')), std::numeric_limits<int>::min());
}

TEST(Text, OnlyDigitsMakeANumberWord) {
  EXPECT_TRUE(IsAllDigits("0"));
  EXPECT_TRUE(IsAllDigits("0123456789"));
  EXPECT_FALSE(IsAllDigits(""));
  EXPECT_FALSE(IsAllDigits("-1"));
  EXPECT_FALSE(IsAllDigits("1 "));
  EXPECT_FALSE(IsAllDigits("1a"));
  EXPECT_FALSE(IsAllDigits("\xB2"));
}

TEST(Scanner, ReadsNumbersOneAfterTheOther) {
  Scanner scanner(" 12-3 +4x");
  long long value = 0;
  EXPECT_TRUE(scanner.ReadNumber(value));
  EXPECT_EQ(value, 12);
  EXPECT_TRUE(scanner.ReadNumber(value));
  EXPECT_EQ(value, -3);
  EXPECT_TRUE(scanner.ReadNumber(value));
  EXPECT_EQ(value, 4);
  EXPECT_FALSE(scanner.ReadNumber(value));
  EXPECT_EQ(value, 4);
}

TEST(Scanner, AMissingNumberTakesNothingFromTheText) {
  Scanner scanner(" abc");
  long long value = 5;
  EXPECT_FALSE(scanner.ReadNumber(value));
  EXPECT_EQ(value, 5);
  EXPECT_EQ(scanner.ReadWord(), "abc");
}

TEST(Scanner, NumbersOf64BitsAreReadWhole) {
  long long value = 0;
  EXPECT_TRUE(Scanner("9223372036854775807").ReadNumber(value));
  EXPECT_EQ(value, std::numeric_limits<long long>::max());
  EXPECT_TRUE(Scanner("9223372036854775808").ReadNumber(value));
  EXPECT_EQ(value, std::numeric_limits<long long>::max());
  EXPECT_TRUE(Scanner("-9223372036854775807").ReadNumber(value));
  EXPECT_EQ(value, -std::numeric_limits<long long>::max());
}

TEST(Scanner, ACharacterIsReadOnlyWhenItComesNext) {
  Scanner scanner("5:30");
  long long value = 0;
  EXPECT_FALSE(scanner.ReadCharacter(':'));
  EXPECT_TRUE(scanner.ReadNumber(value));
  EXPECT_TRUE(scanner.ReadCharacter(':'));
  EXPECT_TRUE(scanner.ReadNumber(value));
  EXPECT_EQ(value, 30);
  EXPECT_FALSE(scanner.ReadCharacter(':'));
}

TEST(Scanner, WordsEndAtWhiteSpace) {
  Scanner scanner("\t one  two");
  EXPECT_EQ(scanner.ReadWord(), "one");
  EXPECT_EQ(scanner.ReadWord(), "two");
  EXPECT_EQ(scanner.ReadWord(), "");
}

}  // namespace
}  // namespace tarvendo
