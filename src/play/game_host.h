#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/clock.h"
#include "platform/files.h"
#include "play/game_order.h"
#include "play/game_outcome.h"

namespace tarvendo {

/// What keeps a game from being started: somebody holds a file.
struct Obstacle {
  std::string file;                  ///< its name, as a message tells it
  std::optional<TimePoint> tell_at;  ///< when the user should hear of it; nothing: never
};

/// Plays games somewhere: on this machine, on a cluster. Knows orders and outcomes and no tourney.
/// Called by one thread, the runner's, never under the tourney's lock. What happens meanwhile it
/// tells by the function that it was made with, from any thread.
class GameHost {
 public:
  virtual ~GameHost() = default;

  /// How many orders more it takes now.
  virtual int FreeSlots() const = 0;

  /// Makes ready for the next start in the directory `files_path` (which is put in front of file
  /// names as it is). Returns what keeps a game from being started; nothing when one can start.
  virtual std::optional<Obstacle> FindObstacle(const std::string& files_path, TimePoint now) = 0;

  /// Where WinBoard will write the debug file of the game with that number, if it is the next to be
  /// started: a full path.
  virtual std::string DebugFileFor(const std::string& files_path, int number) const = 0;

  /// Starts a game; `claim` is the lock of its claim file, which the game's processes get. Exactly
  /// one outcome follows.
  virtual void Start(const GameOrder& order, std::unique_ptr<LockedFile> claim) = 0;

  /// Whether it takes over games that a scheduler has (GameOrder::job).
  virtual bool AdoptsJobs() const { return false; }

  /// Takes over games that an earlier process has begun and that are still being played: they are
  /// watched and never started again. Exactly one outcome follows for each.
  virtual void Adopt(const std::vector<GameOrder>& orders) = 0;

  /// The games that have ended since the last call, in the order of their ends.
  virtual std::vector<GameOutcome> TakeEnded(TimePoint now) = 0;

  /// The games whose debug file has told nothing for half an hour, each of them once for a silence.
  virtual std::vector<GameOrder> TakeSilent(TimePoint now) = 0;

  /// When TakeEnded has something to do at the latest; nothing: only news brings that.
  virtual std::optional<TimePoint> NextLook() const = 0;
};

}  // namespace tarvendo
