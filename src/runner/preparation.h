#pragma once

#include <memory>
#include <string>

#include "platform/host.h"
#include "play/game_order.h"

namespace tarvendo {

class Game;
class LockedFile;
class Tourney;

/// A game that is ready to be handed to a game host.
struct PreparedGame {
  GameOrder order;
  std::unique_ptr<LockedFile> claim;
};

/// How preparing a game has ended.
enum class Preparation {
  kReady,
  kNoBatchFile,  ///< it is missing and cannot be written
  kBeingPlayed,  ///< somebody holds its claim
  kNoClaim,      ///< its claim file cannot be made
};

/// Makes a SPOOLED game ready to be started: a batch file that is missing is written again, the
/// claim is made, the start is announced. `prepared` is filled on kReady only; otherwise nothing
/// was announced. The tourney is held by the caller.
Preparation PrepareGame(Tourney& tourney, const Host& host, const Game& game,
                        const std::string& debug_file, PreparedGame& prepared);

}  // namespace tarvendo
