#include "tourney/participants.h"

#include <algorithm>

#include "players/player_database.h"
#include "tourney/game_list.h"
#include "tourney/small_tourney.h"

namespace tarvendo {
namespace {

Player Named(const std::string& name, const std::string& group = "") {
  Player player;
  player.texts.name = name;
  player.texts.program_exe = "e";
  player.texts.group = group;
  return player;
}

class ParticipantsTest : public TourneyTest {
 protected:
  std::string NumbersAndNames() const {
    std::string text;
    for (const Player& player : tourney.Participants()) {
      text += std::to_string(player.number) + player.texts.name + " ";
    }
    return text;
  }

  /// White and Black of every game.
  std::string Pairs() const {
    std::string text;
    for (const Game& game : tourney.Games()) {
      text += std::to_string(game.white) + "-" + std::to_string(game.black) + " ";
    }
    return text;
  }

  std::string Opponents(int number) {
    const std::string text = ParticipantText(tourney, *tourney.FindParticipant(number));
    return text.substr(text.find("    Opponents"));
  }
};

TEST_F(ParticipantsTest, AnAddedPlayerIsACopyWithANumberOfItsOwn) {
  Player player({"Alpha", "dir", "init", "w", "b", "a.exe", "g"});
  player.number = 17;
  player.points = 5;
  player.rank = 3;
  player.games = {1, 2};
  player.colour_state = 9;
  EXPECT_TRUE(AddPlayerToTourney(tourney, player));
  EXPECT_EQ(Output(), "Player Alpha added to tourney.\n");
  const Player& participant = tourney.Participants().at(0);
  EXPECT_EQ(participant.number, 1);
  EXPECT_EQ(participant.texts.init_string, "init");
  EXPECT_EQ(participant.points + participant.rank, 0);
  EXPECT_EQ(participant.colour_state, 2);
  EXPECT_EQ(participant.tourney_flag, 1);
  EXPECT_TRUE(participant.games.empty());
}

TEST_F(ParticipantsTest, TheSamePlayerTwiceIsRefusedTheSecondTime) {
  EXPECT_TRUE(AddPlayerToTourney(tourney, Named("100%s")));
  Output();
  EXPECT_FALSE(AddPlayerToTourney(tourney, Named("100%s")));
  EXPECT_EQ(Output(), "A player named '100%s' already exists in tourney!\n");
  EXPECT_EQ(tourney.Participants().size(), 1U);
}

TEST_F(ParticipantsTest, NamesThatDifferInCaseAreDifferentParticipants) {
  EXPECT_TRUE(AddPlayerToTourney(tourney, Named("alpha")));
  EXPECT_TRUE(AddPlayerToTourney(tourney, Named("Alpha")));
}

TEST_F(ParticipantsTest, TheTextsOfTheCopyAreTrimmedButNotItsName) {
  const Player player({" A ", "\td ", " i\n", " w", "b ", "a.exe ", " g h "});
  AddPlayerToTourney(tourney, player);
  const PlayerTexts& texts = tourney.Participants().at(0).texts;
  EXPECT_EQ(texts.name, " A ");
  EXPECT_EQ(texts.dir, "d");
  EXPECT_EQ(texts.init_string, "i");
  EXPECT_EQ(texts.white_options, "w");
  EXPECT_EQ(texts.black_options, "b");
  EXPECT_EQ(texts.program_exe, "a.exe");
  EXPECT_EQ(texts.group, "g h");
  EXPECT_EQ(player.texts.program_exe, "a.exe ");
}

TEST_F(ParticipantsTest, TheNameWidthGrowsWithTheLongestName) {
  Enter({"Ab", "Abcdef", "Abc"});
  EXPECT_EQ(tourney.name_width, 6);
}

TEST_F(ParticipantsTest, TheComputedNameWidthIsAtLeastFour) {
  ComputeNameWidth(tourney);
  EXPECT_EQ(tourney.name_width, 4);
  Enter({"Ab", "Abcdef"});
  tourney.name_width = 99;
  ComputeNameWidth(tourney);
  EXPECT_EQ(tourney.name_width, 6);
}

TEST_F(ParticipantsTest, GroupsAreAddedWordByWordInTheOrderAsked) {
  const std::vector<Player> database = {Named("A", "top old"), Named("B", "new"),
                                        Named("C", "top10"), Named("D", "old\ttop")};
  AddGroups(tourney, database, "  new \t top ");
  EXPECT_EQ(NumbersAndNames(), "1B 2A 3D ");
}

TEST_F(ParticipantsTest, GroupWordsAreWholeAndKeepTheirCase) {
  const std::vector<Player> database = {Named("A", "top10"), Named("B", "Top"), Named("C", "")};
  AddGroups(tourney, database, "top");
  AddGroups(tourney, database, "");
  AddGroups(tourney, {}, "top");
  EXPECT_EQ(Output(), "");
}

TEST_F(ParticipantsTest, APlayerOfTwoGroupsIsRefusedTheSecondTime) {
  AddGroups(tourney, {Named("A", "x y x")}, "x y");
  EXPECT_EQ(NumbersAndNames(), "1A ");
  const std::string said = Output();
  EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 3) << "added once, refused twice: " << said;
}

TEST_F(ParticipantsTest, AllPlayersAreAddedInListOrder) {
  AddAllPlayers(tourney, {Named("A"), Named("B"), Named("A")});
  EXPECT_EQ(NumbersAndNames(), "1A 2B ");
}

TEST_F(ParticipantsTest, AParticipantWithoutGamesHasAnEmptyListOfOpponents) {
  Enter({"A"});
  const Player& player = tourney.Participants()[0];
  EXPECT_EQ(ParticipantText(tourney, player), PlayerData(player) + "\n    Opponents    : \n");
}

TEST_F(ParticipantsTest, EveryGameShowsResultColourOpponentAndPlace) {
  Enter({"A", "B", "C"});
  AddReady(1, 2, kWhiteWins);
  AddReady(1, 3, kBlackWins);
  AddReady(2, 1, kWhiteWins);
  AddReady(3, 1, kBlackWins);
  AddReady(1, 2, kDraw);
  AddReady(1, 2, kUnknown);
  Add(3, 1);
  EXPECT_EQ(Opponents(1),
            "    Opponents    : +W02(0) -W03(1) -B02(2) +B03(3) =W02(4) *W02(5)  B03(6) \n");
}

TEST_F(ParticipantsTest, GamesWithOtherResultsShowWhetherTheyAreReady) {
  Enter({"A", "B"});
  AddReady(1, 2, kBothLose);
  AddReady(2, 1, kUnfinished);
  Add(1, 2).status = kSpooled;
  EXPECT_EQ(Opponents(1), "    Opponents    : *W02(0) *B02(1)  W02(2) \n");
}

TEST_F(ParticipantsTest, AfterTheEighthGameAndOnlyThenTheLineBreaks) {
  Enter({"A", "B"});
  for (int i = 0; i < 18; ++i)
    AddReady(1, 2, kDraw);
  const std::string text = Opponents(1);
  const std::string begin =
      "    Opponents    : =W02(0) =W02(1) =W02(2) =W02(3) =W02(4) =W02(5) =W02(6) =W02(7) \n" +
      std::string(19, ' ') + "=W02(8) =W02(9) =W02(10) ";
  EXPECT_EQ(text.substr(0, begin.size()), begin);
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 2);
}

