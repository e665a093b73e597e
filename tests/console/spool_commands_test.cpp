#include <gtest/gtest.h>

#include "console/typed_commands.h"
#include "console/unknown_word_text.h"

namespace tarvendo {
namespace {

class SpoolCommands : public TypedCommands {
 protected:
  SpoolCommands() { AddGames(4); }
};

TEST_F(SpoolCommands, WithoutAWordTheNextGameIsSpooled) {
  EXPECT_EQ(Type("spool"), "Game 1 spooled.\n");
  EXPECT_EQ(Type("spo"), "Game 2 spooled.\n");
}

TEST_F(SpoolCommands, ANumberIsAGame) {
  EXPECT_EQ(Type("spool 3"), "Game 3 spooled.\n");
  EXPECT_EQ(Type("spool 9"), "");
  EXPECT_EQ(Type("spool 0"), "Game 1 spooled.\n");
}

TEST_F(SpoolCommands, ARoundIsGivenByItsNumber) {
  EXPECT_EQ(Type("spool -ro 2"), "Game 2 spooled.\n");
  EXPECT_EQ(Type("spool -round"), "Game 1 spooled.\n");
  EXPECT_EQ(Type("spool -ro x"), Unknown("x"));
}

TEST_F(SpoolCommands, APlayerIsGivenByNumberOrTheBeginningOfTheName) {
  EXPECT_EQ(Type("spool -pla 2"), "Game 1 spooled.\nGame 2 spooled.\n");
  EXPECT_EQ(Type("spool -player del"), "Game 3 spooled.\nGame 4 spooled.\n");
  EXPECT_EQ(Type("spool -pla del"), "All games of player 4 are already either spooled or ready!\n");
  EXPECT_EQ(Type("spool -pla Nobody"), "Can't find player Nobody.\n");
  EXPECT_EQ(Type("spool -pla 9"), "Player number 9 does not exist in this tourney!\n");
}

TEST_F(SpoolCommands, ThePlayersNameMayHoldBlanks) {
  tourney.ChangeParticipants()[0].texts.name = "Great Alpha";
  tourney.ChangeParticipants()[1].texts.name = "Great Beta";
  EXPECT_EQ(Type("spool -pla great b"), "Game 1 spooled.\nGame 2 spooled.\n");
}

TEST_F(SpoolCommands, AllGamesAreSpooledInTheOrderOfRounds) {
  GameNumber(1).round = 9;
  EXPECT_EQ(Type("spool -all"),
            "Game 2 spooled.\nGame 3 spooled.\nGame 4 spooled.\nGame 1 spooled.\n");
}

TEST_F(SpoolCommands, WhatIsNotUnderstoodSpoolsNothing) {
  EXPECT_EQ(Type("spool foo"), Unknown("foo"));
  EXPECT_EQ(Type("spool -foo"), Unknown("-foo"));
  EXPECT_EQ(Type("spool 1 -foo"), Unknown("-foo"));
  EXPECT_EQ(Type("spool -pla"), Unknown("-pla"));
  EXPECT_EQ(Type("spool -player -all"), Unknown("-player"));
}

TEST_F(SpoolCommands, UnspoolTakesGamesBack) {
  Type("spool 2");
  EXPECT_EQ(Type("unspool"), "Game 2 Beta - Gamma unspooled.\n");
  EXPECT_EQ(GameNumber(2).status, kNothingDone);
}

TEST_F(SpoolCommands, RespoolWritesGamesAgain) {
  Type("spool 2");
  EXPECT_EQ(Type("respool"), "Game 2 spooled.\n");
}

TEST_F(SpoolCommands, ReplaySpoolsGamesWithoutResult) {
  GameNumber(3).status = kReady;
  EXPECT_EQ(Type("replay"), "Game 3 spooled.\n");
}

TEST_F(SpoolCommands, GetAllResultsCollects) {
  Type("spool 2");
  PutPgn(2, "1-0");
  EXPECT_NE(Type("getall").find("Game 2: Beta - Gamma : 1 - 0\n"), std::string::npos);
  EXPECT_EQ(GameNumber(2).status, kReady);
}

}  // namespace
}  // namespace tarvendo
