#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "platform/clock.h"
#include "play/game_host.h"
#include "runner/directory_lock.h"
#include "runner/openings_in_use.h"
#include "runner/tourney_room.h"

namespace tarvendo {

class Hindrances;

/// The FilesPath in which the runner plays: keeps other programs out of it, and finds what an
/// earlier one has left there. Used by the runner's thread, without the tourney.
class Workplace {
 public:
  Workplace(TourneyRoom& room, GameHost& host, std::optional<Openings> openings)
      : room_(room), host_(host), directory_(room.host.files), openings_(std::move(openings)) {}

  /// What has come of Enter.
  enum class Entry {
    kDone,      ///< games can be started
    kHindered,  ///< something is in the way, or the runner was stopped
    kNothing,   ///< the runner was stopped for games that a scheduler has
  };

  /// To be called before each start in that FilesPath. The first time takes its lock, sees to it
  /// that games go on with the openings that they were begun with, and hands the games that are
  /// still being played to the game host (`adopted` is raised by their number).
  Entry Enter(const std::string& files_path, Hindrances& hindrances, TimePoint now,
              std::size_t& adopted);

  /// Whether the tourney's games were looked through since the runner was switched on or a
  /// FilesPath entered.
  bool HasCollected() const { return has_collected_; }

  /// Takes over the results that lie there.
  void Collect();

  /// The runner was switched on: what lies there is to be looked through anew.
  void BeginAnew() { has_collected_ = false; }

  /// Lets other programs in.
  void Leave() { directory_.Release(); }

  OpeningsInUse& OpeningsHere() { return openings_; }
  const OpeningsInUse& OpeningsHere() const { return openings_; }

 private:
  bool TakeDirectory(const std::string& files_path, Hindrances& hindrances, TimePoint now);
  bool BeginWithOpenings(Hindrances& hindrances, TimePoint now);
  std::size_t AdoptGames();

  TourneyRoom& room_;
  GameHost& host_;
  DirectoryLock directory_;
  OpeningsInUse openings_;
  bool is_fresh_ = true;           ///< claims of an earlier process have not been looked for yet
  bool was_kept_waiting_ = false;  ///< by another program
  bool has_collected_ = false;
};

}  // namespace tarvendo
