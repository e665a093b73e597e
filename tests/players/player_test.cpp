#include "players/player.h"

#include <gtest/gtest.h>

#include "base/record_file.h"

namespace tarvendo {
namespace {

Player SamplePlayer() {
  Player player({"Alpha 100%", "c:\\alpha", "init", "/w", "/b", "alpha.exe", "top old"});
  player.number = 7;
  player.tourney_flag = 1;
  player.colour_state = kMustHaveWhite;
  player.games_played = 5;
  player.sonneborn_berger = 43;
  player.buchholz = 30;
  player.points = 14;
  player.rank = 2;
  player.games = {0, 3, 12};
  return player;
}

constexpr const char* kSampleBlock =
    "1\n30\n17\n5\n7\n14\n2\n43\n"
    "/b\nc:\\alpha\ntop old\ninit\nAlpha 100%\nalpha.exe\n/w\n"
    "3\n0\n3\n12\n";

std::string Written(const Player& player) {
  RecordWriter writer;
  player.WriteRecord(writer);
  return writer.Text();
}

Player Read(const std::string& bytes, Player into = Player()) {
  RecordReader reader(bytes);
  into.ReadRecord(reader);
  return into;
}

TEST(PlayerTest, ANewRecordIsEmpty) {
  const Player player;
  EXPECT_EQ(player.texts.name, "");
  EXPECT_EQ(player.number, 0);
  EXPECT_EQ(player.colour_state, 2);
  EXPECT_EQ(player.tourney_flag, 0);
  EXPECT_EQ(player.games_played + player.sonneborn_berger + player.buchholz + player.points, 0);
  EXPECT_EQ(player.rank, 0);
  EXPECT_TRUE(player.games.empty());
}

TEST(PlayerTest, AnEmptyNameBecomesPlayerName) {
  EXPECT_EQ(Player(PlayerTexts{}).texts.name, "PlayerName");
  EXPECT_EQ(Player({"Alpha", "", "", "", "", "", ""}).texts.name, "Alpha");
}

TEST(PlayerTest, TheRecordHasEightNumbersSevenTextsAndTheGames) {
  EXPECT_EQ(Written(SamplePlayer()), kSampleBlock);
}

TEST(PlayerTest, ARecordReadBackWritesTheSameBytes) {
  EXPECT_EQ(Written(Read(kSampleBlock)), kSampleBlock);
}

TEST(PlayerTest, TheTourneyFlagIsReadAsZeroOrOne) {
  EXPECT_EQ(Read("5\n").tourney_flag, 1);
  EXPECT_EQ(Read("-1\n").tourney_flag, 1);
  EXPECT_EQ(Read("0\n").tourney_flag, 0);
}

TEST(PlayerTest, FieldsBehindTheEndStayAsTheyWere) {
  Player before;
  before.texts.name = "Kept";
  before.points = 9;
  const Player player = Read("1\n30\n17\n", before);
  EXPECT_EQ(player.buchholz, 30);
  EXPECT_EQ(player.colour_state, 17);
  EXPECT_EQ(player.points, 9);
  EXPECT_EQ(player.texts.name, "Kept");
}

TEST(PlayerTest, ANegativeCountOfGamesGivesNone) {
  EXPECT_TRUE(Read("1\n0\n2\n0\n1\n0\n0\n0\n\n\n\n\nA\na\n\n-3\n5\n").games.empty());
}

TEST(PlayerTest, ACountLargerThanTheFileGivesTheGamesThatAreThere) {
  const std::string front = "1\n0\n2\n0\n1\n0\n0\n0\n\n\n\n\nA\na\n\n";
  EXPECT_EQ(Read(front + "2000000000\n5\n6\n").games, (std::vector<int>{5, 6}));
}

TEST(PlayerTest, TheGroupLineShowsTheGroupWhenThereIsOne) {
  Player player = SamplePlayer();
  EXPECT_EQ(PlayerGroupLine(player), " 7. Alpha 100%            Groups: top old\n");
  player.texts.group.clear();
  player.number = 123;
  EXPECT_EQ(PlayerGroupLine(player), "123. Alpha 100%          \n");
}

TEST(PlayerTest, ALongNamePushesTheLineAside) {
  const Player player({std::string(30, 'n'), "", "", "", "", "x", "g"});
  EXPECT_EQ(PlayerGroupLine(player), " 0. " + std::string(30, 'n') + "  Groups: g\n");
}

TEST(PlayerTest, TheFullDisplayDividesThePointsByFour) {
  EXPECT_EQ(PlayerData(SamplePlayer()),
            "Player number 7:\n"
            "    Name         : Alpha 100%\n"
            "    ProgramExe   : alpha.exe\n"
            "    Group        : top old\n"
            "    WhiteOptions : /w\n"
            "    BlackOptions : /b\n"
            "    Dir          : c:\\alpha\n"
            "    InitString   : init\n"
            "\n"
            "    Rank         : 2.\n"
            "    Points       : 3.5 / 5.0\n"
            "    Buchholz     : 7.5\n"
            "    Sonneborn-B  : 10.75\n");
}

TEST(PlayerTest, AnEmptyPlayerIsDisplayedWithZeros) {
  EXPECT_EQ(PlayerData(Player()),
            "Player number 0:\n"
            "    Name         : \n"
            "    ProgramExe   : \n"
            "    Group        : \n"
            "    WhiteOptions : \n"
            "    BlackOptions : \n"
            "    Dir          : \n"
            "    InitString   : \n"
            "\n"
            "    Rank         : 0.\n"
            "    Points       : 0.0 / 0.0\n"
            "    Buchholz     : 0.0\n"
            "    Sonneborn-B  : 0.00\n");
}

}  // namespace
}  // namespace tarvendo
