#pragma once

#include <gtest/gtest.h>

#include <string>

#include "fakes/captured_log.h"
#include "tourney/tourney.h"

namespace tarvendo {

/// A tourney for the tests of the reports, on a made-up machine.
class TableTourney : public ::testing::Test {
 protected:
  /// Adds participants called P1, P2, ... up to that number of them.
  void AddPlayers(int count) {
    while (static_cast<int>(tourney.Participants().size()) < count) {
      AddPlayer("P" + std::to_string(tourney.Participants().size() + 1));
    }
  }

  void AddPlayer(const std::string& name) {
    Player player;
    player.texts.name = name;
    player.number = static_cast<int>(tourney.Participants().size()) + 1;
    tourney.ChangeParticipants().push_back(player);
  }

  /// Adds a game that has been played. Whoever of the two is a participant gets it into its
  /// history.
  Game& Play(int white, int black, int result, int round = 1, int sub_round = 1) {
    Game& game = Schedule(white, black, round, sub_round);
    game.status = kReady;
    game.result = result;
    return game;
  }

  /// Adds a game that is still to be played.
  Game& Schedule(int white, int black, int round = 1, int sub_round = 1) {
    Game game;
    game.white = white;
    game.black = black;
    game.round = round;
    game.sub_round = sub_round;
    const int index = static_cast<int>(tourney.Games().size());
    game.number = index + 1;
    tourney.ChangeGames().push_back(game);
    for (const int number : {white, black}) {
      const Player* player = tourney.FindParticipant(number);
      if (player != nullptr) tourney.Change(*player)->games.push_back(index);
    }
    return tourney.ChangeGames().back();
  }

  /// The participant with that number, which must be there.
  Player& P(int number) {
    const std::ptrdiff_t place = tourney.FindParticipant(number) - tourney.Participants().data();
    return tourney.ChangeParticipants()[static_cast<std::size_t>(place)];
  }

  void MakeRoundRobin() { tourney.ChangeSettings()->type = kRoundRobin; }

  CapturedLog machine;
  Tourney tourney;
};

}  // namespace tarvendo
