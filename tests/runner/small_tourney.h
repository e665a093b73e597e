#pragma once

#include <string>

#include "fakes/captured_log.h"
#include "pairing/bracket_list.h"
#include "tourney/tourney.h"

namespace tarvendo {

/// A round robin on a machine made of memory whose games lie in "/t": Alpha against Beta, Beta
/// against Gamma and so on, one game a round.
struct SmallTourney {
  SmallTourney() {
    machine.files.MakeDirectory("/t");
    tourney.settings.files_path = "/t\\";
    tourney.settings.pgn_file = "/t\\all.pgn";
    tourney.settings.type = kRoundRobin;
    for (const char* name : {"Alpha", "Beta", "Gamma", "Delta"})
      AddParticipant(name);
  }

  void AddParticipant(const std::string& name) {
    Player player;
    player.texts.name = name;
    player.texts.program_exe = name + ".exe";
    player.number = static_cast<int>(tourney.Participants().size()) + 1;
    tourney.Participants().push_back(player);
  }

  /// Adds `count` games, each in a round of its own, and forgets what that printed.
  void AddGames(int count) {
    for (int i = 0; i < count; ++i) {
      const int white = i % 4 + 1;
      tourney.AddGame(white, white % 4 + 1, i + 1, 1);
    }
    machine.TakeOutput();
  }

  Game& GameNumber(int number) { return *tourney.FindGame(number); }

  /// WinBoard has written the game's record.
  void PutPgn(int number, const std::string& result) {
    machine.files.Put("/t/g" + std::to_string(number) + ".PGN", PgnText(result));
  }

  static std::string PgnText(const std::string& result) {
    return "[Event \"Computer chess game\"]\n[Site \"here\"]\n[Round \"-\"]\n"
           "[White \"alpha.exe\"]\n[Black \"beta.exe\"]\n[Result \"" +
           result + "\"]\n\n1. e4 e5 " + result + "\n\n";
  }

  CapturedLog machine;
  Tourney tourney{machine.host, "/program/"};
  BracketList brackets{tourney};
};

}  // namespace tarvendo
