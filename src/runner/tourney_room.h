#pragma once

#include "pairing/bracket_list.h"
#include "platform/host.h"
#include "runner/running_games.h"
#include "tourney/shared_tourney.h"
#include "tourney/tourney_file.h"

namespace tarvendo {

/// The tourney and what belongs to its holder beside it. Made once, by the composition of the
/// program; whoever works on the tourney from a thread of its own gets this.
struct TourneyRoom {
  explicit TourneyRoom(Host& machine)
      : host(machine), file(machine.files), brackets(machine.clock) {}

  Host& host;
  SharedTourney shared;
  HeldWithTourney<TourneyFile> file;
  HeldWithTourney<BracketList> brackets;
  HeldWithTourney<RunningGames> running;
};

}  // namespace tarvendo
