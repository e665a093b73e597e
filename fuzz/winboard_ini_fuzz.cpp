// Any bytes as WinBoard's configuration, which may include itself.
#include "fakes/captured_log.h"
#include "fuzz_input.h"
#include "fuzzers.h"
#include "players/player_database.h"
#include "players/player_file.h"
#include "players/winboard_import.h"

namespace tarvendo {

void FuzzWinboardIni(const std::uint8_t* data, std::size_t size) {
  CapturedLog machine;
  const std::string text = FuzzText(data, size);
  machine.files.Put("a", text);
  machine.files.Put("/t/winboard.ini", text);
  PlayerDatabase players;
  ImportWinboardIni(machine.files, text, players);
  ReadPlayerFile(machine.files, "", "/t\\winboard.exe", players);
  ImportEngineLine(text, true, EngineList::kFirst, players);
  ImportEngineLine(text, false, EngineList::kSecond, players);
  for (const Player& player : players.Players())
    Demand(!player.texts.name.empty() && !player.texts.program_exe.empty());
}

}  // namespace tarvendo
