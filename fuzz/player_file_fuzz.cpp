// Any bytes as a player file (or, without its first line, as WinBoard's configuration): what was
// read can be listed and written, and comes back as it was.
#include "fakes/captured_log.h"
#include "fuzz_input.h"
#include "fuzzers.h"
#include "players/player_database.h"
#include "players/player_file.h"

namespace tarvendo {
namespace {

std::string Written(CapturedLog& machine, const PlayerDatabase& players, const std::string& path) {
  Demand(WritePlayerFile(machine.files, path, players));
  return machine.files.Bytes(path);
}

}  // namespace

void FuzzPlayerFile(const std::uint8_t* data, std::size_t size) {
  CapturedLog machine;
  machine.files.MakeDirectory("/t");
  machine.files.Put("/t/fuzzed", "PLAYER_FILE\n" + FuzzText(data, size));
  PlayerDatabase players;
  ReadPlayerFile(machine.files, "/t/fuzzed", "", players);
  players.ListPlayers("", false);
  const std::string once = Written(machine, players, "/t/once");
  PlayerDatabase again;
  ReadPlayerFile(machine.files, "/t/once", "", again);
  Demand(again.Players().size() <= players.Players().size());
  Written(machine, again, "/t/twice");
  while (!players.Players().empty())
    players.DeletePlayer(1);
}

}  // namespace tarvendo
