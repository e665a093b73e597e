// Any bytes as the claim of a game: what is understood is written as it was read, and whoever
// starts next settles it, whatever it says: nobody plays the game, and it is still to be played.
#include "fakes/captured_log.h"
#include "fuzz_input.h"
#include "fuzzers.h"
#include "play/claim.h"
#include "runner/adoption.h"
#include "runner/running_games.h"
#include "runner/spool.h"
#include "tourney/tourney.h"

namespace tarvendo {

void FuzzClaim(const std::uint8_t* data, std::size_t size) {
  const std::string text = FuzzText(data, size);
  if (const auto order = ReadClaimText(text, "g1.run")) {
    const auto again = ReadClaimText(ClaimText(*order), "g1.run");
    Demand(again && IsSameGame(*again, *order) && again->pgn_file == order->pgn_file);
  }
  CapturedLog machine;
  machine.files.MakeDirectory("/t");
  Tourney tourney;
  tourney.ChangeSettings()->files_path = "/t\\";
  tourney.AddGame(1, 2, 3, 1);
  SpoolAll(tourney, machine.files);
  machine.files.Put("/t/g1.run", text);
  machine.files.Put("/t/g1.PGN", "1. e4 *");
  Demand(FindGamesToAdopt(tourney, machine.files, RunningGames()).empty());
  Demand(tourney.Games().front().status == kSpooled);
}

}  // namespace tarvendo
