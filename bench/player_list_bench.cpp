// Do reading players and making them participants grow with their number, and not with its square?
// 100,000 of them in a second.

#include <benchmark/benchmark.h>

#include "platform/files.h"
#include "platform/scratch_directory.h"
#include "players/player_database.h"
#include "players/player_file.h"
#include "tourney/participants.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

/// A player file with so many engines.
void MakePlayerFile(FileSystem& files, const std::string& path, std::int64_t players) {
  const auto file = files.Create(path);
  file->Write("PLAYER_FILE\n");
  for (std::int64_t i = 0; i < players; ++i) {
    file->Write("PLAYER\nName:\nEngine " + std::to_string(i) +
                "\nProgramExe:\ne.exe\nEND_PLAYER\n\n");
  }
}

void ReadAndAddAllPlayers(benchmark::State& state) {
  const ScratchDirectory directory;
  const auto files = MakeFileSystem();
  const std::string path = directory.File("players.txt");
  MakePlayerFile(*files, path, state.range(0));
  for (auto _ : state) {
    PlayerDatabase players;
    ReadPlayerFile(*files, path, "", players);
    Tourney tourney;
    AddAllPlayers(tourney, players.Players());
    RemoveParticipant(tourney, *files, 1);
    if (tourney.Participants().size() + 1 != static_cast<std::size_t>(state.range(0))) {
      state.SkipWithError("not all players were added");
    }
  }
  state.SetComplexityN(state.range(0));
}

BENCHMARK(ReadAndAddAllPlayers)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();

}  // namespace
}  // namespace tarvendo
