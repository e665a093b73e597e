#pragma once

#include <vector>

namespace tarvendo {

class Game;
class RunningGames;
class Tourney;

/// What the runner does next to get a game to play.
enum class PlanStep {
  kWait,       ///< nothing: it waits for a game that is under way, or for the user
  kStart,      ///< a spooled game is started
  kBye,        ///< a spooled game gets its result unplayed, for one of its players is a bye
  kSpool,      ///< AutoRun: the next game is spooled
  kPair,       ///< AutoRun: the next round of a Swiss tourney is paired
  kReplay,     ///< AutoRun: the games without a result are spooled again
  kSwitchOff,  ///< AutoRun finds nothing more to do and goes off
};

/// What this attempt to find a game has tried already.
struct PlanAttempt {
  bool has_nothing_to_spool = false;  ///< no game was left that could be spooled
  bool has_paired = false;            ///< a round was paired, or not even the big bracket could be
  bool failed_to_pair = false;
  bool failed_to_replay = false;  ///< or nothing may be replayed at all
};

struct Plan {
  PlanStep step = PlanStep::kWait;
  int game_number = 0;  ///< of the game whose turn it is
};

/// The next step. SPOOLED games come first, in the order in which they were spooled, but none that
/// is under way or whose number is in `blocked` (somebody else holds what it needs). With AutoRun
/// on, the next game is spooled when none is left, a Swiss round is paired when there is nothing to
/// spool, the games without result are replayed when no round can be paired, and when nothing
/// helps, AutoRun goes off. As long as a game is under way nothing but a start or a spool is
/// planned: its result may change everything else.
Plan PlanNextStep(const Tourney& tourney, const RunningGames& running, const PlanAttempt& attempt,
                  const std::vector<int>& blocked);

}  // namespace tarvendo
