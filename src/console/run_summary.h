#pragma once

#include <functional>
#include <string>

namespace tarvendo {

class Game;
class Tourney;

/// What a game's record tells of its end.
struct RecordedEnd {
  std::string how;  ///< the comment behind the last move, "White mates"; empty when there is none
  int plies = 0;    ///< half moves; 0 when there is no record
};

/// What --progress tells when a run is over: the results of each participant, the best first (byes
/// are none), how the games ended, the most frequent first, and the longest game. `end_of` is asked
/// for each game that is READY. Empty when there is none.
std::string RunSummary(const Tourney& tourney,
                       const std::function<RecordedEnd(const Game&)>& end_of);

}  // namespace tarvendo
