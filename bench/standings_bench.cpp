// How long do the standings take? To stay below 50 ms: 1,000 participants and 100,000 games.

#include <benchmark/benchmark.h>

#include "report_tourney.h"
#include "tourney/standings.h"

namespace tarvendo {
namespace {

/// 1,000 participants, and as many games as the argument says.
void Standings(benchmark::State& state, int type) {
  ReportTourney report(1000, type);
  report.PlayRounds(static_cast<int>(state.range(0)) / 500);
  for (auto _ : state) {
    UpdateStandingsAndRound(report.tourney);
    benchmark::DoNotOptimize(report.tourney.Participants().data());
  }
  state.SetComplexityN(state.range(0));
  state.counters["games"] = static_cast<double>(report.tourney.Games().size());
}

BENCHMARK_CAPTURE(Standings, Swiss, kSwiss)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);
BENCHMARK_CAPTURE(Standings, RoundRobin, kRoundRobin)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

}  // namespace
}  // namespace tarvendo
