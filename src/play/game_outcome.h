#pragma once

#include <optional>
#include <string>

#include "play/game_order.h"

namespace tarvendo {

/// How a game came to its end.
enum class GameEnd {
  kEnded,            ///< its debug file tells the end
  kNoSignOfLife,     ///< no debug file appeared in time
  kDiedSilently,     ///< its process has ended, and the debug file has told nothing for a minute
  kOutOfPatience,    ///< it was ended because its debug file told nothing for too long
  kNotStarted,       ///< no process could be made for it
  kCannotBeWatched,  ///< not even a debug file of our own can be put where WinBoard's should be
  kNeverBegun,       ///< whoever was to play it has never got it: nothing has happened
  kRefused           ///< likewise, and nobody would take another one either
};

/// What has become of an order. The files themselves still lie where the order says.
struct GameOutcome {
  GameOrder order;
  GameEnd end = GameEnd::kEnded;
  std::optional<std::string> pgn;  ///< the record's text; nothing when there is no file
  std::string reason;              ///< why it has no record, or was refused: lines; may be empty

  /// Whether the game ever showed that it was being played.
  bool ShowedLife() const {
    return end == GameEnd::kEnded || end == GameEnd::kDiedSilently ||
           end == GameEnd::kOutOfPatience;
  }

  /// Whether the game is still to be played, as if it had never been ordered.
  bool IsGivenBack() const { return end == GameEnd::kNeverBegun || end == GameEnd::kRefused; }
};

}  // namespace tarvendo
