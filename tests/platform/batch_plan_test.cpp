#include "platform/batch_plan.h"

#include <gtest/gtest.h>

namespace tarvendo {
namespace {

using Words = std::vector<std::string>;

/// The words of the only step of a text.
Words OnlyWords(const std::string& text) {
  const std::vector<BatchStep> steps = ParseBatch(text);
  EXPECT_EQ(steps.size(), 1U) << text;
  return steps.empty() ? Words{} : steps.front().words;
}

TEST(BatchPlan, AGameBatchIsOneStepWithItsConditionAndItsWords) {
  const auto steps = ParseBatch(
      "@rem Round 3\n"
      "@if NOT EXIST c:\\t\\g7.PGN \"c:\\Program Files\\WinBoard\\winboard.exe\"  /xponder /cp /mg "
      "1 "
      "/sgf=c:\\t\\g7.PGN /fd=\"c:\\my engines\" /scp='\"b e.exe\" xboard'  /debug ");
  ASSERT_EQ(steps.size(), 1U);
  EXPECT_FALSE(steps[0].is_delete);
  ASSERT_EQ(steps[0].conditions.size(), 1U);
  EXPECT_FALSE(steps[0].conditions[0].must_exist);
  EXPECT_EQ(steps[0].conditions[0].path, "c:\\t\\g7.PGN");
  EXPECT_EQ(steps[0].words, (Words{"c:\\Program Files\\WinBoard\\winboard.exe", "/xponder", "/cp",
                                   "/mg", "1", "/sgf=c:\\t\\g7.PGN", "/fd=c:\\my engines",
                                   "/scp=\"b e.exe\" xboard", "/debug"}));
}

TEST(BatchPlan, ATextWithoutCommandsHasNoSteps) {
  EXPECT_TRUE(ParseBatch("").empty());
  EXPECT_TRUE(ParseBatch("\n\n  \n\t\n@\n @ \r\n").empty());
}

TEST(BatchPlan, RemarksGiveNoStepInAnyCaseOfLetters) {
  EXPECT_TRUE(ParseBatch("rem\n@REM winboard.exe\n  @ Rem x\nif exist a rem b\n").empty());
}

TEST(BatchPlan, AWordThatOnlyBeginsLikeAKeywordIsAProgram) {
  EXPECT_EQ(OnlyWords("remark x"), (Words{"remark", "x"}));
  EXPECT_EQ(OnlyWords("delete x"), (Words{"delete", "x"}));
  EXPECT_EQ(OnlyWords("ifexist x"), (Words{"ifexist", "x"}));
}

TEST(BatchPlan, AQuotedKeywordIsAProgram) {
  EXPECT_EQ(OnlyWords("'rem' x"), (Words{"rem", "x"}));
  EXPECT_EQ(OnlyWords("\"if\" exist x"), (Words{"if", "exist", "x"}));
  const auto steps = ParseBatch("\"del\" x");
  ASSERT_EQ(steps.size(), 1U);
  EXPECT_FALSE(steps[0].is_delete);
}

TEST(BatchPlan, WordsEndAtRunsOfBlanksAndTabs) {
  EXPECT_EQ(OnlyWords("  a \t  b\tc  "), (Words{"a", "b", "c"}));
}

TEST(BatchPlan, EitherKindOfQuoteStandsLiterallyInsideTheOther) {
  EXPECT_EQ(OnlyWords("a '\"b c\" d' \"it's e\""), (Words{"a", "\"b c\" d", "it's e"}));
}

TEST(BatchPlan, QuotesAreTakenOffInTheMiddleOfAWordToo) {
  EXPECT_EQ(OnlyWords("x /a='b c'd\" e\"'' f"), (Words{"x", "/a=b cd e", "f"}));
}

TEST(BatchPlan, EmptyQuotesAreAnEmptyWord) {
  EXPECT_EQ(OnlyWords("x '' \"\" y"), (Words{"x", "", "", "y"}));
}

TEST(BatchPlan, AQuoteThatIsNotClosedHoldsToTheEndOfItsLine) {
  const auto steps = ParseBatch("x 'a b\ny z\n");
  ASSERT_EQ(steps.size(), 2U);
  EXPECT_EQ(steps[0].words, (Words{"x", "a b"}));
  EXPECT_EQ(steps[1].words, (Words{"y", "z"}));
}

TEST(BatchPlan, CharactersOfShellsAreNothingSpecial) {
  EXPECT_EQ(OnlyWords("a;b $(c) `d` | e & f > g < h * %PATH% ^ \\ # !"),
            (Words{"a;b", "$(c)", "`d`", "|", "e", "&", "f", ">", "g", "<", "h", "*", "%PATH%", "^",
                   "\\", "#", "!"}));
}

TEST(BatchPlan, ConditionsAreKeptFromTheOutermostToTheInnermost) {
  const auto steps = ParseBatch("If Exist 'a b' IF not exist c x");
  ASSERT_EQ(steps.size(), 1U);
  ASSERT_EQ(steps[0].conditions.size(), 2U);
  EXPECT_TRUE(steps[0].conditions[0].must_exist);
  EXPECT_EQ(steps[0].conditions[0].path, "a b");
  EXPECT_FALSE(steps[0].conditions[1].must_exist);
  EXPECT_EQ(steps[0].conditions[1].path, "c");
  EXPECT_EQ(steps[0].words, Words{"x"});
}

TEST(BatchPlan, DeleteTakesItsPathWithItsConditions) {
  const auto steps = ParseBatch("if exist winboard.debug DEL winboard.debug");
  ASSERT_EQ(steps.size(), 1U);
  EXPECT_TRUE(steps[0].is_delete);
  EXPECT_EQ(steps[0].words, Words{"winboard.debug"});
  EXPECT_EQ(steps[0].conditions.size(), 1U);
}

TEST(BatchPlan, CommandsThatAreNotCompleteGiveNoStep) {
  for (const char* line :
       {"if", "if not", "if exist", "if not exist", "if exist a", "if not exist a", "if a == b x",
        "del", "if exist a del", "if exist a if"}) {
    EXPECT_TRUE(ParseBatch(line).empty()) << line;
  }
}

TEST(BatchPlan, ADeleteOfSeveralWordsDeletesNothing) {
  EXPECT_TRUE(ParseBatch("del c:\\my files\\g7.PGN").empty());
}

TEST(BatchPlan, NulBytesAreOrdinaryCharacters) {
  const std::string word("a\0b", 3);
  EXPECT_EQ(OnlyWords(word + " c"), (Words{word, "c"}));
}

TEST(BatchPlan, LongLinesAreReadWhole) {
  const std::string word(10000, 'w');
  EXPECT_EQ(OnlyWords("x " + word + " '" + word + " y'\n"), (Words{"x", word, word + " y"}));
}

TEST(BatchPlan, LinesMayEndInCarriageReturnAndLineFeed) {
  const auto steps = ParseBatch("a b\r\nc d\r\n");
  ASSERT_EQ(steps.size(), 2U);
  EXPECT_EQ(steps[0].words, (Words{"a", "b"}));
  EXPECT_EQ(steps[1].words, (Words{"c", "d"}));
}

}  // namespace
}  // namespace tarvendo
