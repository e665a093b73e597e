// How long does the slowest round of many tourneys take to pair? One iteration is all rounds of all
// of them; "worst_ms" is the slowest round of all, "unpaired" counts rounds that could not be
// paired. SwissTourneys are of 20 to 160 participants and 5 to 9 rounds, the argument is their
// number. SwissTourneysOfAllRounds have 8 to 62 participants and as many rounds as can be, half of
// that: in the last of them everybody has met nearly half of the others, which makes pairing hard.
// The argument is how many there are of each size.

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

void PairTourney(std::uint64_t seed, int participants, int rounds, Tally& tally) {
  SwissSimulation simulation(seed, participants, rounds);
  for (int round = 1; round <= rounds && PairRound(simulation, tally); ++round) {
    simulation.Play();
  }
}

void Tell(benchmark::State& state, const Tally& tally) {
  state.counters["rounds"] = tally.rounds;
  state.counters["unpaired"] = tally.unpaired;
  state.counters["worst_ms"] = tally.worst_ms;
}

void SwissTourneys(benchmark::State& state) {
  Tally tally;
  for (auto unused : state) {
    for (std::uint64_t seed = 1; seed <= static_cast<std::uint64_t>(state.range(0)); ++seed) {
      std::mt19937_64 dice(seed);
      const int participants = 2 * static_cast<int>(10 + dice() % 71);
      const int rounds = static_cast<int>(5 + dice() % 5);
      PairTourney(seed, participants, rounds, tally);
    }
  }
  Tell(state, tally);
}

void SwissTourneysOfAllRounds(benchmark::State& state) {
  Tally tally;
  for (auto unused : state) {
    for (std::uint64_t seed = 1; seed <= static_cast<std::uint64_t>(state.range(0)); ++seed) {
      for (int participants = 8; participants <= 62; participants += 2) {
        PairTourney(seed * 1000 + static_cast<std::uint64_t>(participants), participants,
                    participants / 2, tally);
      }
    }
  }
  Tell(state, tally);
}

BENCHMARK(SwissTourneys)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(SwissTourneysOfAllRounds)->Arg(33)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
}  // namespace tarvendo
