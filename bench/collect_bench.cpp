// Do collecting and respooling grow with the number of games, and not with its square? Measured
// with the real files of 1,000, 10,000 and 100,000 spooled games.

#include <benchmark/benchmark.h>

#include <fstream>

#include "platform/scratch_directory.h"
#include "report_tourney.h"
#include "runner/collect.h"
#include "runner/running_games.h"
#include "runner/spool.h"

namespace tarvendo {
namespace {

constexpr int kParticipants = 20;

/// So many spooled games between twenty engines.
void SpoolGames(ReportTourney& made, const std::string& path, std::int64_t games) {
  Tourney& tourney = made.tourney;
  tourney.ChangeSettings()->files_path = path;
  tourney.ChangeSettings()->pgn_file = path + "all.pgn";
  for (int i = 0; i < games; ++i) {
    const int white = i % kParticipants + 1;
    tourney.AddGame(white, white % kParticipants + 1, i / kParticipants + 1, 1);
  }
  SpoolAll(tourney, made.host.files);
}

/// WinBoard has played every game: a record of two kilobytes each.
void WriteRecords(const Tourney& tourney) {
  const std::string moves(2000, 'm');
  for (const Game& game : tourney.Games()) {
    std::ofstream(game.pgn_file) << "[Event \"x\"]\n[Round \"-\"]\n[White \"w\"]\n[Black \"b\"]\n"
                                 << "[Result \"1-0\"]\n\n"
                                 << moves << "\n\n";
  }
}

void CollectAllGames(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    const ScratchDirectory directory;
    ReportTourney made(kParticipants, kRoundRobin);
    SpoolGames(made, directory.Path() + "/", state.range(0));
    WriteRecords(made.tourney);
    state.ResumeTiming();
    CollectAll(made.tourney, made.host.files, made.file, RunningGames());
    state.PauseTiming();
    if (made.tourney.State().games_state != 3) state.SkipWithError("not all games were collected");
    state.ResumeTiming();
  }
  state.SetComplexityN(state.range(0));
}

void RespoolAllGames(benchmark::State& state) {
  const ScratchDirectory directory;
  ReportTourney made(kParticipants, kRoundRobin);
  SpoolGames(made, directory.Path() + "/", state.range(0));
  for (auto _ : state) {
    RespoolAll(made.tourney, made.host.files, made.file, RunningGames());
  }
  state.SetComplexityN(state.range(0));
}

BENCHMARK(CollectAllGames)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->Complexity(benchmark::oN);
BENCHMARK(RespoolAllGames)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->Complexity(benchmark::oN);

}  // namespace
}  // namespace tarvendo
