// Any bytes as a list of engines in JSON: it is read, or nothing is changed; what was read can be
// written and comes back.
#include "fakes/captured_log.h"
#include "fuzz_input.h"
#include "fuzzers.h"
#include "players/player_database.h"
#include "players/player_file.h"

namespace tarvendo {

void FuzzEnginesJson(const std::uint8_t* data, std::size_t size) {
  CapturedLog machine;
  machine.files.Put("/fuzzed", "[" + FuzzText(data, size));
  PlayerDatabase players;
  const bool is_read = ReadPlayerFile(machine.files, "/fuzzed", "", players);
  Demand(is_read || players.Players().empty());
  Demand(WritePlayerFile(machine.files, "/written", players));
  PlayerDatabase again;
  ReadPlayerFile(machine.files, "/written", "", again);
  Demand(again.Players().size() == players.Players().size());
}

}  // namespace tarvendo
