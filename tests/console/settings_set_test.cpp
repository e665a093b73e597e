#include <gtest/gtest.h>

#include "console/typed_commands.h"
#include "console/unknown_word_text.h"

namespace tarvendo {
namespace {

class Set : public TypedCommands {
 protected:
  const TourneySettings& s = tourney.Settings();
};

TEST_F(Set, WithoutAWordListsTheSettings) {
  EXPECT_EQ(Type("set"),
            "What do you want?\nCurrently available are:\n"
            "  BlackOptions   \t  Computer       \n"
            "  FilesPath      \t  HashTables     \n"
            "  Name           \t  PgnFile        \n"
            "  PicsDir        \t  Ponder         \n"
            "  Rounds         \t  SaveDebugFiles \n"
            "  SubRounds      \t  Tablebases     \n"
            "  TimeControl    \t  WhiteOptions   \n"
            "  WinboardPath   \t");
}

TEST_F(Set, WordsThatBeginWithOnOrTrSwitchOn) {
  for (const char* word : {"true", "ON", "onward", "TRy"}) {
    tourney.ChangeSettings()->ponder = 0;
    EXPECT_EQ(Type(std::string("set ponder ") + word), "Ponder is now ON.\n") << word;
    EXPECT_EQ(s.ponder, 1);
  }
  for (const char* word : {"yes", "off", "1", "o"}) {
    tourney.ChangeSettings()->ponder = 1;
    EXPECT_EQ(Type(std::string("set ponder ") + word), "Ponder is now OFF.\n") << word;
    EXPECT_EQ(s.ponder, 0);
  }
}

TEST_F(Set, AutoRunIsASwitchToo) {
  EXPECT_EQ(Type("set autorun on"), "AutoRun is now ON.\n");
  EXPECT_EQ(s.auto_run, 1);
  EXPECT_EQ(Type("set AUTOR no"), "AutoRun is now OFF.\n");
  EXPECT_EQ(s.auto_run, 0);
}

TEST_F(Set, AutoSaveMayBeGivenItsFile) {
  EXPECT_EQ(Type("set autosave on /t/my.ini more"), "AutoSave is now ON, save file: /t/my.ini\n");
  EXPECT_EQ(file.Name(), "/t/my.ini");
  EXPECT_EQ(Type("set autosave off /t/other.ini"), "AutoSave is now OFF.\n");
  EXPECT_EQ(file.Name(), "/t/my.ini");
  EXPECT_EQ(Type("set autosave on"), "AutoSave is now ON, save file: /t/my.ini\n");
}

TEST_F(Set, ASwitchWithoutAValueAsks) {
  EXPECT_EQ(Type("set ponder"), "You want ponder on or off?\n");
  EXPECT_EQ(Type("set autorun"), "You want autorun on or off?\n");
  EXPECT_EQ(Type("set autosave"), "You want autosave on or off?\n");
  EXPECT_EQ(Type("set savedebugfiles"),
            "Do you want to save winboard.debug-files always, never or automatically?\n");
}

TEST_F(Set, TheThreeWaysOfSavingDebugFiles) {
  EXPECT_EQ(Type("set sav always"), "Debug files are now saved ALWAYS.\n");
  EXPECT_EQ(s.save_debug_files, kSaveAlways);
  EXPECT_EQ(Type("set sav AUto"), "Debug files to be saved are now selected AUTOMATICALLY.\n");
  EXPECT_EQ(s.save_debug_files, kSaveAutomatically);
  EXPECT_EQ(Type("set sav what"), "Debug files are now saved NEVER.\n");
  EXPECT_EQ(s.save_debug_files, kSaveNever);
}

TEST_F(Set, SubRoundsIsANumberOrZero) {
  EXPECT_EQ(Type("set subrounds 2"), "SubRounds = 2\n");
  EXPECT_EQ(s.sub_rounds, 2);
  EXPECT_EQ(Type("set sub x"), "SubRounds = 0\n");
  EXPECT_EQ(Type("set sub 99999999999"), "SubRounds = 2147483647\n");
  EXPECT_EQ(Type("set sub"), "How about specifying a value, too?\n");
  EXPECT_EQ(s.sub_rounds, 2147483647);
}

TEST_F(Set, FilesPathEndsInABackslash) {
  EXPECT_EQ(Type("set filespath c:\\my games"), "FilesPath = c:\\my games\\\n");
  EXPECT_EQ(s.files_path, "c:\\my games\\");
  EXPECT_EQ(Type("set fil c:\\t\\"), "FilesPath = c:\\t\\\n");
  EXPECT_EQ(Type("set fil"), "FilesPath = ''\n");
  EXPECT_EQ(s.files_path, "");
}

TEST_F(Set, TextsAreTheRestOfTheLine) {
  EXPECT_EQ(Type("set pic  my pics \t"), "PicsDir = my pics\n");
  EXPECT_EQ(s.pics_dir, "my pics");
  EXPECT_EQ(Type("set com a  %d PC"), "Computer = a  %d PC\n");
  EXPECT_EQ(s.computer, "a  %d PC");
  EXPECT_EQ(Type("set hash 1 MB"), "Hashtables = 1 MB\n");
  EXPECT_EQ(s.hash_tables, "1 MB");
  EXPECT_EQ(Type("set tab none"), "Tablebases = none\n");
  EXPECT_EQ(s.tablebases, "none");
  EXPECT_EQ(Type("set name My Cup"), "Name = My Cup\n");
  EXPECT_EQ(s.name, "My Cup");
  EXPECT_EQ(Type("set white /a /b"), "WhiteOptions = '/a /b'\n");
  EXPECT_EQ(s.white_options, "/a /b");
  EXPECT_EQ(Type("set black /c"), "BlackOptions = '/c'\n");
  EXPECT_EQ(s.black_options, "/c");
}

TEST_F(Set, TextsWithoutAValueBecomeEmpty) {
  for (const auto text : {&TourneySettings::pics_dir, &TourneySettings::computer,
                          &TourneySettings::hash_tables, &TourneySettings::tablebases,
                          &TourneySettings::white_options, &TourneySettings::black_options}) {
    const auto change = tourney.ChangeSettings();
    (*change).*text = "x";
  }
  EXPECT_EQ(Type("set pic"), "PicsDir = ''\n");
  EXPECT_EQ(Type("set com"), "Computer = ''\n");
  EXPECT_EQ(Type("set has"), "Hashtables = ''\n");
  EXPECT_EQ(Type("set tab"), "Tablebases = ''\n");
  EXPECT_EQ(Type("set whi"), "WhiteOptions = ''\n");
  EXPECT_EQ(Type("set bla"), "BlackOptions = ''\n");
  EXPECT_EQ(s.pics_dir + s.computer + s.hash_tables + s.tablebases, "");
  EXPECT_EQ(s.white_options + s.black_options, "");
}

TEST_F(Set, ANameWithoutAValueIsMyOwnTourney) {
  EXPECT_EQ(Type("set name"), "Name = 'My own tourney'\n");
  EXPECT_EQ(s.name, "My own tourney");
}

TEST_F(Set, WinboardPathNeedsAValue) {
  EXPECT_EQ(Type("set win"), "How about specifying a value, too?\n");
  EXPECT_EQ(s.winboard_path, "winboard.exe");
  EXPECT_EQ(Type("set win c:\\Program Files\\w.exe"), "WinBoardPath = c:\\Program Files\\w.exe\n");
  EXPECT_EQ(s.winboard_path, "c:\\Program Files\\w.exe");
}

TEST_F(Set, ABarePgnFileLiesInTheFilesPath) {
  EXPECT_EQ(Type("set pgn my.pgn more"), "PgnFile = /t\\my.pgn\n");
  EXPECT_EQ(s.pgn_file, "/t\\my.pgn");
  EXPECT_EQ(Type("set pgn c:\\x\\my.pgn"), "PgnFile = c:\\x\\my.pgn\n");
  EXPECT_EQ(Type("set pgn"), "How about specifying a value, too?\n");
  EXPECT_EQ(s.pgn_file, "c:\\x\\my.pgn");
}

TEST_F(Set, TheTimeControlIsShownWithSecondsOnlyWhenThereAreAny) {
  EXPECT_EQ(Type("set timecontrol 40 2:30 5"), "TimeControl = Time: 2:30, Inc: 5, Mps: 40\n");
  EXPECT_EQ(s.time_control.seconds, 150);
  EXPECT_EQ(Type("set tim 0 5 0"), "TimeControl = Time: 5, Inc: 0, Mps: 0\n");
  EXPECT_EQ(Type("set tim 0 5:05 0"), "TimeControl = Time: 5:5, Inc: 0, Mps: 0\n");
  EXPECT_EQ(Type("set tim 40"), "TimeControl = Time: 0, Inc: 0, Mps: 40\n");
}

TEST_F(Set, ATimeControlWithoutAValueIsExplained) {
  EXPECT_EQ(Type("set tim"), "Time control: <Moves per sesion> <Time> <Inc>\n");
  EXPECT_EQ(s.time_control.seconds, 60);
}

TEST_F(Set, RoundsOfARoundRobinAreItsOwnAffair) {
  for (const char* line : {"set rounds", "set rounds 3"}) {
    EXPECT_EQ(Type(line),
              "Tourney type not SWISS, so number of rounds will be determined automatically.\n");
  }
  EXPECT_EQ(s.rounds, 10);
}

TEST_F(Set, RoundsOfASwissTourneyMustBePositive) {
  tourney.ChangeSettings()->type = kSwiss;
  EXPECT_EQ(Type("set rounds"), "You should specify a value, too.\n");
  EXPECT_EQ(Type("set rounds 0"), "How about a positive value?\n");
  EXPECT_EQ(Type("set rounds -3"), "How about a positive value?\n");
  EXPECT_EQ(Type("set rounds x"), "How about a positive value?\n");
  EXPECT_EQ(s.rounds, 10);
  EXPECT_EQ(Type("set rounds 2"), "Rounds: 2\n");
  EXPECT_EQ(s.rounds, 2);
}

TEST_F(Set, TooManyRoundsAreWarnedOfAndStoredAllTheSame) {
  tourney.ChangeSettings()->type = kSwiss;
  EXPECT_EQ(Type("set rounds 3"),
            "Amount of rounds can't be more than half of players in the tourney.\n"
            "Setting Rounds to 2.\n"
            "Rounds: 3\n");
  EXPECT_EQ(s.rounds, 3);
}

TEST_F(Set, TheTypeIsSwissForAnyWordWithS) {
  EXPECT_EQ(Type("set type Swiss"), "Tourney type now SWISS.\n");
  EXPECT_TRUE(tourney.IsSwiss());
  EXPECT_EQ(Type("set type robin"), "Tourney type now ROUND ROBIN.\n");
  EXPECT_EQ(Type("set type s"), "Tourney type now SWISS.\n");
  EXPECT_EQ(Type("set type"), "Tourney type now ROUND ROBIN.\n");
  EXPECT_FALSE(tourney.IsSwiss());
}

TEST_F(Set, AWordShorterThanItsPrefixIsUnknown) {
  for (const std::string prefix :
       {"pond", "autor", "autos", "sav", "sub", "fil", "pic", "com", "has", "tab", "name", "pgn",
        "whi", "bla", "win", "tim", "rounds", "type"}) {
    const std::string shorter = prefix.substr(0, prefix.size() - 1);
    EXPECT_EQ(Type("set " + shorter + " x"), Unknown(shorter));
    EXPECT_NE(Type("set " + prefix + " x"), Unknown(prefix));
  }
}

TEST_F(Set, AnUnknownWordIsNamed) {
  EXPECT_EQ(Type("set round 3"), Unknown("round"));
  EXPECT_EQ(Type("set runner on"), Unknown("runner"));
}

}  // namespace
}  // namespace tarvendo
