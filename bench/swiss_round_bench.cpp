// How long does it take to pair one round? A tourney of 9 rounds, after 5 of them with random
// results, a new tourney in each repetition. "worst" is the slowest repetition.

#include <benchmark/benchmark.h>

#include <algorithm>

#include "swiss_simulation.h"

namespace tarvendo {
namespace {

double Worst(const std::vector<double>& times) {
  return *std::max_element(times.begin(), times.end());
}

void SwissRound(benchmark::State& state) {
  static std::uint64_t seed = 0;
  SwissSimulation simulation(++seed, static_cast<int>(state.range(0)), 9);
  simulation.PlayRounds(5);
  for (auto unused : state) {
    if (!simulation.Pair()) state.SkipWithError("the round was not paired");
  }
  state.SetComplexityN(state.range(0));
}

BENCHMARK(SwissRound)
    ->Arg(20)
    ->Arg(100)
    ->Arg(200)
    ->Arg(500)
    ->Arg(1000)
    ->Arg(2000)
    ->Arg(5000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->Repetitions(15)
    ->ReportAggregatesOnly()
    ->ComputeStatistics("worst", Worst);

}  // namespace
}  // namespace tarvendo
