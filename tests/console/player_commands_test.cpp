#include <gtest/gtest.h>

#include "console/typed_commands.h"

namespace tarvendo {
namespace {

class PlayerCommands : public TypedCommands {
 protected:
  PlayerTexts& Texts(int number) { return players.FindByNumber(number)->texts; }
};

TEST_F(PlayerCommands, APlayerIsChosenByItsNumber) {
  EXPECT_EQ(Type("player"), "You didn't specify a player.\n");
  EXPECT_EQ(Type("player 3"), "Can't find player number 3.\n");
  EXPECT_EQ(Type("player 0"), "Can't find player number 0.\n");
  EXPECT_EQ(Type("player Alpha"), "Can't find player number 0.\n");
}

TEST_F(PlayerCommands, WithoutACommandItsDataIsShown) {
  const std::string text = Type("player 2");
  EXPECT_TRUE(text.starts_with(
      "You didn't specify a command for player, so here's it's data:\nPlayer number 2:\n"
      "    Name         : Beta\n"));
}

TEST_F(PlayerCommands, EveryFieldIsSetToTheRestOfTheLine) {
  EXPECT_EQ(Type("player 1 dir c:\\my engines "), "Player dir set to c:\\my engines.\n");
  EXPECT_EQ(Texts(1).dir, "c:\\my engines");
  EXPECT_EQ(Type("player 1 INIT a  b"), "Player init string set to a  b.\n");
  EXPECT_EQ(Texts(1).init_string, "a  b");
  EXPECT_EQ(Type("player 1 name New One"), "Player name set to New One.\n");
  EXPECT_EQ(Texts(1).name, "New One");
  EXPECT_EQ(Type("player 1 white /w %s"), "Player white options set to /w %s.\n");
  EXPECT_EQ(Texts(1).white_options, "/w %s");
  EXPECT_EQ(Type("player 1 bla /b"), "Player black options set to /b.\n");
  EXPECT_EQ(Texts(1).black_options, "/b");
  EXPECT_EQ(Type("player 1 program x.exe"), "Player program exe set to x.exe.\n");
  EXPECT_EQ(Type("player 1 exe y.exe"), "Player program exe set to y.exe.\n");
  EXPECT_EQ(Texts(1).program_exe, "y.exe");
  EXPECT_EQ(Type("player 1 group a b"), "Player group set to a b.\n");
  EXPECT_EQ(Texts(1).group, "a b");
}

TEST_F(PlayerCommands, MostFieldsMayBeEmptied) {
  Texts(1).dir = Texts(1).init_string = Texts(1).white_options = Texts(1).black_options = "x";
  EXPECT_EQ(Type("player 1 dir"), "Player dir set to ''.\n");
  EXPECT_EQ(Type("player 1 ini"), "Player init string set to ''.\n");
  EXPECT_EQ(Type("player 1 whi"), "Player white options set to ''.\n");
  EXPECT_EQ(Type("player 1 bla"), "Player black options set to ''.\n");
  EXPECT_EQ(Type("player 1 gro"), "Player group cleared.\n");
  EXPECT_EQ(Texts(1).dir + Texts(1).init_string + Texts(1).white_options + Texts(1).black_options +
                Texts(1).group,
            "");
}

TEST_F(PlayerCommands, NameAndProgramMayNotBeEmptied) {
  EXPECT_EQ(Type("player 1 name"), "You must specify a name!\n");
  EXPECT_EQ(Type("player 2 exe"), "You must specify the program exe!\n");
  EXPECT_EQ(Type("player 2 pro"), "You must specify the program exe!\n");
  EXPECT_EQ(Texts(1).name, "Alpha");
  EXPECT_EQ(Texts(2).program_exe, "Beta.exe");
}

TEST_F(PlayerCommands, ANameInUseIsTakenByThePlayerItselfToo) {
  EXPECT_EQ(Type("player 1 name Beta"), "Name Beta already taken.\n");
  EXPECT_EQ(Type("player 1 name Alpha"), "Name Alpha already taken.\n");
  EXPECT_EQ(Type("player 1 name beta"), "Player name set to beta.\n");
}

TEST_F(PlayerCommands, AnUnknownCommandIsNamed) {
  EXPECT_EQ(Type("player 1 foo bar"), "I don't understand the command 'foo'.\n");
  for (const std::string word : {"di", "in", "na", "wh", "bl", "pr", "ex", "gr"})
    EXPECT_EQ(Type("player 1 " + word + " x"), "I don't understand the command '" + word + "'.\n");
}

TEST_F(PlayerCommands, PlayersAreWrittenAndReadAgain) {
  EXPECT_EQ(Type("write /t/players.txt"), "Players written.\n");
  players = PlayerDatabase();
  EXPECT_EQ(Type("read /t/players.txt"),
            "Player Alpha created.\nPlayer Beta created.\nPlayers read.\n");
  EXPECT_EQ(Texts(2).group, "strong weak");
}

TEST_F(PlayerCommands, WritingNeedsAFile) {
  EXPECT_EQ(Type("write"), "I need a file where to write!\n");
  EXPECT_EQ(Type("write /nowhere/players.txt"), "Writing players to file failed!\n");
}

TEST_F(PlayerCommands, ReadingWhatIsNotThereFails) {
  EXPECT_EQ(Type("read /nowhere/players.txt"),
            "Error opening file '/nowhere/players.txt'\nReading players failed!\n");
}

TEST_F(PlayerCommands, AvailableListsAllOrThoseOfANameOrAGroup) {
  EXPECT_EQ(Type("available"),
            " 1. Alpha                 Groups: strong\n 2. Beta                  Groups: strong "
            "weak\n");
  EXPECT_EQ(Type("avail BE"), " 2. Beta                  Groups: strong weak\n");
  EXPECT_EQ(Type("avail -group strong weak"), " 2. Beta                  Groups: strong weak\n");
  EXPECT_EQ(Type("avail -gro strong"), " 1. Alpha                 Groups: strong\n");
  EXPECT_EQ(Type("avail x"), "");
}

TEST_F(PlayerCommands, APlayerIsCreatedFromTheLinesThatFollow) {
  EXPECT_EQ(TypeAll("createp\nGamma  \nc:\\g\nxboard\n/w\n/b\ng.exe\nnew\nget sub\n"),
            "Name:Dir:InitString:WhiteOptions:BlackOptions:ProgramExe:Group:Player Gamma "
            "created.\nSubRounds = 1\n");
  EXPECT_EQ(Texts(3).name, "Gamma");
  EXPECT_EQ(Texts(3).dir, "c:\\g");
  EXPECT_EQ(Texts(3).init_string, "xboard");
  EXPECT_EQ(Texts(3).white_options, "/w");
  EXPECT_EQ(Texts(3).black_options, "/b");
  EXPECT_EQ(Texts(3).program_exe, "g.exe");
  EXPECT_EQ(Texts(3).group, "new");
}

TEST_F(PlayerCommands, ThePromptsAndTheAnswersAreInTheLog) {
  machine.log.AddFile("/home/log");
  TypeAll("createp\nGamma\n\n\n\n\n\n");
  EXPECT_EQ(machine.files.Bytes("/home/log"),
            "createp\nName:Gamma\nDir:\nInitString:\nWhiteOptions:\nBlackOptions:\nProgramExe:\n"
            "You should give the program exe!\n");
}

TEST_F(PlayerCommands, APlayerWithoutANameIsNotCreated) {
  EXPECT_EQ(TypeAll("createp\n\nget sub\n"), "Name:You should give the name!\nSubRounds = 1\n");
}

TEST_F(PlayerCommands, ANameTwiceIsNotCreated) {
  EXPECT_EQ(TypeAll("createp\nBeta\nget sub\n"),
            "Name:A player by name 'Beta' already exists!\nSubRounds = 1\n");
}

TEST_F(PlayerCommands, TheEndOfTheInputIsAnEmptyAnswer) {
  EXPECT_EQ(TypeAll("createp\nGamma\n"),
            "Name:Dir:InitString:WhiteOptions:BlackOptions:ProgramExe:You should give the program "
            "exe!\n");
  EXPECT_EQ(players.Players().size(), 2U);
}

TEST_F(PlayerCommands, APlayerIsDeletedByItsExactName) {
  EXPECT_EQ(Type("deletep Alpha"), "Player 'Alpha' deleted from player list.\n");
  EXPECT_EQ(Texts(1).name, "Beta");
  EXPECT_EQ(Type("delp beta"),
            "Can't find player 'beta'.\nNote that when deleting, player name is case-sensitive.\n");
  EXPECT_EQ(Type("delp 1"),
            "Can't find player '1'.\nNote that when deleting, player name is case-sensitive.\n");
  EXPECT_EQ(Type("delp"), "Deleting player failed!\n");
}

}  // namespace
}  // namespace tarvendo
