// How long does a table take, from the games to the saved file? To stay below 1 s each: 1,000
// participants of a round robin, a million cells, in either form.

#include <benchmark/benchmark.h>

#include <filesystem>

#include "report_tourney.h"
#include "reports/table_driver.h"

namespace tarvendo {
namespace {

void Measure(benchmark::State& state, ReportTourney& report, const TableOptions& options) {
  const std::filesystem::path path =
      std::filesystem::temp_directory_path() / "tarvendo-table-bench.htm";
  for (auto _ : state) {
    if (!UpdateAndWriteTable(report.tourney, report.host.files, path.string(), options))
      state.SkipWithError("not written");
  }
  if (std::filesystem::exists(path)) {
    state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(path));
  }
  std::filesystem::remove(path);
}

/// Every pair has played; the argument is the number of participants.
void RoundRobinTable(benchmark::State& state, bool html, bool long_cells) {
  ReportTourney report(static_cast<int>(state.range(0)), kRoundRobin);
  report.PlayEveryPair();
  TableOptions options = html ? HtmlTableDefaults(report.tourney) : TextTableDefaults();
  options.long_cells = long_cells;
  Measure(state, report, options);
}

/// Ten rounds have been played.
void SwissTable(benchmark::State& state, bool html) {
  ReportTourney report(static_cast<int>(state.range(0)), kSwiss);
  report.PlayRounds(10);
  Measure(state, report, html ? HtmlTableDefaults(report.tourney) : TextTableDefaults());
}

BENCHMARK_CAPTURE(RoundRobinTable, Text, false, false)
    ->Arg(10)
    ->Arg(100)
    ->Arg(1000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(RoundRobinTable, Html, true, false)
    ->Arg(10)
    ->Arg(100)
    ->Arg(1000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(RoundRobinTable, TextLongCells, false, true)
    ->Arg(1000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(RoundRobinTable, HtmlLongCells, true, true)
    ->Arg(1000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SwissTable, Text, false)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SwissTable, Html, true)->Arg(1000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarvendo
