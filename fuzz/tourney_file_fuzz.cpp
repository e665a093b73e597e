// Any bytes as a tourney file: it is loaded or refused, and what was loaded can be shown, played on
// and saved, and comes back as it was.
#include <algorithm>

#include "fakes/captured_log.h"
#include "fuzz_input.h"
#include "reports/table_driver.h"
#include "runner/collect.h"
#include "runner/spool.h"
#include "tourney/game_list.h"
#include "tourney/participants.h"
#include "tourney/tourney.h"

using namespace tarvendo;

namespace {

/// The first save may cut values that do not fit into a line; from then on nothing is lost.
void DemandSameAfterReload(Tourney& tourney, CapturedLog& machine) {
  tourney.settings.save_file = "/t/once";
  Demand(tourney.Save("/t/once"));
  Tourney once(machine.host, "/nowhere/");
  Demand(once.Load("/t/once"));
  Demand(once.Save("/t/twice"));
  Tourney twice(machine.host, "/nowhere/");
  Demand(twice.Load("/t/twice"));
  Demand(twice.ContentText() == once.ContentText());
}

/// A file may announce thousands of participants, which are read as empty ones; their table is
/// large, but nothing new.
constexpr std::size_t kMostParticipants = 50;

void UseEverything(Tourney& tourney) {
  if (tourney.Participants().size() > kMostParticipants) {
    tourney.Participants().resize(kMostParticipants);
  }
  ListGames(tourney, GameFilter());
  ShowParticipants(tourney, 0);
  CollectAll(tourney);
  SpoolAll(tourney);
  WriteTable(tourney, "stdout", TextTableDefaults());
  WriteTable(tourney, "/t/table.htm", HtmlTableDefaults(tourney));
  if (!tourney.Participants().empty()) RemoveParticipant(tourney, 1);
  RemoveGames(tourney, GameFilter());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  CapturedLog machine;
  machine.files.MakeDirectory("/t");
  machine.files.Put("/t/fuzzed", "TOURNEY_FILE\n" + FuzzText(data, size));
  Tourney tourney(machine.host, "/nowhere/");
  Demand(tourney.Load("/t/fuzzed"));
  // A carriage return before the end of a line belongs to the line end.
  const bool has_plain_line_ends = std::find(data, data + size, '\r') == data + size;
  if (has_plain_line_ends) DemandSameAfterReload(tourney, machine);
  UseEverything(tourney);
  return 0;
}
