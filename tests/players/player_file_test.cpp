#include "players/player_file.h"

#include <gtest/gtest.h>

#include "base/line_reader.h"
#include "fakes/captured_log.h"
#include "players/player_database.h"

namespace tarvendo {
namespace {

constexpr const char* kTwoPlayers =
    "PLAYER_FILE\n"
    "PLAYER\n"
    "Name:\nAlpha\n"
    "WhiteOptions:\n/w\n"
    "BlackOptions:\n\n"
    "ProgramExe:\nalpha.exe\n"
    "Group:\ntop old\n"
    "InitString:\ninit 100%\n"
    "Dir:\nc:\\alpha\n"
    "END_PLAYER\n"
    "\n"
    "PLAYER\n"
    "Name:\nBeta\n"
    "WhiteOptions:\n\n"
    "BlackOptions:\n/b\n"
    "ProgramExe:\nbeta.exe\n"
    "Group:\n\n"
    "InitString:\n\n"
    "Dir:\n\n"
    "END_PLAYER\n"
    "\n";

class PlayerFileTest : public testing::Test {
 protected:
  /// Reads a player file with this text and gives what was printed.
  std::string Read(const std::string& text) {
    machine.files.Put("players.txt", text);
    EXPECT_TRUE(ReadPlayerFile(machine.files, "players.txt", "", database));
    return machine.TakeOutput();
  }

  std::string ReadWithoutPath(const std::string& winboard_path, bool expected) {
    EXPECT_EQ(ReadPlayerFile(machine.files, "", winboard_path, database), expected);
    return machine.TakeOutput();
  }

  const PlayerTexts& Texts(std::size_t place) { return database.Players().at(place).texts; }

