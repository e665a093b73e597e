// Any bytes as the record that WinBoard leaves of a game.
#include "fakes/captured_log.h"
#include "fuzz_input.h"
#include "fuzzers.h"
#include "runner/collect.h"
#include "runner/pgn_text.h"
#include "runner/running_games.h"
#include "runner/spool.h"
#include "tourney/tourney.h"
#include "tourney/tourney_file.h"

namespace tarvendo {

void FuzzPgn(const std::uint8_t* data, std::size_t size) {
  CapturedLog machine;
  machine.files.MakeDirectory("/t");
  Tourney tourney;
  TourneyFile file(machine.files);
  tourney.ChangeSettings()->files_path = "/t\\";
  tourney.AddGame(1, 2, 3, 1);
  SpoolAll(tourney, machine.files);
  machine.files.Put("/t/g1.PGN", FuzzText(data, size));
  const std::string pgn = *machine.files.ReadText("/t/g1.PGN");
  CollectAll(tourney, machine.files, file, RunningGames());
  const Game& game = tourney.Games().front();
  Demand(game.IsReady() && game.result == ResultInPgn(pgn));
  Demand(machine.files.Bytes("default.pgn") == MergedPgn(tourney, game, pgn));
  Demand(!machine.files.Has("/t/g1.PGN"));
}

}  // namespace tarvendo
