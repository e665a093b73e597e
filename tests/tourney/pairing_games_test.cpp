#include "tourney/pairing_games.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "tourney/round_robin.h"
#include "tourney/small_tourney.h"

namespace tarvendo {
namespace {

class GamesOfPairings : public TourneyTest {
 protected:
  /// The index of each game's pairing, in list order.
  std::string Indices() {
    std::string text;
    for (const Game& game : tourney.Games())
      text += std::to_string(PairingIndex(tourney, game)) + " ";
    return text;
  }
};

TEST_F(GamesOfPairings, ChangeColoursFromGameToGame) {
  EnterMany(3);
  AddGamesOfPairing(tourney, 3, 1, 2, 3);
  std::string games;
  for (const Game& game : tourney.Games())
    games += Format("%d-%d in %d.%d ", game.white, game.black, game.round, game.sub_round);
  EXPECT_EQ(games, "3-1 in 2.1 1-3 in 2.2 3-1 in 2.3 ");
}

TEST_F(GamesOfPairings, TheSubRoundsOfAPairingAreOneWhateverTheColours) {
  EnterMany(4);
  tourney.ChangeSettings()->type = kRoundRobin;
  tourney.ChangeSettings()->sub_rounds = 2;
  CreateRRGames(tourney, machine.files);
  EXPECT_EQ(Indices(), "0 0 1 1 2 2 3 3 4 4 5 5 ");
}

TEST_F(GamesOfPairings, TheSameTwoInAnotherRoundAreAnother) {
  EnterMany(2);
  Add(1, 2, 1, 1);
  Add(2, 1, 1, 2);
  Add(1, 2, 2, 1);
  EXPECT_EQ(Indices(), "0 0 1 ");
}

TEST_F(GamesOfPairings, OtherPlayersAreAnotherAlsoWhenOneIsTheSame) {
  EnterMany(4);
  Add(1, 2);
  Add(1, 3);
  Add(3, 2);
  Add(4, 3);
  EXPECT_EQ(Indices(), "0 1 2 3 ");
}

TEST_F(GamesOfPairings, RemovedGamesMoveWhatIsBehindThem) {
  EnterMany(4);
  Add(1, 2, 1, 1);
  Add(2, 1, 1, 2);
  Add(3, 4, 1, 1);
  Add(4, 3, 1, 2);
  tourney.EraseGames({0});
  EXPECT_EQ(Indices(), "0 1 1 ");
  tourney.EraseGames({0});
  EXPECT_EQ(Indices(), "0 0 ");
}

TEST_F(GamesOfPairings, AGameThatIsNotInTheListComesBehindAll) {
  EnterMany(2);
  EXPECT_EQ(PairingIndex(tourney, Game()), 0U);
  Add(1, 2);
  EXPECT_EQ(PairingIndex(tourney, Game()), 1U);
}

}  // namespace
}  // namespace tarvendo
