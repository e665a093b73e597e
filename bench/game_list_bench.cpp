// Do the operations on the game list grow with the number of games and not with its square?

#include <benchmark/benchmark.h>

#include "base/log.h"
#include "platform/file_watch.h"
#include "platform/scratch_directory.h"
#include "report_tourney.h"
#include "tourney/game_list.h"
#include "tourney/participants.h"
#include "tourney/round_robin.h"

namespace tarvendo {
namespace {

/// While it lives, what the program prints goes to a log file on the disk and is otherwise thrown
/// away.
class DiscardingLog {
 public:
  DiscardingLog() {
    log_.AddFile(scratch_.File("bench.log"));
    TheLog = &log_;
  }
  ~DiscardingLog() { TheLog = nullptr; }
  DiscardingLog(const DiscardingLog&) = delete;
  DiscardingLog& operator=(const DiscardingLog&) = delete;

 private:
  ScratchDirectory scratch_;
  std::unique_ptr<FileSystem> files_ = MakeFileSystem();
  std::unique_ptr<Processes> processes_ = MakeProcesses();
  std::unique_ptr<Clock> clock_ = MakeClock();
  std::unique_ptr<FileWatches> watches_ = MakeFileWatches();
  Host host_{*files_, *processes_, *clock_, *watches_};
  Log log_{host_, [](const std::string&) {}, [](const std::string&) {}};
};

/// A participant for every hundred games, but ten at least.
int Participants(benchmark::State& state) {
  return std::max(10, static_cast<int>(state.range(0)) / 100);
}

void AddPlayedRounds(ReportTourney& report, benchmark::State& state) {
  report.PlayRounds(static_cast<int>(state.range(0)) * 2 / Participants(state));
  state.counters["games"] = static_cast<double>(report.tourney.Games().size());
  state.SetComplexityN(state.range(0));
}

void RemoveAllGames(benchmark::State& state) {
  DiscardingLog log;
  for (auto _ : state) {
    state.PauseTiming();
    ReportTourney report(Participants(state), kSwiss);
    AddPlayedRounds(report, state);
    state.ResumeTiming();
    benchmark::DoNotOptimize(RemoveGames(report.tourney, report.host.files, {.all = true}));
  }
}

/// Those that White won: the places of the others change in every history.
void RemoveSomeGames(benchmark::State& state) {
  DiscardingLog log;
  for (auto _ : state) {
    state.PauseTiming();
    ReportTourney report(Participants(state), kSwiss);
    AddPlayedRounds(report, state);
    state.ResumeTiming();
    benchmark::DoNotOptimize(
        RemoveGames(report.tourney, report.host.files, {.result = kWhiteWins}));
  }
}

void RemoveOneParticipant(benchmark::State& state) {
  DiscardingLog log;
  for (auto _ : state) {
    state.PauseTiming();
    ReportTourney report(Participants(state), kSwiss);
    AddPlayedRounds(report, state);
    state.ResumeTiming();
    benchmark::DoNotOptimize(RemoveParticipant(report.tourney, report.host.files, 1));
  }
}

/// With names so short that the width of the lines is looked up anew.
void ListAllGames(benchmark::State& state) {
  DiscardingLog log;
  ReportTourney report(Participants(state), kSwiss);
  for (Player& player : report.tourney.ChangeParticipants())
    player.texts.name.resize(1);
  AddPlayedRounds(report, state);
  for (auto _ : state)
    ListGames(report.tourney, {});
}

void CreateAllGames(benchmark::State& state) {
  DiscardingLog log;
  int participants = 2;
  while (participants * (participants - 1) / 2 < state.range(0))
    ++participants;
  ReportTourney report(participants, kRoundRobin);
  for (auto _ : state)
    CreateRRGames(report.tourney, report.host.files);
  state.counters["games"] = static_cast<double>(report.tourney.Games().size());
  state.SetComplexityN(state.range(0));
}

#define GAME_LIST_BENCHMARK(operation) \
  BENCHMARK(operation)                 \
      ->RangeMultiplier(10)            \
      ->Range(1000, 100000)            \
      ->Unit(benchmark::kMillisecond)  \
      ->Complexity(benchmark::oN)

GAME_LIST_BENCHMARK(RemoveAllGames);
GAME_LIST_BENCHMARK(RemoveSomeGames);
GAME_LIST_BENCHMARK(RemoveOneParticipant);
GAME_LIST_BENCHMARK(ListAllGames);
GAME_LIST_BENCHMARK(CreateAllGames);

}  // namespace
}  // namespace tarvendo
