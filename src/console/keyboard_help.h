#pragma once

#include "platform/terminal.h"

namespace tarvendo {

class PlayerDatabase;
struct TourneyRoom;

/// What helps the user to type commands: the names that are known at the moment, and the file of
/// what was typed before. Both arguments outlive it.
LineHelp HelpToType(TourneyRoom& room, const PlayerDatabase& players);

}  // namespace tarvendo
