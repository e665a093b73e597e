// Any bytes as a tourney file: it is loaded or refused, and what was loaded can be shown, played on
// and saved, and comes back as it was.
#include <algorithm>

#include "base/record_file.h"
#include "fakes/captured_log.h"
#include "fuzz_input.h"
#include "reports/table_driver.h"
#include "runner/collect.h"
#include "runner/running_games.h"
#include "runner/spool.h"
#include "tourney/game_list.h"
#include "tourney/participants.h"
#include "tourney/tourney.h"
#include "tourney/tourney_file.h"

using namespace tarvendo;

namespace {

std::string ContentOf(const Tourney& tourney) {
  RecordWriter writer;
  tourney.WriteRecord(writer, "");
  return writer.Text();
}

/// The first save may cut values that do not fit into a line; from then on nothing is lost.
void DemandSameAfterReload(const Tourney& tourney, CapturedLog& machine) {
  TourneyFile file(machine.files);
  Demand(file.Save(tourney, "/t/once"));
  Tourney once;
  Demand(file.Load(once, "/t/once"));
  Demand(file.Save(once, "/t/twice"));
  Tourney twice;
  Demand(file.Load(twice, "/t/twice"));
  Demand(ContentOf(twice) == ContentOf(once));
}

/// A file may announce thousands of participants, which are read as empty ones; their table is
/// large, but nothing new.
constexpr std::size_t kMostParticipants = 50;

void UseEverything(Tourney& tourney, CapturedLog& machine) {
  MemoryFileSystem& files = machine.files;
  TourneyFile file(files);
  if (tourney.Participants().size() > kMostParticipants) {
    tourney.ChangeParticipants().resize(kMostParticipants);
  }
  ListGames(tourney, GameFilter());
  ShowParticipants(tourney, 0);
  CollectAll(tourney, files, file, RunningGames());
  SpoolAll(tourney, files);
  WriteTable(tourney, files, "stdout", TextTableDefaults());
  WriteTable(tourney, files, "/t/table.htm", HtmlTableDefaults(tourney));
  if (!tourney.Participants().empty()) RemoveParticipant(tourney, files, 1);
  RemoveGames(tourney, files, GameFilter());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  CapturedLog machine;
  machine.files.MakeDirectory("/t");
  machine.files.Put("/t/fuzzed", "TOURNEY_FILE\n" + FuzzText(data, size));
  Tourney tourney;
  Demand(TourneyFile(machine.files).Load(tourney, "/t/fuzzed"));
  // A carriage return before the end of a line belongs to the line end.
  const bool has_plain_line_ends = std::find(data, data + size, '\r') == data + size;
  if (has_plain_line_ends) DemandSameAfterReload(tourney, machine);
  UseEverything(tourney, machine);
  return 0;
}
