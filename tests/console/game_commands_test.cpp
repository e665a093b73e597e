#include <gtest/gtest.h>

#include "console/typed_commands.h"
#include "console/unknown_word_text.h"

namespace tarvendo {
namespace {

constexpr const char* kResultChoices =
    "Possible choices:\n1-0     = white win\n1/2-1/2 = draw\n0-1     = black win\n";
constexpr const char* kStatusChoices =
    "Possible choices:\n0 = NOTHING DONE\n1 = SPOOLED\n2 = READY\n";

class GameCommands : public TypedCommands {
 protected:
  GameCommands() { AddGames(4); }

  /// The numbers of the games that are left.
  std::string Left() {
    std::string numbers;
    for (const Game& game : tourney.Games())
      numbers += std::to_string(game.number) + " ";
    return numbers;
  }
};

TEST_F(GameCommands, AGameIsChosenByItsNumber) {
  EXPECT_EQ(Type("game"), "You didn't specify a game.\n");
  EXPECT_EQ(Type("game x"), "Game number expected, 'x' found.\n");
  EXPECT_EQ(Type("game -1"), "Game number expected, '-1' found.\n");
  EXPECT_EQ(Type("game 9"), "Game number 9 does not exist.\n");
  EXPECT_EQ(Type("game 99999999999"), "Game number 2147483647 does not exist.\n");
}

TEST_F(GameCommands, WithoutACommandItsDataIsShown) {
  EXPECT_EQ(Type("game 3"),
            "You didn't specify a command for game, so here's it's data:\nGame number 3:\n"
            "    Round :  3 - 1\n    White :  3 Gamma\n    Black :  4 Delta\n"
            "    Status: NOTHING DONE\n");
}

TEST_F(GameCommands, ResultsAreSetByTheirFirstTwoCharacters) {
  EXPECT_EQ(Type("game 1 res 1-0"), "Result of game 1. Alpha - Beta set 1 - 0.\n");
  EXPECT_EQ(GameNumber(1).result, kWhiteWins);
  EXPECT_EQ(Type("game 1 RESULT 1/2"), "Result of game 1. Alpha - Beta set 1/2 - 1/2.\n");
  EXPECT_EQ(GameNumber(1).result, kDraw);
  EXPECT_EQ(Type("game 1 res 0-"), "Result of game 1. Alpha - Beta set 0 - 1.\n");
  EXPECT_EQ(GameNumber(1).result, kBlackWins);
  EXPECT_EQ(Type("game 1 res UNknown"), "Result of game 1. Alpha - Beta set *.\n");
  EXPECT_EQ(GameNumber(1).result, kUnknown);
  EXPECT_EQ(GameNumber(1).status, kNothingDone) << "the status is another matter";
}

TEST_F(GameCommands, ASetResultIsSeenInTheStandings) {
  Type("game 1 sta 2");
  Type("game 1 res 1-0");
  EXPECT_EQ(tourney.Participants()[0].points, 4);
  EXPECT_EQ(tourney.Participants()[0].rank, 1);
}

TEST_F(GameCommands, AnUnknownResultIsRefusedWithTheChoices) {
  EXPECT_EQ(Type("game 3 res draw"),
            std::string("I don't understand the result 'draw'.\n") + kResultChoices);
  EXPECT_EQ(Type("game 3 res"), std::string("You didn't specify result.\n") + kResultChoices);
  EXPECT_EQ(Type("game 3 res 1"),
            std::string("I don't understand the result '1'.\n") + kResultChoices);
  EXPECT_EQ(GameNumber(3).result, kUnknown);
}

TEST_F(GameCommands, StatusesAreSetByTheirNumbers) {
  const std::string result_too = "You should also set the result.\n";
  EXPECT_EQ(Type("game 1 sta 1"), "Status of game 1. Alpha - Beta set to SPOOLED.\n" + result_too);
  EXPECT_EQ(GameNumber(1).status, kSpooled);
  EXPECT_EQ(Type("game 1 status 2"), "Status of game 1. Alpha - Beta set to READY.\n" + result_too);
  EXPECT_EQ(GameNumber(1).status, kReady);
  EXPECT_EQ(Type("game 1 STA 0"),
            "Status of game 1. Alpha - Beta set to NOTHING DONE.\n" + result_too);
  EXPECT_EQ(GameNumber(1).status, kNothingDone);
}

TEST_F(GameCommands, AnUnknownStatusIsRefusedWithTheChoices) {
  for (const char* word : {"3", "ready", "02", "2x"}) {
    EXPECT_EQ(Type(std::string("game 1 sta ") + word),
              std::string("I don't understand the status '") + word + "'.\n" + kStatusChoices);
  }
  EXPECT_EQ(Type("game 1 sta"), std::string("You didn't specify status.\n") + kStatusChoices);
  EXPECT_EQ(GameNumber(1).status, kNothingDone);
}

TEST_F(GameCommands, AnUnknownCommandIsNamed) {
  for (const std::string word : {"re", "st", "-res"})
    EXPECT_EQ(Type("game 1 " + word + " 1-0"), "I don't understand the command '" + word + "'.\n");
  EXPECT_EQ(Type("game 1 foo"), "I don't understand the command 'foo'.\n");
}

TEST_F(GameCommands, RemovingNeedsASelection) {
  const std::string refusal = "No games removed, because you didn't specify one!\n";
  for (const char* line : {"remg", "remg 0", "remg both", "remg x", "remg -pla", "remg -pla x",
                           "remg -sta what", "remg -all -res x", "remg -ro 1 -whi 0"}) {
    EXPECT_EQ(Type(line), refusal) << line;
  }
  EXPECT_EQ(Left(), "1 2 3 4 ");
}

TEST_F(GameCommands, AnUnknownOptionRemovesNothing) {
  EXPECT_EQ(Type("remg -all -foo"), Unknown("-foo"));
  EXPECT_EQ(Left(), "1 2 3 4 ");
}

TEST_F(GameCommands, AllGamesAreRemoved) {
  EXPECT_EQ(Type("removegames -all"),
            "Removing game 1...removed.\nRemoving game 2...removed.\n"
            "Removing game 3...removed.\nRemoving game 4...removed.\n");
  EXPECT_EQ(Left(), "");
}

TEST_F(GameCommands, SelectedGamesAreRemoved) {
  EXPECT_EQ(Type("remg -pla 2"), "Removing game 1...removed.\nRemoving game 2...removed.\n");
  EXPECT_EQ(Left(), "3 4 ");
}

TEST_F(GameCommands, OptionsNarrowTheSelectionTogether) {
  EXPECT_EQ(Type("remg -pla 2 -ro 2"), "Removing game 2...removed.\n");
  EXPECT_EQ(Left(), "1 3 4 ");
}

TEST_F(GameCommands, ANumberAloneRemovesTheFirstGameOfTheList) {
  EXPECT_EQ(Type("remg 3"), "Removing game 1...removed.\n");
  EXPECT_EQ(Left(), "2 3 4 ");
}

TEST_F(GameCommands, ANumberWithACriterionThatTheEarlierGamesFailRemovesThatGame) {
  EXPECT_EQ(Type("remg 3 -whi 3"), "Removing game 3...removed.\n");
  EXPECT_EQ(Left(), "1 2 4 ");
}

TEST_F(GameCommands, BothWidensASelectionByColour) {
  EXPECT_EQ(Type("remg -whi 2"), "Removing game 2...removed.\n");
  EXPECT_EQ(Type("remg -whi 4 both"), "Removing game 3...removed.\nRemoving game 4...removed.\n");
}

TEST_F(GameCommands, ASwissTourneyMayFallBackToAnEarlierRound) {
  tourney.ChangeSettings()->type = kSwiss;
  tourney.EraseAllGames();
  for (int round = 1; round <= 2; ++round) {
    tourney.AddGame(1, 2, round, 1);
    tourney.AddGame(3, 4, round, 1);
  }
  tourney.ChangeState()->round = 3;
  EXPECT_EQ(Type("remg -ro 2 -pla 3"), "Removing game 8...removed.\nRound set to 2.\n");
  EXPECT_EQ(Type("remg -ro 2"), "Removing game 7...removed.\n");
}

TEST_F(GameCommands, WithAutoSaveTheTourneyIsSavedBeforeAndAfterRemoving) {
  UseAutoSave();
  machine.files.Deny(FileOperation::kOpen, "/t/saved.ini.tarvendo.new");
  machine.files.Deny(FileOperation::kOpen, "/t/saved.ini");
  EXPECT_EQ(Type("remg -ro 1"),
            "Saving tourney failed!\nRemoving game 1...removed.\nSaving tourney failed!\n");
}

TEST_F(GameCommands, ShowGamesListsAllOrASelection) {
  const std::string first = "  1. Round 1-1   1.Alpha -  2.Beta    -NOTHING DONE\n";
  EXPECT_TRUE(Type("showg").starts_with(first));
  EXPECT_EQ(Type("showg -ro 1"), first);
  EXPECT_EQ(Type("showgames 1"), first);
  EXPECT_EQ(Type("showg -sta rea"), "");
  EXPECT_EQ(Type("showg -all"), Type("showg"));
  EXPECT_EQ(Type("showg -sta what"), Type("showg")) << "counts as no option";
  EXPECT_EQ(Type("showg -xyz"), Unknown("-xyz"));
}

}  // namespace
}  // namespace tarvendo
