#include <gtest/gtest.h>

#include "console/typed_commands.h"
#include "runner/batch_file.h"
#include "runner/spool.h"

namespace tarvendo {
namespace {

class ParticipantCommands : public TypedCommands {
 protected:
  /// An empty tourney in which nobody is in the way.
  void RemoveEverybody() { tourney.ChangeParticipants().clear(); }

  std::string Names() {
    std::string names;
    for (const Player& player : tourney.Participants())
      names += std::to_string(player.number) + player.texts.name + " ";
    return names;
  }
};

TEST_F(ParticipantCommands, APlayerIsAddedByNumberOrByName) {
  RemoveEverybody();
  EXPECT_EQ(Type("addp 2"), "Player Beta added to tourney.\n");
  EXPECT_EQ(Type("add Alpha"), "Player Alpha added to tourney.\n");
  EXPECT_EQ(Names(), "1Beta 2Alpha ");
}

TEST_F(ParticipantCommands, ANameMayHoldBlanks) {
  AddToDatabase("The Great  One", "");
  EXPECT_EQ(Type("addplayer The Great  One  "), "Player The Great  One added to tourney.\n");
}

TEST_F(ParticipantCommands, AnUnknownNumberIsRefused) {
  EXPECT_EQ(Type("addp 3"), "Adding player failed: player no. 3 does not exist.\n");
  EXPECT_EQ(Type("addp 0"), "Adding player failed: player no. 0 does not exist.\n");
}

TEST_F(ParticipantCommands, AnUnknownNameIsRefusedAndNamesAreCaseSensitive) {
  const std::string notice = "Please notice that names are case sensitive.\n";
  EXPECT_EQ(Type("addp alpha"),
            "Adding player failed: player named 'alpha' does not exist.\n" + notice);
  EXPECT_EQ(Type("addp"), "Adding player failed: player named '' does not exist.\n" + notice);
  EXPECT_EQ(Type("addp -1"), "Adding player failed: player named '-1' does not exist.\n" + notice);
}

TEST_F(ParticipantCommands, WhoIsThereAlreadyIsRefused) {
  EXPECT_EQ(Type("addp Alpha"),
            "A player named 'Alpha' already exists in tourney!\nAdding player failed!\n");
}

TEST_F(ParticipantCommands, AllPlayersOfTheDatabaseAreAdded) {
  RemoveEverybody();
  EXPECT_EQ(Type("addall"), "Player Alpha added to tourney.\nPlayer Beta added to tourney.\n");
}

TEST_F(ParticipantCommands, TheGroupIsTheRestOfTheLine) {
  RemoveEverybody();
  EXPECT_EQ(Type("addgroup weak strong"),
            "Player Beta added to tourney.\nPlayer Alpha added to tourney.\n"
            "A player named 'Beta' already exists in tourney!\n");
  EXPECT_EQ(Type("addgroup"), "");
}

TEST_F(ParticipantCommands, AParticipantIsRemovedWithItsGamesAndTheRestIsSpooledAgain) {
  AddGames(4);
  SpoolAll(tourney, machine.files);
  EXPECT_EQ(Type("remp Beta"),
            "Removing game 2...removed.\nRemoving game 1...removed.\n"
            "Game 3 spooled.\nGame 4 spooled.\nPlayer removed succesfully.\n");
  EXPECT_EQ(Names(), "1Alpha 2Gamma 3Delta ");
  EXPECT_EQ(machine.files.Bytes("/t/g3.BAT"), BatchText(tourney, GameNumber(3)));
}

TEST_F(ParticipantCommands, AParticipantIsRemovedByNumberToo) {
  EXPECT_EQ(Type("removeplayer 1"), "Player removed succesfully.\n");
  EXPECT_EQ(Names(), "1Beta 2Gamma 3Delta ");
}

TEST_F(ParticipantCommands, RemovingNobodyIsRefused) {
  EXPECT_EQ(Type("remp"), "Removing player failed, because you didn't specify one!\n");
  EXPECT_EQ(Type("remp 9"), "Remove player failed!\n");
  EXPECT_EQ(Type("remp 0"), "Remove player failed!\n");
  EXPECT_EQ(Type("remp beta"), "Remove player failed!\n") << "the exact name is wanted";
  EXPECT_EQ(Type("remp Bet"), "Remove player failed!\n");
}

TEST_F(ParticipantCommands, AForfeitedPlayerLosesWhatIsLeft) {
  AddGames(2);
  GameNumber(1).status = kReady;
  GameNumber(1).result = kDraw;
  EXPECT_EQ(Type("forf bet"), "All games of player Beta adjudicated as win for the opponent.\n");
  EXPECT_EQ(GameNumber(1).result, kDraw);
  EXPECT_EQ(GameNumber(2).result, kBlackWins);
}

TEST_F(ParticipantCommands, ForfeitingNobodyIsRefused) {
  EXPECT_EQ(Type("forf"), "Forfeiting player failed, because you didn't specify one!\n");
  EXPECT_EQ(Type("forf Nobody"), "Can't find player Nobody.\n");
  EXPECT_EQ(Type("forf 9"), "Can't find a player by number 9!\n");
}

TEST_F(ParticipantCommands, ParticipantsAreShownAllByNumberOrByTheBeginningOfTheName) {
  const std::string all = Type("showp");
  EXPECT_EQ(all.substr(0, 57), "Players currently at tourney 'My Own Winboard Tourney':\nP");
  EXPECT_NE(all.find("Player number 4:\n"), std::string::npos);
  const std::string beta = Type("showp 2");
  EXPECT_EQ(beta.substr(0, 17), "Player number 2:\n");
  EXPECT_EQ(beta.find("Player number 3"), std::string::npos);
  EXPECT_EQ(Type("showplayers BE"), beta);
  EXPECT_EQ(Type("showp 9"), "");
  EXPECT_EQ(Type("showp 0"), "");
  EXPECT_EQ(Type("showp Nobody"), "Player named 'Nobody' not found.\n");
}

}  // namespace
}  // namespace tarvendo
