#include "tourney/colour_state.h"

#include "tourney/small_tourney.h"

namespace tarvendo {
namespace {

class ColourStateTest : public TourneyTest {
 protected:
  ColourStateTest() { Enter({"A", "B", "C"}); }

  /// The wish of participant 1 after games with these colours, such as "WWB".
  int WishAfter(const std::string& colours) {
    for (const char colour : colours)
      colour == 'W' ? Add(1, 2) : Add(2, 1);
    return tourney.FindParticipant(1)->colour_state;
  }
};

TEST_F(ColourStateTest, ANewParticipantHasNoWish) {
  EXPECT_EQ(WishAfter(""), 2);
}

TEST_F(ColourStateTest, OneMoreOfAColourGivesAMediumWishForTheOther) {
  EXPECT_EQ(WishAfter("W"), 8);
  EXPECT_EQ(tourney.FindParticipant(2)->colour_state, 9);
  EXPECT_EQ(tourney.FindParticipant(3)->colour_state, 2);
}

TEST_F(ColourStateTest, AsManyOfBothGiveAWeakWishForTheOtherThanTheLast) {
  EXPECT_EQ(WishAfter("BW"), 4);
  EXPECT_EQ(WishAfter("WB"), 5);
}

TEST_F(ColourStateTest, TwoMoreOfAColourGiveAnAbsoluteWish) {
  EXPECT_EQ(WishAfter("WW"), 16);
  EXPECT_EQ(tourney.FindParticipant(2)->colour_state, 17);
  EXPECT_EQ(WishAfter("W"), 16);
}

TEST_F(ColourStateTest, InTheLastRoundThereIsNoWish) {
  tourney.ChangeSettings()->rounds = 1;
  EXPECT_TRUE(tourney.IsLastSwissRound());
  EXPECT_EQ(WishAfter("WW"), 2);
}

TEST_F(ColourStateTest, ARoundRobinLeavesTheWishAlone) {
  tourney.ChangeSettings()->type = kRoundRobin;
  tourney.ChangeSettings()->rounds = 1;
  EXPECT_FALSE(tourney.IsLastSwissRound());
  EXPECT_EQ(WishAfter("WW"), 2);
  tourney.Change(*tourney.FindParticipant(1))->colour_state = 9;
  EXPECT_EQ(WishAfter("W"), 9);
}

}  // namespace
}  // namespace tarvendo
