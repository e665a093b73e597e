#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "fakes/captured_log.h"
#include "tourney/participants.h"
#include "tourney/tourney.h"
#include "tourney/tourney_file.h"

namespace tarvendo {

/// A tourney and its file on a made-up machine. The current directory is "/home".
class TourneyTest : public testing::Test {
 protected:
  /// Participants with these names, numbered from 1; says nothing.
  void Enter(std::initializer_list<const char*> names) {
    for (const char* name : names) {
      Player player;
      player.texts.name = name;
      player.texts.program_exe = std::string(name) + ".exe";
      AddPlayerToTourney(tourney, player);
    }
    machine.TakeOutput();
  }

  /// `count` participants named P1, P2 and so on.
  void EnterMany(int count) {
    for (int i = 1; i <= count; ++i)
      Enter({("P" + std::to_string(i)).c_str()});
  }

  /// A new game; says nothing.
  Game& Add(int white, int black, int round = 1, int sub_round = 1) {
    tourney.AddGame(white, black, round, sub_round);
    machine.TakeOutput();
    return tourney.ChangeGames().back();
  }

  Game& AddReady(int white, int black, int result, int round = 1) {
    Game& game = Add(white, black, round);
    game.status = kReady;
    game.result = result;
    return game;
  }

  std::string Output() { return machine.TakeOutput(); }

  /// The numbers of the games, in list order, each behind a blank.
  std::string GameNumbers() {
    std::string text;
    for (const Game& game : tourney.Games())
      text += " " + std::to_string(game.number);
    return text;
  }

  const std::vector<int>& History(int number) { return tourney.FindParticipant(number)->games; }

  CapturedLog machine;
  Tourney tourney;
  TourneyFile file{machine.files};
};

}  // namespace tarvendo
