#include "base/word_splitter.h"

#include <gtest/gtest.h>

namespace tarvendo {
namespace {

using Words = std::vector<std::string>;

const SplitRules kEngineLine = {"=;", "\"'"};

TEST(WordSplitter, WhiteSpaceAndTheSeparatorsStandBetweenWords) {
  EXPECT_EQ(SplitWords(" fmax\t/fd=Fairy-Max;/x\r\n", kEngineLine),
            (Words{"fmax", "/fd", "Fairy-Max", "/x"}));
}

TEST(WordSplitter, ATextOfSeparatorsOnlyHasNoWords) {
  EXPECT_EQ(SplitWords("", kEngineLine), Words{});
  EXPECT_EQ(SplitWords(" =;= \t\n", kEngineLine), Words{});
}

TEST(WordSplitter, AQuotedWordHoldsBlanksSeparatorsAndTheOtherQuote) {
  EXPECT_EQ(SplitWords("\"a =b\" 'it is \"x\"'", kEngineLine),
            (Words{"\"a =b\"", "'it is \"x\"'"}));
}

TEST(WordSplitter, AnEmptyQuotedWordIsAWord) {
  EXPECT_EQ(SplitWords("/name=\"\" /x", kEngineLine), (Words{"/name", "\"\"", "/x"}));
}

TEST(WordSplitter, AWordEndsBehindItsClosingQuote) {
  EXPECT_EQ(SplitWords("\"my engine\"/x", kEngineLine), (Words{"\"my engine\"", "/x"}));
}

TEST(WordSplitter, AQuoteLeftOpenIsClosedAtTheEnd) {
  EXPECT_EQ(SplitWords("a \"b c", kEngineLine), (Words{"a", "\"b c\""}));
  EXPECT_EQ(SplitWords("a '", kEngineLine), (Words{"a", "''"}));
}

TEST(WordSplitter, AQuoteInsideAWordIsAnOrdinaryCharacter) {
  EXPECT_EQ(SplitWords("O'Brien x'", kEngineLine), (Words{"O'Brien", "x'"}));
}

TEST(WordSplitter, OnlyTheQuotesOfTheRulesQuote) {
  EXPECT_EQ(SplitWords("\"a b\" 'c d'", {"", "'"}), (Words{"\"a", "b\"", "'c d'"}));
}

TEST(WithoutQuotes, TakesOffOnePairOfTheSameKind) {
  EXPECT_EQ(WithoutQuotes("\"a b\""), "a b");
  EXPECT_EQ(WithoutQuotes("'a b'"), "a b");
  EXPECT_EQ(WithoutQuotes("\"'a'\""), "'a'");
  EXPECT_EQ(WithoutQuotes("\"\""), "");
}

TEST(WithoutQuotes, LeavesAnythingElseAlone) {
  EXPECT_EQ(WithoutQuotes(""), "");
  EXPECT_EQ(WithoutQuotes("\""), "\"");
  EXPECT_EQ(WithoutQuotes("\"a'"), "\"a'");
  EXPECT_EQ(WithoutQuotes("a"), "a");
}

}  // namespace
}  // namespace tarvendo
