#include "console/help.h"

#include <gtest/gtest.h>

#include <string>

#include "fakes/captured_log.h"

namespace tarvendo {
namespace {

using std::string_literals::operator""s;

constexpr const char* kTwoTopics =
    "Save: stores the tourney\nfirst line\nlast line\n-ENDTOPIC-\n"
    "Table: writes a page\nrows\n-ENDTOPIC- and this is not shown\n";

class HelpCommand : public testing::Test {
 protected:
  void PutHelpFile(const std::string& text) { machine_.files.Put("/prog/TourneyHelp.txt", text); }

  /// What the line prints, with the program started from /prog.
  std::string Ask(const std::string& line) {
    Help(line, machine_.files, "/prog/");
    return machine_.TakeOutput();
  }

  CapturedLog machine_;
};

TEST_F(HelpCommand, WithoutAnArgumentTheCommandsAreListed) {
  PutHelpFile(kTwoTopics);
  const std::string list = Ask("help\n");
  EXPECT_EQ(list,
            "What do you want?\nCurrently available are:\n"
            "  Available      \t  AddAllPlayers  \n"
            "  AddGroup       \t  AddPlayer      \n"
            "  CreatePlayer   \t  DeletePlayer   \n"
            "  ReadPlayers    \t  RemovePlayer   \n"
            "  WritePlayers   \t  Get            \n"
            "  Game           \t  Load           \n"
            "  Player         \t  Reset          \n"
            "  Save           \t  Set            \n"
            "  CreateBrackets \t  CreateRRGames  \n"
            "  ForfeitPlayer  \t  Pair           \n"
            "  RemoveGames    \t  Replay         \n"
            "  ReSpool        \t  Run            \n"
            "  ShowPlayers    \t  Spool          \n"
            "  ShowGames      \t  Stop           \n"
            "  ShowBrackets   \t  Table          \n"
            "  TextTable      \t  UnSpool        \n"
            "  Housekeep      \t  GetAllResults  \n"
            "  Quit           \t  View           \n");
  EXPECT_EQ(Ask("h\n"), list);
  EXPECT_EQ(Ask("hello\n"), list);
}

TEST_F(HelpCommand, TheListNeedsNoHelpFile) {
  EXPECT_NE(Ask("help\n").find("Quit"), std::string::npos);
}

TEST_F(HelpCommand, ABlankAndNothingElseIsAnEmptyArgument) {
  PutHelpFile(kTwoTopics);
  EXPECT_EQ(Ask("help \n"), "Command  not found.\n");
  EXPECT_EQ(Ask("help  \t \n"), "Command  not found.\n");
}

TEST_F(HelpCommand, ATopicIsPrintedWithItsHeaderAndWithoutItsEnd) {
  PutHelpFile(kTwoTopics);
  EXPECT_EQ(Ask("help save\n"), "Save: stores the tourney\nfirst line\nlast line\n");
  EXPECT_EQ(Ask("h save"), "Save: stores the tourney\nfirst line\nlast line\n");
}

TEST_F(HelpCommand, AbbreviationsAndLetterCaseGiveTheSameTopic) {
  PutHelpFile(kTwoTopics);
  const std::string topic = "Table: writes a page\nrows\n";
  for (const char* line : {"help Table\n", "help tab\n", "help TABLE\n", "help   tab now \t \n"}) {
    EXPECT_EQ(Ask(line), topic) << line;
  }
}

TEST_F(HelpCommand, AnUnknownWordIsNotFound) {
  PutHelpFile(kTwoTopics);
  EXPECT_EQ(Ask("help xyz\n"), "Command xyz not found.\n");
  EXPECT_EQ(Ask("help 100%s %n \n"), "Command 100%s %n not found.\n");
}

TEST_F(HelpCommand, AnAbbreviationTooShortForHelpIsNotFound) {
  PutHelpFile(kTwoTopics);
  for (const std::string word :
       {"gam", "spo", "pla", "add", "h", "wri", "sho", "create", "remove"}) {
    EXPECT_EQ(Ask("help " + word + "\n"), "Command " + word + " not found.\n");
  }
}

TEST_F(HelpCommand, AMissingHelpFileIsSaidWithItsDirectory) {
  EXPECT_EQ(Ask("help save\n"), "Can't find help file '/prog/TourneyHelp.txt'.\n");
  EXPECT_EQ(Ask("help xyz\n"), "Can't find help file '/prog/TourneyHelp.txt'.\n");
  machine_.files.PutDirectory("/prog/TourneyHelp.txt");
  EXPECT_EQ(Ask("help save\n"), "Can't find help file '/prog/TourneyHelp.txt'.\n");
}

TEST_F(HelpCommand, TheHelpFileIsThatOfTheProgramsDirectoryWhateverTheCurrentOne) {
  PutHelpFile(kTwoTopics);
  machine_.files.Put("/home/TourneyHelp.txt", "Save: another\n-ENDTOPIC-\n");
  EXPECT_EQ(Ask("help save\n"), "Save: stores the tourney\nfirst line\nlast line\n");
}

TEST_F(HelpCommand, APageBreakWaitsForNobodyAndTakesACharacter) {
  PutHelpFile("Save\none\nPAUSE here\ntwo\npause\n-ENDTOPIC-\n");
  EXPECT_EQ(Ask("help save\n"), "Save\none\n-- more --\nwo\npause\n");
}

TEST_F(HelpCommand, APageBreakBeforeTheEndOfATopicHidesIt) {
  PutHelpFile("Save\nPAUSE\n-ENDTOPIC-\nTable\n-ENDTOPIC-\n");
  EXPECT_EQ(Ask("help save\n"), "Save\n-- more --\nENDTOPIC-\nTable\n");
}

TEST_F(HelpCommand, APageBreakAtTheEndOfTheFileEndsTheTopic) {
  PutHelpFile("Save\nPAUSE\n");
  EXPECT_EQ(Ask("help save\n"), "Save\n-- more --\n");
}

TEST_F(HelpCommand, HeadersAreLookedForBehindTheEndOfATopicOnly) {
  PutHelpFile("Table\nSave\n-ENDTOPIC-\nsome text\nSave\n-ENDTOPIC-\n");
  EXPECT_EQ(Ask("help save\n"), "Command save not found.\n");
}

TEST_F(HelpCommand, EveryLineBehindAnEndIsTakenForAHeader) {
  for (const std::string ends : {"-ENDTOPIC-\n", "-ENDTOPIC-\n-ENDTOPIC-\n"}) {
    PutHelpFile(ends + "Save\ntext\n-ENDTOPIC-\n");
    EXPECT_EQ(Ask("help save\n"), "Save\ntext\n");
  }
}

TEST_F(HelpCommand, TheNameIsComparedOneLetterShort) {
  PutHelpFile(
      "Sesame\n-ENDTOPIC-\nGamble\n-ENDTOPIC-\nplayers\n-ENDTOPIC-\nRemoveGames\n-ENDTOPIC-\n");
  EXPECT_EQ(Ask("help set\n"), "Sesame\n");
  EXPECT_EQ(Ask("help game\n"), "Gamble\n");
  EXPECT_EQ(Ask("help player\n"), "players\n");
  EXPECT_EQ(Ask("help removegames\n"), "RemoveGames\n");
}

TEST_F(HelpCommand, ATopicThatTheFileLacksIsNotFound) {
  PutHelpFile(kTwoTopics);
  EXPECT_EQ(Ask("help Quit\n"), "Command Quit not found.\n");
}

TEST_F(HelpCommand, TheLastTopicNeedsNoEnd) {
  PutHelpFile("Save\ntext\n");
  EXPECT_EQ(Ask("help save\n"), "Save\ntext\n");
}

TEST_F(HelpCommand, ALastLineWithoutALineFeedIsNotPrinted) {
  PutHelpFile("Save\ntext\nlost");
  EXPECT_EQ(Ask("help save\n"), "Save\ntext\n");
}

TEST_F(HelpCommand, AHeaderThatTheFileEndsWithIsNotFound) {
  PutHelpFile("Table\n-ENDTOPIC-\nSave");
  EXPECT_EQ(Ask("help save\n"), "Command save not found.\n");
}

TEST_F(HelpCommand, FilesWithNothingToFindAreSearchedToTheirEnd) {
  for (const std::string& text :
       {""s, "\n"s, "-ENDTOPIC-"s, "-ENDTOPIC-\n"s, "\0\0\n\0"s,
        "-ENDTOPIC-\n-ENDTOPIC-\n-ENDTOPIC-\n"s, std::string(10000, 'x')}) {
    PutHelpFile(text);
    EXPECT_EQ(Ask("help save\n"), "Command save not found.\n");
  }
}

TEST_F(HelpCommand, ALongLineCountsAsSeveral) {
  const std::string line(10000, 'x');
  PutHelpFile("Save\n" + line + "\nPAUSEmore\n-ENDTOPIC-\n");
  EXPECT_EQ(Ask("help save\n"), "Save\n" + line + "\n-- more --\nENDTOPIC-\n");
  PutHelpFile("Save\n" + std::string(254, 'x') + "-ENDTOPIC-\nnot shown\n");
  EXPECT_EQ(Ask("help save\n"), "Save\n" + std::string(254, 'x'));
  PutHelpFile("Table\n-ENDTOPIC-" + std::string(244, ' ') + "Save is the next piece\ntext\n");
  EXPECT_EQ(Ask("help save\n"), "Save is the next piece\ntext\n");
}

TEST_F(HelpCommand, WhatStandsBehindANulByteIsNotShown) {
  PutHelpFile("Save\none\0 hidden\ntwo\n\0three\n-ENDTOPIC-\n"s);
  EXPECT_EQ(Ask("help save\n"), "Save\nonetwo\n");
}

TEST(HelpTopic, AnAbbreviationLeadsToItsTopic) {
  EXPECT_STREQ(FindHelpTopic("addallplayers"), "AddAllPlayers");
  EXPECT_STREQ(FindHelpTopic("RemP"), "RemovePlayer");
  EXPECT_STREQ(FindHelpTopic("removeplayer"), "RemovePlayer");
  EXPECT_STREQ(FindHelpTopic("getallresults"), "GetAllResults");
  EXPECT_STREQ(FindHelpTopic("get"), "Get");
  EXPECT_STREQ(FindHelpTopic("remg"), "RemoveGame");
  EXPECT_STREQ(FindHelpTopic("createrr"), "CreateRRGames");
  EXPECT_STREQ(FindHelpTopic("hou"), "Housekeep");
  EXPECT_EQ(FindHelpTopic("adds"), nullptr);
  EXPECT_EQ(FindHelpTopic(""), nullptr);
}

}  // namespace
}  // namespace tarvendo
