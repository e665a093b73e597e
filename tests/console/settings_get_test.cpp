#include <gtest/gtest.h>

#include "console/typed_commands.h"
#include "console/unknown_word_text.h"
#include "platform/clock.h"

namespace tarvendo {
namespace {

class Get : public TypedCommands {};

TEST_F(Get, WithoutAWordListsTheSettings) {
  EXPECT_EQ(Type("get"),
            "What do you want?\nCurrently available are:\n"
            "  AutoRun        \t  AutoSave       \n"
            "  BlackOptions   \t  Computer       \n"
            "  FilesPath      \t  HashTables     \n"
            "  Name           \t  PgnFile        \n"
            "  PicsDir        \t  Ponder         \n"
            "  Rounds         \t  RunnerStatus   \n"
            "  SaveDebugFiles \t  SubRounds      \n"
            "  Tablebases     \t  TimeControl    \n"
            "  Type           \t  WhiteOptions   \n"
            "  WinboardPath   \t");
}

TEST_F(Get, PonderIsAnsweredTwice) {
  EXPECT_EQ(Type("get ponder"), "Ponder is OFF.\n" + Unknown("ponder"));
  tourney.ChangeSettings()->ponder = 1;
  EXPECT_EQ(Type("get POND"), "Ponder is ON.\n" + Unknown("POND"));
  EXPECT_EQ(Type("get ponderous"), "Ponder is ON.\n" + Unknown("ponderous"));
}

TEST_F(Get, AutoRunIsAnsweredTwice) {
  EXPECT_EQ(Type("get autorun"), "AutoRun is OFF.\n" + Unknown("autorun"));
  tourney.ChangeSettings()->auto_run = 1;
  EXPECT_EQ(Type("get autor"), "AutoRun is ON.\n" + Unknown("autor"));
}

TEST_F(Get, ASwitchedOffAutoSaveIsReportedUnderAutoRunsName) {
  EXPECT_EQ(Type("get autosave"), "AutoRun is OFF.\n" + Unknown("autosave"));
  UseAutoSave();
  EXPECT_EQ(Type("get autos"), "AutoSave is ON, save file: /t/saved.ini\n" + Unknown("autos"));
}

TEST_F(Get, BehindADoubleAnswerTheWordsForEverywhereAreStillLookedFor) {
  EXPECT_EQ(Type("get ponder type"), "Ponder is OFF.\nType = ROUND ROBIN.\n");
  EXPECT_EQ(Type("get ponder round"), "Ponder is OFF.\nRound = 1/10\n");
}

TEST_F(Get, TheThreeWaysOfSavingDebugFiles) {
  tourney.ChangeSettings()->save_debug_files = kSaveNever;
  EXPECT_EQ(Type("get sav"), "Debug files are saved NEVER.\n");
  tourney.ChangeSettings()->save_debug_files = kSaveAutomatically;
  EXPECT_EQ(Type("get savedebugfiles"), "Debug files that are saved are selected AUTOMATICALLY.\n");
  tourney.ChangeSettings()->save_debug_files = kSaveAlways;
  EXPECT_EQ(Type("get SAV"), "Debug files are saved ALWAYS.\n");
}

TEST_F(Get, RunnerStatusIsTheRunnersReport) {
  EXPECT_EQ(Type("get runnerstatus"), "Runner status: STOPPED\n");
  tourney.ChangeSwitch()->SetRunning(true);
  EXPECT_EQ(Type("get run"), "Runner status: RUNNING\n");
}

TEST_F(Get, RoundAndTypeAreFoundInAnyWord) {
  EXPECT_EQ(Type("get rounds"), "Round = 1/10\n");
  EXPECT_EQ(Type("get the round"), "Round = 1/10\n");
  EXPECT_EQ(Type("get my type"), "Type = ROUND ROBIN.\n");
  tourney.ChangeSettings()->type = kSwiss;
  EXPECT_EQ(Type("get type"), "Type = SWISS.\n");
  EXPECT_EQ(Type("get sub round"), "SubRounds = 1\n") << "an earlier test has ended the command";
}

TEST_F(Get, TextsAreShownAsTheyAre) {
  tourney.ChangeSettings()->pics_dir = "pics\\";
  tourney.ChangeSettings()->computer = "a 50% PC";
  tourney.ChangeSettings()->hash_tables = "h";
  tourney.ChangeSettings()->tablebases = "t";
  tourney.ChangeSettings()->name = "My Cup";
  tourney.ChangeSettings()->white_options = "/w";
  tourney.ChangeSettings()->black_options = "";
  EXPECT_EQ(Type("get fil"), "Files Path = /t\\\n");
  EXPECT_EQ(Type("get pic"), "Pics Dir = pics\\\n");
  EXPECT_EQ(Type("get tab"), "Tablebases = t\n");
  EXPECT_EQ(Type("get com"), "Computer = a 50% PC\n");
  EXPECT_EQ(Type("get has"), "Hashtables = h\n");
  EXPECT_EQ(Type("get name"), "Name = My Cup\n");
  EXPECT_EQ(Type("get pgn"), "PgnFile = /t\\all.pgn\n");
  EXPECT_EQ(Type("get win"), "WinboardPath = winboard.exe\n");
  EXPECT_EQ(Type("get whi"), "WhiteOptions = '/w'\n");
  EXPECT_EQ(Type("get bla"), "BlackOptions = ''\n");
}

TEST_F(Get, TheTimeControlHasFourLines) {
  tourney.ChangeSettings()->time_control = {305, 2, 40};
  EXPECT_EQ(Type("get tim"), "TimeControl:\n    Time: 5:05\n    Inc:  2\n    Mps:  40\n");
}

TEST_F(Get, AnUnknownWordIsNamed) {
  EXPECT_EQ(Type("get nonsense"), Unknown("nonsense"));
  EXPECT_EQ(Type("get ru"), Unknown("ru"));
  EXPECT_EQ(Type("get nam"), Unknown("nam"));
}

TEST_F(Get, AWordShorterThanItsPrefixIsUnknown) {
  for (const std::string prefix :
       {"all", "pond", "autor", "autos", "sav",  "run", "sub", "rou", "type", "fil",
        "pic", "tab",  "com",   "has",   "name", "pgn", "win", "whi", "bla",  "tim"}) {
    const std::string shorter = prefix.substr(0, prefix.size() - 1);
    EXPECT_EQ(Type("get " + shorter), Unknown(shorter));
    EXPECT_NE(Type("get " + prefix), Unknown(prefix));
  }
}

TEST_F(Get, AllIsLookedForInTheSecondWordOnly) {
  tourney.ChangeSettings()->name = "Cup";
  EXPECT_EQ(Type("get name all"), "Name = Cup\n");
}

TEST_F(Get, AllIsTheFullListing) {
  tourney.ChangeSettings()->name = "Cup";
  tourney.ChangeSettings()->pics_dir = "p";
  tourney.ChangeSettings()->computer = "PC";
  tourney.ChangeSettings()->hash_tables = "h";
  tourney.ChangeSettings()->tablebases = "t";
  tourney.ChangeSettings()->time_control = {150, 5, 40};
  tourney.ChangeSettings()->sub_rounds = 2;
  EXPECT_EQ(Type("get all"),
            "Type:          Round Robin\n"
            "TimeControl:\n"
            "    Time:      2:30\n"
            "    Inc:       5\n"
            "    Mps:       40\n"
            "SubRounds:     2\n"
            "\nName:          Cup\n"
            "WinboardPath:  winboard.exe\n"
            "Files Path:    /t\\\n"
            "Pics Dir:      p\n"
            "PgnFile:       /t\\all.pgn\n"
            "\nComputer:     PC\n"
            "Hashtables:    h\n"
            "Ponder:        OFF.\n"
            "Tablebases:    t\n"
            "WhiteOptions:  ''\n"
            "BlackOptions:  ''\n"
            "AutoRun:       OFF.\n"
            "AutoSave:      OFF.\n"
            "SaveDebug:     NEVER.Runner status: STOPPED\n");
}

TEST_F(Get, AllOfASwissTourneyHasItsRound) {
  tourney.ChangeSettings()->type = kSwiss;
  tourney.ChangeSettings()->ponder = 1;
  tourney.ChangeSettings()->auto_run = 1;
  tourney.ChangeSettings()->save_debug_files = kSaveAutomatically;
  tourney.ChangeSettings()->white_options = "w";
  tourney.ChangeSettings()->black_options = "b";
  UseAutoSave();
  tourney.ChangeState()->round = 3;
  tourney.ChangeSwitch()->SetStopTime(1000000000);
  const std::string text = Type("get ALL");
  EXPECT_EQ(text.substr(0, 21), "Type:          Swiss\n");
  for (const std::string line :
       {"Mps:       0\nRound:         3/10\nSubRounds:     1\n", "Ponder:        ON.\n",
        "WhiteOptions:  'w'\nBlackOptions:  'b'\n", "AutoRun:       ON.\n",
        "AutoSave:      ON, save file: /t/saved.ini\n", "SaveDebug:     AUTOMATICALLY.Runner"}) {
    EXPECT_NE(text.find(line), std::string::npos) << line;
  }
  EXPECT_TRUE(text.ends_with("STOPPED\nStop time:  " + LocalTimeText(1000000000)));
  tourney.ChangeSettings()->save_debug_files = kSaveAlways;
  EXPECT_NE(Type("get all").find("SaveDebug:     ALWAYS.Runner"), std::string::npos);
}

}  // namespace
}  // namespace tarvendo
