#include "players/player_database.h"

#include <gtest/gtest.h>

#include "fakes/captured_log.h"

namespace tarvendo {
namespace {

PlayerTexts Engine(const std::string& name, const std::string& white = "",
                   const std::string& black = "") {
  PlayerTexts texts;
  texts.name = name;
  texts.program_exe = "engine.exe";
  texts.white_options = white;
  texts.black_options = black;
  return texts;
}

class PlayerDatabaseTest : public testing::Test {
 protected:
  void Create(std::initializer_list<const char*> names) {
    for (const char* name : names)
      EXPECT_TRUE(database.CreatePlayer(Engine(name)));
    machine.TakeOutput();
  }

  std::string NumbersAndNames() const {
    std::string text;
    for (const Player& player : database.Players()) {
      text += std::to_string(player.number) + " " + player.texts.name + "\n";
    }
    return text;
  }

  CapturedLog machine;
  PlayerDatabase database;
};

TEST_F(PlayerDatabaseTest, PlayersAreNumberedInTheOrderOfTheirCreation) {
  EXPECT_TRUE(database.CreatePlayer(Engine("Alpha")));
  EXPECT_TRUE(database.CreatePlayer(Engine("100%s")));
  EXPECT_EQ(machine.TakeOutput(), "Player Alpha created.\nPlayer 100%s created.\n");
  EXPECT_EQ(NumbersAndNames(), "1 Alpha\n2 100%s\n");
  EXPECT_EQ(database.Players()[0].tourney_flag, 0);
}

TEST_F(PlayerDatabaseTest, APlayerWithoutProgramIsRefusedSilently) {
  PlayerTexts texts = Engine("Alpha");
  texts.program_exe.clear();
  EXPECT_FALSE(database.CreatePlayer(texts));
  EXPECT_EQ(machine.TakeOutput(), "");
  EXPECT_TRUE(database.Players().empty());
}

TEST_F(PlayerDatabaseTest, TheSameNameAgainMergesTheOptions) {
  EXPECT_TRUE(database.CreatePlayer(Engine("Alpha", "x", "")));
  EXPECT_TRUE(database.CreatePlayer(Engine("Alpha", "y", "z")));
  ASSERT_EQ(database.Players().size(), 1U);
  EXPECT_EQ(database.Players()[0].texts.white_options, "x y");
  EXPECT_EQ(database.Players()[0].texts.black_options, "z");
  EXPECT_EQ(machine.TakeOutput(), "Player Alpha created.\n");
}

TEST_F(PlayerDatabaseTest, TheSameOptionsAgainChangeNothing) {
  EXPECT_TRUE(database.CreatePlayer(Engine("Alpha", "x", "y")));
  EXPECT_TRUE(database.CreatePlayer(Engine("Alpha", "x", "y")));
  EXPECT_EQ(database.Players()[0].texts.white_options, "x");
  EXPECT_EQ(database.Players()[0].texts.black_options, "y");
}

TEST_F(PlayerDatabaseTest, EmptyOptionsDifferFromStoredOnesAndAddABlank) {
  EXPECT_TRUE(database.CreatePlayer(Engine("Alpha", "x", "")));
  EXPECT_TRUE(database.CreatePlayer(Engine("Alpha", "", "")));
  EXPECT_EQ(database.Players()[0].texts.white_options, "x ");
  EXPECT_EQ(database.Players()[0].texts.black_options, "");
}

TEST_F(PlayerDatabaseTest, AMergeNeedsNoProgramAndKeepsTheOtherTexts) {
  PlayerTexts first{"Alpha", "dir", "init", "w", "b", "a.exe", "group"};
  PlayerTexts second{"Alpha", "other", "other", "w2", "b2", "", "other"};
  EXPECT_TRUE(database.CreatePlayer(first));
  EXPECT_TRUE(database.CreatePlayer(second));
  const PlayerTexts& texts = database.Players()[0].texts;
  EXPECT_EQ(texts.dir, "dir");
  EXPECT_EQ(texts.init_string, "init");
  EXPECT_EQ(texts.program_exe, "a.exe");
  EXPECT_EQ(texts.group, "group");
  EXPECT_EQ(texts.white_options, "w w2");
}

TEST_F(PlayerDatabaseTest, MergedOptionsThatDoNotFitAreCutAndNamed) {
  EXPECT_TRUE(database.CreatePlayer(Engine("100%s", std::string(200, 'w'), std::string(200, 'b'))));
  machine.TakeOutput();
  EXPECT_TRUE(database.CreatePlayer(Engine("100%s", std::string(54, 'x'), std::string(53, 'y'))));
  EXPECT_EQ(machine.TakeOutput(), "WhiteOptions of player '100%s' cut to 254 characters.\n");
  const PlayerTexts& texts = database.Players()[0].texts;
  EXPECT_EQ(texts.white_options, std::string(200, 'w') + " " + std::string(53, 'x'));
  EXPECT_EQ(texts.black_options, std::string(200, 'b') + " " + std::string(53, 'y'));
}

TEST_F(PlayerDatabaseTest, NamesThatDifferInCaseAreDifferentPlayers) {
  Create({"Alpha", "ALPHA"});
  EXPECT_EQ(NumbersAndNames(), "1 Alpha\n2 ALPHA\n");
}

TEST_F(PlayerDatabaseTest, PlayersWithoutNameAreOneAndTheSame) {
  EXPECT_TRUE(database.CreatePlayer(Engine("", "x")));
  EXPECT_TRUE(database.CreatePlayer(Engine("", "y")));
  EXPECT_EQ(machine.TakeOutput(), "Player PlayerName created.\n");
  ASSERT_EQ(database.Players().size(), 1U);
  EXPECT_EQ(database.Players()[0].texts.white_options, "x y");
}

TEST_F(PlayerDatabaseTest, DeletingClosesTheGapInTheNumbers) {
  Create({"A", "B", "C", "D"});
  database.DeletePlayer(2);
  EXPECT_EQ(machine.TakeOutput(), "Player 'B' deleted from player list.\n");
  EXPECT_EQ(NumbersAndNames(), "1 A\n2 C\n3 D\n");
}

TEST_F(PlayerDatabaseTest, DeletingAnUnknownNumberDoesNothing) {
  Create({"A", "B"});
  for (const int number : {0, 3, -1})
    database.DeletePlayer(number);
  EXPECT_EQ(machine.TakeOutput(), "");
  EXPECT_EQ(NumbersAndNames(), "1 A\n2 B\n");
}

TEST_F(PlayerDatabaseTest, AListByNameShowsTheNamesThatBeginWithTheText) {
  Create({"Crest", "cRab", "Acr"});
  database.ListPlayers("cr", false);
  EXPECT_EQ(machine.TakeOutput(), " 1. Crest               \n 2. cRab                \n");
}

TEST_F(PlayerDatabaseTest, AnEmptyTextListsEverybody) {
  Create({"A", "B"});
  database.ListPlayers("", false);
  EXPECT_EQ(machine.TakeOutput(), " 1. A                   \n 2. B                   \n");
}

TEST_F(PlayerDatabaseTest, AListByGroupNeedsTheWholeGroup) {
  for (const auto& [name, group] : {std::pair("P", "A"), {"Q", "A B"}, {"R", "a"}}) {
    PlayerTexts texts = Engine(name);
    texts.group = group;
    database.CreatePlayer(texts);
  }
  machine.TakeOutput();
  database.ListPlayers("A", true);
  EXPECT_EQ(machine.TakeOutput(), " 1. P                     Groups: A\n");
  database.ListPlayers("A B", true);
  EXPECT_EQ(machine.TakeOutput(), " 2. Q                     Groups: A B\n");
}

TEST_F(PlayerDatabaseTest, PlayersAreFoundByNumberAndByExactName) {
  Create({"A", "B"});
  ASSERT_NE(database.FindByNumber(2), nullptr);
  EXPECT_EQ(database.FindByNumber(2)->texts.name, "B");
  EXPECT_EQ(database.FindByNumber(0), nullptr);
  EXPECT_EQ(database.FindByNumber(3), nullptr);
  EXPECT_EQ(database.FindByNumber(-1), nullptr);
  ASSERT_NE(database.FindByName("A"), nullptr);
  EXPECT_EQ(database.FindByName("A")->number, 1);
  EXPECT_EQ(database.FindByName("a"), nullptr);
}

TEST(PlayerDatabaseLimit, AListThatIsFullTakesNobodyMoreButMergesWhoIsThere) {
  const CapturedLog machine;
  PlayerDatabase players(2);
  for (const char* name : {"A", "B", "C"}) {
    PlayerTexts texts;
    texts.name = name;
    texts.program_exe = "e.exe";
    EXPECT_EQ(players.CreatePlayer(texts), *name != 'C');
  }
  EXPECT_TRUE(players.IsFull());
  PlayerTexts merged;
  merged.name = "A";
  merged.white_options = "/fUCI";
  EXPECT_TRUE(players.CreatePlayer(merged));
  EXPECT_EQ(players.Players().front().texts.white_options, "/fUCI");
}

}  // namespace
}  // namespace tarvendo
