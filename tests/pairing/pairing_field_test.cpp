#include "pairing/pairing_field.h"

#include <gtest/gtest.h>

#include "pairing/hand_made_field.h"
#include "tourney/small_tourney.h"

namespace tarvendo {
namespace {

class PairingFieldTest : public TourneyTest {
 protected:
  bool HaveMet(int number, int other) { return HasMet(MakePairingField(tourney), number, other); }
};

TEST_F(PairingFieldTest, InTheLastRoundNobodyHasAWishForAColour) {
  EnterMany(2);
  for (Player& player : tourney.ChangeParticipants())
    player.colour_state = kMustHaveWhite;
  tourney.ChangeSettings()->rounds = 1;
  EXPECT_EQ(MakePairingField(tourney).Get(1).colour_state, kNoColourWish);
  EXPECT_EQ(tourney.FindParticipant(1)->colour_state, kMustHaveWhite);
  tourney.ChangeSettings()->rounds = 2;
  EXPECT_EQ(MakePairingField(tourney).Get(1).colour_state, kMustHaveWhite);
}

TEST_F(PairingFieldTest, EverybodyHasMetHimself) {
  EnterMany(2);
  EXPECT_TRUE(HaveMet(2, 2));
}

TEST_F(PairingFieldTest, AReadyGameInEitherColourForbidsARematchWhateverItsResult) {
  EnterMany(5);
  AddReady(1, 2, kDraw);
  AddReady(3, 1, kUnknown);
  AddReady(1, 4, kUnfinished);
  AddReady(5, 1, kBothLose);
  for (const int opponent : {2, 3, 4, 5}) {
    EXPECT_TRUE(HaveMet(1, opponent)) << opponent;
    EXPECT_TRUE(HaveMet(opponent, 1)) << opponent;
  }
  EXPECT_FALSE(HaveMet(2, 3));
}

TEST_F(PairingFieldTest, AGameThatIsNotReadyForbidsNoRematch) {
  EnterMany(3);
  Add(1, 2);
  Add(1, 3).status = kSpooled;
  EXPECT_FALSE(HaveMet(1, 2));
  EXPECT_FALSE(HaveMet(1, 3));
}

TEST_F(PairingFieldTest, PlacesThatNoGameHasAreLeftOut) {
  EnterMany(2);
  tourney.Change(*tourney.FindParticipant(1))->games = {-1, 5, 2147483647, -2147483647};
  EXPECT_FALSE(HaveMet(1, 2));
}

}  // namespace
}  // namespace tarvendo