  CapturedLog machine;
  PlayerDatabase database;
};

TEST_F(PlayerFileTest, TheFileIsWrittenKeyByKey) {
  database.CreatePlayer({"Alpha", "c:\\alpha", "init 100%", "/w", "", "alpha.exe", "top old"});
  database.CreatePlayer({"Beta", "", "", "", "/b", "beta.exe", ""});
  machine.TakeOutput();
  EXPECT_TRUE(WritePlayerFile(machine.files, "players.txt", database));
  EXPECT_EQ(machine.files.Bytes("players.txt"), kTwoPlayers);
  EXPECT_EQ(machine.TakeOutput(), "");
}

TEST_F(PlayerFileTest, AnEmptyDatabaseGivesTheFirstLineAlone) {
  EXPECT_TRUE(WritePlayerFile(machine.files, "players.txt", database));
  EXPECT_EQ(machine.files.Bytes("players.txt"), "PLAYER_FILE\n");
}

TEST_F(PlayerFileTest, AFileThatCannotBeWrittenIsAFailureWithoutMessage) {
  EXPECT_FALSE(WritePlayerFile(machine.files, "nowhere\\players.txt", database));
  EXPECT_FALSE(WritePlayerFile(machine.files, "", database));
  EXPECT_EQ(machine.TakeOutput(), "");
}

TEST_F(PlayerFileTest, AFailureWhileWritingLeavesTheOldFileWhole) {
  for (const auto operation :
       {FileOperation::kWrite, FileOperation::kClose, FileOperation::kRename}) {
    machine.files.Put("players.txt", "old\n");
    machine.files.FailAt(operation, 1);
    EXPECT_FALSE(WritePlayerFile(machine.files, "players.txt", database));
    EXPECT_EQ(machine.files.Bytes("players.txt"), "old\n");
  }
}

TEST_F(PlayerFileTest, WhatWasWrittenIsReadBackInTheSameOrder) {
  EXPECT_EQ(Read(kTwoPlayers), "Player Alpha created.\nPlayer Beta created.\n");
  EXPECT_EQ(Texts(0).dir, "c:\\alpha");
  EXPECT_EQ(Texts(0).init_string, "init 100%");
  EXPECT_EQ(Texts(0).white_options, "/w");
  EXPECT_EQ(Texts(0).group, "top old");
  EXPECT_TRUE(WritePlayerFile(machine.files, "again.txt", database));
  EXPECT_EQ(machine.files.Bytes("again.txt"), kTwoPlayers);
}

TEST_F(PlayerFileTest, ReadingTheSameFileAgainAddsNobody) {
  Read(kTwoPlayers);
  EXPECT_EQ(Read(kTwoPlayers), "");
  EXPECT_EQ(database.Players().size(), 2U);
  EXPECT_EQ(Texts(0).white_options, "/w");
  EXPECT_EQ(Texts(1).black_options, "/b");
}

TEST_F(PlayerFileTest, DifferingOptionsOfAnotherFileAreAppended) {
  Read(kTwoPlayers);
  Read("PLAYER_FILE\nPLAYER\nName:\nAlpha\nWhite:\n/more\nEND_PLAYER\n");
  EXPECT_EQ(Texts(0).white_options, "/w /more");
}

TEST_F(PlayerFileTest, ABlockWithoutProgramCreatesNothingAndReadingGoesOn) {
  EXPECT_EQ(Read("PLAYER_FILE\n"
                 "PLAYER\nName:\nNobody\nEND_PLAYER\n"
                 "PLAYER\nName:\nBeta\nProgramExe:\nb\nEND_PLAYER\n"),
            "Player Beta created.\n");
}

TEST_F(PlayerFileTest, ABlockWithoutAnyKeyEndsTheReading) {
  EXPECT_EQ(Read("PLAYER_FILE\n"
                 "PLAYER\nEND_PLAYER\n"
                 "PLAYER\nName:\nBeta\nProgramExe:\nb\nEND_PLAYER\n"),
            "");
}

TEST_F(PlayerFileTest, KeysAreKnownByTheirBeginningInAnyCaseAndOrder) {
  EXPECT_EQ(Read("PLAYER_FILE\nignored\nPLAYERS of old\n"
                 "Directory\nd\nGroups\ng\nPROGRAM\np\nblack\nb\nnothing\nWHITE\nw\n"
                 "Initialisation\ni\nname of it\nAlpha\nEND_PLAYER of it\n"),
            "Player Alpha created.\n");
  EXPECT_EQ(Texts(0).dir, "d");
  EXPECT_EQ(Texts(0).group, "g");
  EXPECT_EQ(Texts(0).program_exe, "p");
  EXPECT_EQ(Texts(0).black_options, "b");
  EXPECT_EQ(Texts(0).white_options, "w");
  EXPECT_EQ(Texts(0).init_string, "i");
}

TEST_F(PlayerFileTest, ARepeatedKeyOverwritesTheValue) {
  Read("PLAYER_FILE\nPLAYER\nName:\nA\nName:\nB\nProgram:\np\nEND_PLAYER\n");
  EXPECT_EQ(Texts(0).name, "B");
}

TEST_F(PlayerFileTest, TrailingWhiteSpaceOfAValueIsCut) {
  Read("PLAYER_FILE\nPLAYER\nName:\n Al pha \t\nProgram:\n p \nGroup:\n   \nEND_PLAYER\n");
  EXPECT_EQ(Texts(0).name, " Al pha");
  EXPECT_EQ(Texts(0).program_exe, " p");
  EXPECT_EQ(Texts(0).group, " ");
}

TEST_F(PlayerFileTest, AKeywordOfTheFormatCanBeAValue) {
  Read("PLAYER_FILE\nPLAYER\nName:\nEND_PLAYER\nProgram:\nPLAYER\nEND_PLAYER\n");
  EXPECT_EQ(Texts(0).name, "END_PLAYER");
  EXPECT_EQ(Texts(0).program_exe, "PLAYER");
}

TEST_F(PlayerFileTest, ThePlayerOfABlockThatTheFileCutsShortIsCreated) {
  EXPECT_EQ(Read("PLAYER_FILE\nPLAYER\nName:\nAlpha\nProgram:\np"), "Player Alpha created.\n");
  EXPECT_EQ(Texts(0).program_exe, "p");
}

TEST_F(PlayerFileTest, AKeyInTheLastLineHasAnEmptyValue) {
  EXPECT_EQ(Read("PLAYER_FILE\nPLAYER\nProgram:\np\nName:"), "Player PlayerName created.\n");
}

TEST_F(PlayerFileTest, PlayersWithoutNameMergeIntoOne) {
  EXPECT_EQ(Read("PLAYER_FILE\nPLAYER\nProgram:\np\nWhite:\nx\nEND_PLAYER\n"
                 "PLAYER\nName:\n\nWhite:\ny\nEND_PLAYER\n"),
            "Player PlayerName created.\n");
  EXPECT_EQ(Texts(0).white_options, "x y");
}

TEST_F(PlayerFileTest, ALineOf255BytesIsSplitAndItsRestIsTheNextLine) {
  const std::string long_name(254, 'n');
  Read("PLAYER_FILE\nPLAYER\nProgram:\np\nName:\n" + long_name + "\nGroup:\ng\nEND_PLAYER\n");
  EXPECT_EQ(Texts(0).name, long_name);
  EXPECT_EQ(Texts(0).group, "g");

  // One byte more: the line feed alone is the next line, which is no key.
  Read("PLAYER_FILE\nPLAYER\nProgram:\np\nName:\n" + long_name + "x\nGroup:\nh\nEND_PLAYER\n");
  EXPECT_EQ(Texts(1).name, long_name + "x");
  EXPECT_EQ(Texts(1).group, "h");
}

TEST_F(PlayerFileTest, TheRestOfAVeryLongLineCanBeAKey) {
  Read("PLAYER_FILE\nPLAYER\nProgram:\np\nName:\n" + std::string(255, 'n') + "group\ng\n");
  EXPECT_EQ(Texts(0).group, "g");
}

TEST_F(PlayerFileTest, ANulByteHidesTheRestOfItsLine) {
  Read(std::string("PLAYER_FILE\nPLAYER\nName:\nAl") + '\0' + "pha\nProgram:\np\n");
  EXPECT_EQ(Texts(0).name, "Al");
}

TEST_F(PlayerFileTest, AFileOfOneThousandByteLinesIsReadToItsEnd) {
  std::string text = "PLAYER_FILE\n";
  for (int i = 0; i < 20; ++i)
    text += std::string(1000, 'x') + "\n";
  EXPECT_EQ(Read(text + "PLAYER\nName:\nA\nProgram:\np\n"), "Player A created.\n");
}

TEST_F(PlayerFileTest, AFileCutAtAnyByteIsReadWithoutTrouble) {
  const std::string whole = kTwoPlayers;
  for (std::size_t size = 12; size <= whole.size(); ++size) {
    PlayerDatabase cut;
    machine.files.Put("cut.txt", whole.substr(0, size));
    EXPECT_TRUE(ReadPlayerFile(machine.files, "cut.txt", "", cut)) << size;
    EXPECT_LE(cut.Players().size(), 2U) << size;
    for (const Player& player : cut.Players())
      EXPECT_NE(player.texts.program_exe, "") << size;
  }
}

TEST_F(PlayerFileTest, AMissingFileIsNamed) {
  EXPECT_FALSE(ReadPlayerFile(machine.files, "c:\\100%s.txt", "", database));
  EXPECT_EQ(machine.TakeOutput(), "Error opening file 'c:\\100%s.txt'\n");
}

TEST_F(PlayerFileTest, WithoutPathTheConfigurationBesideWinboardIsTried) {
  EXPECT_EQ(ReadWithoutPath("c:\\Winboard\\winboard.exe", false),
            "Because no player file was specified, file\n"
            "'c:\\Winboard\\winboard.ini' is tried.\n"
            "Error opening file 'c:\\Winboard\\winboard.ini'\n");
}

TEST_F(PlayerFileTest, TheFileBesideWinboardMayBeAPlayerFile) {
  machine.files.Put("wb\\winboard.ini", kTwoPlayers);
  EXPECT_EQ(ReadWithoutPath("wb\\winboard.exe", true),
            "Because no player file was specified, file\n"
            "'wb\\winboard.ini' is tried.\n"
            "Player Alpha created.\n"
            "Player Beta created.\n");
}

TEST_F(PlayerFileTest, WithoutPathAndWithoutWinboardsDirectoryNothingHappens) {
  machine.files.Put("winboard.ini", kTwoPlayers);
  EXPECT_EQ(ReadWithoutPath("winboard.exe", false), "");
  EXPECT_EQ(ReadWithoutPath("", false), "");
}

TEST_F(PlayerFileTest, AFirstLineInLowerCaseMakesItAWinboardConfiguration) {
  machine.files.Put("players.txt",
                    "player_file\n"
                    "PLAYER\nName:\nBeta\nProgramExe:\nb\nEND_PLAYER\n"
                    "/firstChessProgramNames={\ncrafty /name=\"Crafty\"\n}\n"
                    "/secondChessProgramNames={\n}\n");
  EXPECT_TRUE(ReadPlayerFile(machine.files, "players.txt", "", database));
  EXPECT_EQ(machine.TakeOutput(), "Player Crafty created.\n");
}

TEST_F(PlayerFileTest, AFileThatIsNeitherKindIsAFailure) {
  machine.files.Put("players.txt", "some 100%s\n");
  EXPECT_FALSE(ReadPlayerFile(machine.files, "players.txt", "", database));
  EXPECT_EQ(machine.TakeOutput(), "Can't understand the line 'some 100%s'");
}

TEST_F(PlayerFileTest, ABlockIsReadFromWhereTheReaderStands) {
  const std::string text = "noise\nPLAYER\nName:\nA\nProgram:\np\nEND_PLAYER\nPLAYER\n";
  LineReader lines(text);
  EXPECT_TRUE(ReadPlayerBlock(lines, database));
  EXPECT_EQ(machine.TakeOutput(), "Player A created.\n");
  EXPECT_FALSE(ReadPlayerBlock(lines, database));
}

TEST(PlayerFileLimit, WhatHasNoRoomIsNotReadAndSaidSo) {
  CapturedLog machine;
  machine.files.Put("p.txt",
                    "PLAYER_FILE\nPLAYER\nName:\nA\nProgramExe:\na\nEND_PLAYER\n"
                    "PLAYER\nName:\nB\nProgramExe:\nb\nEND_PLAYER\n");
  machine.files.Put("winboard.ini",
                    "/firstChessProgramNames={a.exe\nb.exe\n}\n"
                    "/secondChessProgramNames={c.exe\n}\n");
  for (const char* file : {"p.txt", "winboard.ini"}) {
    PlayerDatabase players(1);
    EXPECT_TRUE(ReadPlayerFile(machine.files, file, "", players));
    EXPECT_EQ(players.Players().size(), 1U);
    EXPECT_TRUE(machine.TakeOutput().ends_with("There are 1 players, more are not read.\n"))
        << file;
  }
}

}  // namespace
}  // namespace tarvendo
