// Any bytes as a tourney file: it is loaded or refused, and what was loaded can be shown, played on
// and saved, and comes back as it was.
#include <algorithm>

#include "fuzz_input.h"
#include "fuzz_tourney.h"
#include "fuzzers.h"
#include "reports/table_driver.h"
#include "runner/collect.h"
#include "runner/running_games.h"
#include "runner/spool.h"
#include "tourney/game_list.h"
#include "tourney/participants.h"

namespace tarvendo {
namespace {

/// The first save may cut values that do not fit into a line; from then on nothing is lost.
void DemandSameAfterReload(const Tourney& tourney, CapturedLog& machine) {
  TourneyFile file(machine.files);
  Demand(file.Save(tourney, "/t/once"));
  Tourney once;
  Demand(file.Load(once, "/t/once"));
  const std::string content = ContentOf(once);
  RecordReader reader(content);
  Tourney twice;
  std::string name;
  Demand(twice.ReadRecord(reader, name) && ContentOf(twice) == content);
}

void UseEverything(Tourney& tourney, CapturedLog& machine) {
  MemoryFileSystem& files = machine.files;
  TourneyFile file(files);
  MakeSmall(tourney);
  ListGames(tourney, GameFilter());
  ShowParticipants(tourney, 0);
  CollectAll(tourney, files, file, RunningGames());
  SpoolAll(tourney, files);
  UpdateAndWriteTable(tourney, files, "stdout", TextTableDefaults());
  UpdateAndWriteTable(tourney, files, "/t/table.htm", HtmlTableDefaults(tourney));
  if (!tourney.Participants().empty()) RemoveParticipant(tourney, files, 1);
  RemoveGames(tourney, files, GameFilter());
}

}  // namespace

void FuzzTourneyFile(const std::uint8_t* data, std::size_t size) {
  CapturedLog machine;
  machine.files.MakeDirectory("/t");
  machine.files.Put("/t/fuzzed", "TOURNEY_FILE\n" + FuzzText(data, size));
  Tourney tourney;
  Demand(TourneyFile(machine.files, kFuzzedEmptyRecords).Load(tourney, "/t/fuzzed"));
  // A carriage return before the end of a line belongs to the line end.
  const bool has_plain_line_ends = std::find(data, data + size, '\r') == data + size;
  if (has_plain_line_ends) DemandSameAfterReload(tourney, machine);
  UseEverything(tourney, machine);
}

}  // namespace tarvendo
