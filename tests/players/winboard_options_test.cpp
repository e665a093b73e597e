#include "players/winboard_options.h"

#include <gtest/gtest.h>

namespace tarvendo {
namespace {

void ExpectForms(const std::string& white, const std::string& black) {
  for (const std::string& word : {white, black}) {
    EXPECT_EQ(FormsOf(word).white, white) << word;
    EXPECT_EQ(FormsOf(word).black, black) << word;
  }
}

TEST(WinboardOptions, TheShortOptionsOfOneEngineHaveAFormForEachColour) {
  ExpectForms("/fUCI", "/sUCI");
  ExpectForms("/fUCCI", "/sUCCI");
  ExpectForms("/fUSI", "/sUSI");
  ExpectForms("/fNoOwnBookUCI", "/sNoOwnBookUCI");
  ExpectForms("/fSAN", "/sSAN");
  ExpectForms("/fh", "/sh");
  ExpectForms("/reuse", "/reuse2");
  ExpectForms("/xreuse", "/xreuse2");
  ExpectForms("/reuseFirst", "/reuseSecond");
}

TEST(WinboardOptions, SoDoThoseThatBeginWithFirstAndSecond) {
  ExpectForms("/firstProtocolVersion", "/secondProtocolVersion");
  ExpectForms("/firstTimeOdds", "/secondTimeOdds");
  ExpectForms("/firstInitString", "/secondInitString");
}

TEST(WinboardOptions, TheMinusStaysAMinus) {
  ExpectForms("-firstTimeOdds", "-secondTimeOdds");
  ExpectForms("-fUCI", "-sUCI");
}

TEST(WinboardOptions, TheFirstEnginesInitStringHasAnOldNameToo) {
  EXPECT_EQ(FormsOf("/initString").white, "/initString");
  EXPECT_EQ(FormsOf("/initString").black, "/secondInitString");
}

TEST(WinboardOptions, AWordThatIsNoOptionOfOneEngineIsTheSameForBoth) {
  for (const std::string word :
       {"", "/", "-", "2", "fUCI", "\"/fUCI\"", "/variant", "/fb", "/fUCIx", "/fuci", "/first",
        "/second", "/firstly", "/secondary", "/flipView", "/size", "/sgf"}) {
    ExpectForms(word, word);
  }
}

TEST(WinboardOptions, OnlyWhatIsNotThereIsMissing) {
  EXPECT_EQ(MissingOptions("", "/a"), "/a");
  EXPECT_EQ(MissingOptions("/a", "/a"), "");
  EXPECT_EQ(MissingOptions("/a /b", "/b /c /a"), "/c");
  EXPECT_EQ(MissingOptions("/a ", "/a"), "");
  EXPECT_EQ(MissingOptions("/ab", "/a"), "/a");
}

TEST(WinboardOptions, WhatStandsTwiceIsMissingOnce) {
  EXPECT_EQ(MissingOptions("", " /a  /b /a"), "/a /b");
}

TEST(WinboardOptions, AnOptionWithAnotherValueIsAnotherOption) {
  EXPECT_EQ(MissingOptions("/x 1 /y", "/x 2"), "/x 2");
  EXPECT_EQ(MissingOptions("/x 1 /y", "/x"), "/x");
  EXPECT_EQ(MissingOptions("/x 1 /y", "/y /x 1"), "");
  EXPECT_EQ(MissingOptions("/x -5", "/y -5"), "/y -5");
  EXPECT_EQ(MissingOptions("/x \"a /b\"", "/y \"a /b\""), "/y \"a /b\"");
}

TEST(WinboardOptions, APathThatBeginsWithASlashIsAValue) {
  EXPECT_EQ(MissingOptions("/x /usr/games/a", "/y /usr/games/a"), "/y /usr/games/a");
}

TEST(WinboardOptions, AnOptionOfOneEngineMayBeginWithAMinus) {
  EXPECT_EQ(MissingOptions("/a -fUCI", "/b -fUCI"), "/b");
}

}  // namespace
}  // namespace tarvendo
