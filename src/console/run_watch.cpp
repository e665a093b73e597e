#include "console/run_watch.h"

#include <string>

#include "console/outputs.h"
#include "console/progress_display.h"
#include "console/run_summary.h"
#include "platform/faults.h"
#include "platform/files.h"
#include "platform/input.h"
#include "publish/pgn_records.h"
#include "runner/runner.h"
#include "runner/tourney_room.h"

namespace tarvendo {
namespace {

RunCounts CountNow(TourneyRoom& room, Runner& runner) {
  const Runner::Counts games = runner.CountGames();
  RunCounts counts = CountRun(*room.shared.Take());
  counts.playing = games.under_way;
  counts.ended_here = games.judged;
  return counts;
}

/// The summary, with what the tourney's PGN file tells of the games.
std::string SummaryOf(TourneyRoom& room) {
  PgnRecords records(room.host.files);
  const Hold hold = room.shared.Take();
  records.Look(room.host.files.FullPath(hold->Settings().pgn_file));
  return RunSummary(*hold, [&records](const Game& game) {
    const PgnRecords::Record* record =
        records.Find({game.number, game.white_player, game.black_player});
    return record == nullptr ? RecordedEnd()
                             : RecordedEnd{record->facts.ending, record->facts.plies};
  });
}

}  // namespace

void AwaitWithProgress(TourneyRoom& room, Runner& runner, Outputs& outputs) {
  ProgressDisplay display(
      room.host.clock, outputs, [&] { return CountNow(room, runner); }, ColumnsOfError);
  runner.AwaitIdle([&display] { return display.Look(); });
  display.End();
  if (!TerminationRequested()) outputs.ToError(SummaryOf(room));
}

}  // namespace tarvendo
