#pragma once

#include <string>
#include <vector>

#include "fakes/memory_file_system.h"
#include "publish/pgn_records.h"
#include "publish/report_model.h"
#include "tourney/tourney.h"

namespace tarvendo {

/// A tourney whose games are put down one by one, and its report.
struct ReportedTourney {
  explicit ReportedTourney(const std::vector<std::string>& names, int type = kRoundRobin) {
    tourney.ChangeSettings()->type = type;
    for (const std::string& name : names) {
      Player player;
      player.texts.name = name;
      player.texts.program_exe = name == "BYE" ? "bye" : "engine";
      player.number = static_cast<int>(tourney.Participants().size()) + 1;
      tourney.ChangeParticipants().push_back(player);
    }
  }

  /// Adds a game of these players, by their numbers, which is READY with that result.
  void Play(int white, int black, int result, int round = 1) {
    Add(white, black, round);
    tourney.ChangeGames().back().status = kReady;
    tourney.ChangeGames().back().result = result;
  }

  void Add(int white, int black, int round = 1) {
    Game game;
    game.white = white;
    game.black = black;
    game.white_player = tourney.FindParticipant(white)->texts.name;
    game.black_player = tourney.FindParticipant(black)->texts.name;
    game.round = round;
    game.sub_round = 1;
    game.number = static_cast<int>(tourney.Games().size()) + 1;
    tourney.ChangeGames().push_back(game);
  }

  /// Writes the record of the game added last into the tourney's PGN file.
  void Record(const std::string& moves) {
    const Game& game = tourney.Games().back();
    pgn += "[Event \"Cup\"]\n[Number \"" + std::to_string(game.number) + "\"]\n[White \"" +
           game.white_player + "\"]\n[Black \"" + game.black_player + "\"]\n\n" + moves + "\n\n";
    files.Put("/all.pgn", pgn);
  }

  Report Made(const std::vector<int>& playing = {}) {
    records.Look("/all.pgn");
    return MakeReport(tourney, records, playing, 1000000000);
  }

  Tourney tourney;
  MemoryFileSystem files;
  PgnRecords records{files};
  std::string pgn;
};

}  // namespace tarvendo