TEST_F(ParticipantsTest, EightGamesBreakTheLineToo) {
  Enter({"A", "B"});
  for (int i = 0; i < 8; ++i)
    AddReady(1, 2, kDraw);
  const std::string text = Opponents(1);
  EXPECT_EQ(text.substr(text.size() - 21), "\n" + std::string(19, ' ') + "\n");
}

TEST_F(ParticipantsTest, AllParticipantsAreShownUnderAHeadline) {
  Enter({"A", "B"});
  tourney.ChangeSettings()->name = "Cup 100%s";
  ShowParticipants(tourney, 0);
  EXPECT_EQ(Output(), "Players currently at tourney 'Cup 100%s':\n" +
                          ParticipantText(tourney, tourney.Participants()[0]) +
                          ParticipantText(tourney, tourney.Participants()[1]));
  ShowParticipants(tourney, 2);
  EXPECT_EQ(Output(), ParticipantText(tourney, tourney.Participants()[1]));
  ShowParticipants(tourney, 3);
  EXPECT_EQ(Output(), "");
}

TEST_F(ParticipantsTest, ParticipantsAreShownByTheBeginningOfTheirNames) {
  Enter({"Crab", "CRest", "Acr", "cr"});
  ShowParticipantByName(tourney, "cr");
  std::string expected;
  for (const std::size_t place : {0U, 1U, 3U}) {
    expected += ParticipantText(tourney, tourney.Participants()[place]);
  }
  EXPECT_EQ(Output(), expected);
  ShowParticipantByName(tourney, "x%s");
  EXPECT_EQ(Output(), "Player named 'x%s' not found.\n");
}

