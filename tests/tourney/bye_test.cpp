#include "tourney/bye.h"

#include <gtest/gtest.h>

#include "tourney/small_tourney.h"
#include "tourney/standings.h"

namespace tarvendo {
namespace {

class Byes : public TourneyTest {
 protected:
  /// Alpha, Beta, and two empty places.
  Byes() {
    Enter({"Alpha", "Beta", "Nobody", "No One"});
    for (const std::size_t place : {2U, 3U})
      tourney.ChangeParticipants()[place].texts.program_exe = "bye";
  }
};

TEST_F(Byes, TheOtherPlayerWinsWhateverItsColour) {
  EXPECT_EQ(ResultByBye(tourney, Add(1, 3)), kWhiteWins);
  EXPECT_EQ(ResultByBye(tourney, Add(3, 1)), kBlackWins);
}

TEST_F(Byes, NobodyWinsBetweenTwoOfThem) {
  EXPECT_EQ(ResultByBye(tourney, Add(3, 4)), kBothLose);
}

TEST_F(Byes, TwoPlayersHaveToPlay) {
  EXPECT_EQ(ResultByBye(tourney, Add(1, 2)), std::nullopt);
}

TEST_F(Byes, AGameThatHasLostAPlayerIsNone) {
  Game& game = Add(1, 3);
  game.white = 0;
  EXPECT_EQ(ResultByBye(tourney, game), std::nullopt);
  game.white = 9;
  EXPECT_EQ(ResultByBye(tourney, game), std::nullopt);
}

TEST_F(Byes, OnlyTheExactWordMakesABye) {
  Player player;
  for (const char* program : {"Bye", "bye.exe", "./bye", "bye ", "byebye", "BYE", ""}) {
    player.texts.program_exe = program;
    EXPECT_FALSE(IsBye(player)) << program;
  }
  player.texts.program_exe = "bye";
  EXPECT_TRUE(IsBye(player));
}

TEST_F(Byes, TheStandingsTreatItAsAnyParticipant) {
  AddReady(1, 3, kWhiteWins);
  AddReady(2, 4, kWhiteWins);
  UpdateStandingsAndRound(tourney);
  EXPECT_EQ(tourney.FindParticipant(1)->points, 4);
  EXPECT_EQ(tourney.FindParticipant(3)->points, 0);
  EXPECT_EQ(tourney.FindParticipant(3)->games_played, 1);
  EXPECT_EQ(tourney.FindParticipant(3)->rank, 3);
}

}  // namespace
}  // namespace tarvendo
