// What does AutoSave cost a command that changes nothing? `get name` is to stay below 1 ms with
// 100,000 games.

#include <benchmark/benchmark.h>

#include "console/command_interpreter.h"
#include "console/line_input.h"
#include "platform/clock.h"
#include "platform/input.h"
#include "players/player_database.h"
#include "report_tourney.h"
#include "runner/tourney_room.h"

namespace tarvendo {
namespace {

/// A line that is typed once.
class Typed : public InputStream {
 public:
  explicit Typed(const char* line) : next_(line) {}
  int Get() override { return *next_ == '\0' ? -1 : *next_++; }

 private:
  const char* next_;
};

void GetName(benchmark::State& state) {
  ReportTourney report(1000, kSwiss);
  report.PlayRounds(static_cast<int>(state.range(0)) / 500);
  report.tourney.ChangeSettings()->auto_save = 1;
  PlayerDatabase players;
  TourneyRoom room(report.host);
  *room.shared.Take() = report.tourney;
  CommandInterpreter interpreter({room, players, "/no-such-directory/"});
  for (auto _ : state) {
    Typed bytes("get name\n");
    LineInput input(bytes, false);
    interpreter.RunCommandLoop(input, false);
  }
  state.counters["games"] = static_cast<double>(report.tourney.Games().size());
}

BENCHMARK(GetName)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tarvendo
