// How long does the slowest round of many tourneys take to pair? Every round of tourneys of 20 to
// 160 participants and 5 to 9 rounds. One iteration is all rounds of all of them; "worst_ms" is the
// slowest round of all, "unpaired" counts rounds that could not be paired.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>

#include "swiss_simulation.h"

namespace tarvendo {
namespace {

struct Tally {
  int rounds = 0;
  int unpaired = 0;
  double worst_ms = 0;
};

/// Pairs the next round and puts down how long it took.
bool PairRound(SwissSimulation& simulation, Tally& tally) {
  const auto start = std::chrono::steady_clock::now();
  const bool paired = simulation.Pair();
  const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
  tally.worst_ms = std::max(tally.worst_ms, taken.count());
  ++tally.rounds;
  if (!paired) ++tally.unpaired;
  return paired;
}

void SwissTourneys(benchmark::State& state) {
  Tally tally;
  for (auto unused : state) {
    for (std::uint64_t seed = 1; seed <= static_cast<std::uint64_t>(state.range(0)); ++seed) {
      std::mt19937_64 dice(seed);
      const int participants = 2 * static_cast<int>(10 + dice() % 71);
      const int rounds = static_cast<int>(5 + dice() % 5);
      SwissSimulation simulation(seed, participants, rounds);
      for (int round = 1; round <= rounds && PairRound(simulation, tally); ++round) {
        simulation.Play();
      }
    }
  }
  state.counters["rounds"] = tally.rounds;
  state.counters["unpaired"] = tally.unpaired;
  state.counters["worst_ms"] = tally.worst_ms;
}

BENCHMARK(SwissTourneys)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
}  // namespace tarvendo

BENCHMARK_MAIN();
