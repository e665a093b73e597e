#include "tourney/pairing_place.h"

#include <gtest/gtest.h>

#include "tourney/round_robin.h"
#include "tourney/small_tourney.h"

namespace tarvendo {
namespace {

class PlacesOfPairings : public TourneyTest {
 protected:
  /// The place of each game's pairing, in list order.
  std::string Places() {
    std::string text;
    for (const Game& game : tourney.Games())
      text += std::to_string(PairingPlace(tourney, game)) + " ";
    return text;
  }
};

TEST_F(PlacesOfPairings, TheSubRoundsOfAPairingAreOneWhateverTheColours) {
  EnterMany(4);
  tourney.ChangeSettings()->type = kRoundRobin;
  tourney.ChangeSettings()->sub_rounds = 2;
  CreateRRGames(tourney, machine.files);
  EXPECT_EQ(Places(), "0 0 1 1 2 2 3 3 4 4 5 5 ");
}

TEST_F(PlacesOfPairings, TheSameTwoInAnotherRoundAreAnother) {
  EnterMany(2);
  Add(1, 2, 1, 1);
  Add(2, 1, 1, 2);
  Add(1, 2, 2, 1);
  EXPECT_EQ(Places(), "0 0 1 ");
}

TEST_F(PlacesOfPairings, OtherPlayersAreAnotherAlsoWhenOneIsTheSame) {
  EnterMany(4);
  Add(1, 2);
  Add(1, 3);
  Add(3, 2);
  Add(4, 3);
  EXPECT_EQ(Places(), "0 1 2 3 ");
}

TEST_F(PlacesOfPairings, RemovedGamesMoveWhatIsBehindThem) {
  EnterMany(4);
  Add(1, 2, 1, 1);
  Add(2, 1, 1, 2);
  Add(3, 4, 1, 1);
  Add(4, 3, 1, 2);
  tourney.EraseGames({0});
  EXPECT_EQ(Places(), "0 1 1 ");
  tourney.EraseGames({0});
  EXPECT_EQ(Places(), "0 0 ");
}

TEST_F(PlacesOfPairings, AGameThatIsNotInTheListComesBehindAll) {
  EnterMany(2);
  EXPECT_EQ(PairingPlace(tourney, Game()), 0U);
  Add(1, 2);
  EXPECT_EQ(PairingPlace(tourney, Game()), 1U);
}

}  // namespace
}  // namespace tarvendo
