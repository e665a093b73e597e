#pragma once

#include <string>

#include "fakes/captured_log.h"
#include "runner/tourney_room.h"

namespace tarvendo {

/// A round robin on a machine made of memory whose games lie in "/t": Alpha against Beta, Beta
/// against Gamma and so on, one game a round.
struct SmallTourney {
  SmallTourney() {
    machine.files.MakeDirectory("/t");
    tourney.ChangeSettings()->files_path = "/t\\";
    tourney.ChangeSettings()->pgn_file = "/t\\all.pgn";
    tourney.ChangeSettings()->type = kRoundRobin;
    for (const char* name : {"Alpha", "Beta", "Gamma", "Delta"})
      AddParticipant(name);
  }

  void AddParticipant(const std::string& name) {
    Player player;
    player.texts.name = name;
    player.texts.program_exe = name + ".exe";
    player.number = static_cast<int>(tourney.Participants().size()) + 1;
    tourney.ChangeParticipants().push_back(player);
  }

  /// Adds `count` games, each in a round of its own, and forgets what that printed.
  void AddGames(int count) {
    for (int i = 0; i < count; ++i) {
      const int white = i % 4 + 1;
      tourney.AddGame(white, white % 4 + 1, i + 1, 1);
    }
    machine.TakeOutput();
  }

  Game& GameNumber(int number) {
    const std::ptrdiff_t place = tourney.FindGame(number) - tourney.Games().data();
    return tourney.ChangeGames()[static_cast<std::size_t>(place)];
  }

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
  TourneyRoom room{machine.host};
  SharedTourney& shared = room.shared;

  // For the test's own thread, which needs no hold as long as there is no other.
  Tourney& tourney = *shared.Take();
  TourneyFile& file = room.file.With(shared.Take());
  BracketList& brackets = room.brackets.With(shared.Take());
  RunningGames& running = room.running.With(shared.Take());
};

}  // namespace tarvendo