TEST_F(ParticipantsTest, ANumberIsFoundWhetherOrNotSomebodyHasIt) {
  Enter({"Alpha"});
  EXPECT_EQ(FindPlayer(tourney, "3"), 3);
  EXPECT_EQ(FindPlayer(tourney, " 007 x"), 7);
  EXPECT_EQ(FindPlayer(tourney, "99999999999"), 2147483647);
  EXPECT_EQ(Output(), "");
}

TEST_F(ParticipantsTest, ANameIsFoundByItsBeginningInAnyCase) {
  Enter({"Acr", "Crab", "cRest"});
  for (const char* text : {"cr", "CR", "Cr", "cR", "crab"}) {
    EXPECT_EQ(FindPlayer(tourney, text), 2) << text;
  }
  EXPECT_EQ(FindPlayer(tourney, "cre"), 3);
  EXPECT_EQ(Output(), "");
}

TEST_F(ParticipantsTest, NamesThatLookLikeNumbersAreNames) {
  Enter({"0", "-3", "4x"});
  EXPECT_EQ(FindPlayer(tourney, "0"), 1);
  EXPECT_EQ(FindPlayer(tourney, "-3"), 2);
  EXPECT_EQ(FindPlayer(tourney, "4x"), 3);
}

TEST_F(ParticipantsTest, NobodyFoundIsSaid) {
  EXPECT_EQ(FindPlayer(tourney, "100%s"), 0);
  EXPECT_EQ(Output(), "Can't find player 100%s.\n");
  EXPECT_EQ(FindPlayer(tourney, ""), 0);
  EXPECT_EQ(Output(), "Can't find player .\n");
}

TEST_F(ParticipantsTest, RemovingAParticipantRemovesHisGamesAndClosesTheGap) {
  Enter({"A", "Longest", "C", "D"});
  Add(1, 2);
  Add(3, 4);
  Add(4, 2);
  Add(4, 1);
  EXPECT_TRUE(RemoveParticipant(tourney, machine.files, 2));
  EXPECT_EQ(Output(), "Removing game 3...removed.\nRemoving game 1...removed.\n");
  EXPECT_EQ(NumbersAndNames(), "1A 2C 3D ");
  EXPECT_EQ(Pairs(), "2-3 3-1 ");
  EXPECT_EQ(GameNumbers(), " 2 4");
  EXPECT_EQ(History(1), std::vector<int>{1});
  EXPECT_EQ(History(2), std::vector<int>{0});
  EXPECT_EQ(History(3), (std::vector<int>{0, 1}));
  EXPECT_EQ(tourney.name_width, 4);
}

TEST_F(ParticipantsTest, RemovingAParticipantDeletesTheFilesOfHisGames) {
  Enter({"A", "B"});
  Add(1, 2).pgn_file = "g1.PGN";
  machine.files.Put("g1.PGN", "");
  EXPECT_TRUE(RemoveParticipant(tourney, machine.files, 1));
  EXPECT_TRUE(machine.files.FileNames().empty());
}

TEST_F(ParticipantsTest, RemovingNobodyChangesNothing) {
  Enter({"A", "B"});
  Add(1, 2);
  tourney.name_width = 9;
  for (const int number : {0, 3, -1})
    EXPECT_FALSE(RemoveParticipant(tourney, machine.files, number));
  EXPECT_EQ(Output(), "");
  EXPECT_EQ(tourney.name_width, 9);
  EXPECT_EQ(Pairs(), "1-2 ");
}

}  // namespace
}  // namespace tarvendo
