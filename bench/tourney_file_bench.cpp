// How long do saving and loading a tourney take on the real disk? To stay below 500 ms each: 1,000
// participants and 100,000 games.

#include <benchmark/benchmark.h>

#include "base/log.h"
#include "platform/scratch_directory.h"
#include "report_tourney.h"

namespace tarvendo {
namespace {

/// 1,000 participants and as many games as asked for, in two games a pair of files waiting to be
/// run.
void AddSpooledGames(ReportTourney& report, benchmark::State& state) {
  report.PlayRounds(static_cast<int>(state.range(0)) / 500);
  for (Game& game : report.tourney.ChangeGames()) {
    game.white_player = report.tourney.FindParticipant(game.white)->texts.name;
    game.black_player = report.tourney.FindParticipant(game.black)->texts.name;
    game.bat_file = "c:\\tourneys\\spring\\g" + std::to_string(game.number) + ".BAT";
    game.pgn_file = "c:\\tourneys\\spring\\g" + std::to_string(game.number) + ".PGN";
  }
  state.SetComplexityN(state.range(0));
}

void SaveTourney(benchmark::State& state) {
  ScratchDirectory scratch;
  ReportTourney report(1000, kSwiss);
  AddSpooledGames(report, state);
  for (auto _ : state) {
    if (!report.file.Save(report.tourney, scratch.File("tourney.ini")))
      state.SkipWithError("not saved");
  }
}

void LoadTourney(benchmark::State& state) {
  ScratchDirectory scratch;
  ReportTourney report(1000, kSwiss);
  AddSpooledGames(report, state);
  if (!report.file.Save(report.tourney, scratch.File("tourney.ini")))
    state.SkipWithError("not saved");
  for (auto _ : state) {
    if (!report.file.Load(report.tourney, scratch.File("tourney.ini")))
      state.SkipWithError("not loaded");
  }
}

/// A save without a name, as AutoSave makes it: the old file is looked at first.
void AutoSaveTourney(benchmark::State& state) {
  ScratchDirectory scratch;
  ReportTourney report(1000, kSwiss);
  AddSpooledGames(report, state);
  if (!report.file.Save(report.tourney, scratch.File("tourney.ini")))
    state.SkipWithError("not saved");
  for (auto _ : state) {
    if (!report.file.Save(report.tourney, "")) state.SkipWithError("not saved");
  }
}

BENCHMARK(SaveTourney)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadTourney)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);
BENCHMARK(AutoSaveTourney)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarvendo
