#pragma once

#include <chrono>
#include <string>

#include "platform/host.h"
#include "runner/debug_watch.h"
#include "tourney/shared_tourney.h"

namespace tarvendo {

class BracketList;
class Game;
class TourneyFile;

/// Plays the spooled games one after another, a pass at a time: starts a batch file, looks whether
/// WinBoard's debug file tells the end of the game, collects the result. It never sleeps: each pass
/// tells how long to wait before the next one. Used by one thread, the runner's; a pass holds
/// the tourney for every step but the reading of the debug file.
class GameRunner {
 public:
  GameRunner(SharedTourney& shared, HeldWithTourney<TourneyFile>& file,
             HeldWithTourney<BracketList>& brackets, Host& host)
      : shared_(shared), file_(file), brackets_(brackets), host_(host) {}

  /// Does what is to be done now. Returns how long to wait until the next pass.
  std::chrono::milliseconds Pass();

  /// Whether the last pass found nothing to do: the runner is off, or on without a game to play.
  bool IsIdle() const { return is_idle_; }

 private:
  enum class Phase { kIdle, kStart, kWatch };

  /// What must be known of the game that is being played, even when the tourney has been changed
  /// meanwhile.
  struct PlayedGame {
    int number = 0;
    std::string white;
    std::string black;
    std::string files_path;
  };

  std::chrono::milliseconds StartPass();
  std::chrono::milliseconds WatchPass();

  /// Deletes the debug file of the last game. False, now and then with a message, when something
  /// holds it.
  bool FreeDebugFile(const std::string& debug_path);
  void StartGame(const Hold& hold, const Game& game);
  /// Whether WinBoard ended long ago and its debug file has nothing more to tell.
  bool HasDiedSilently();
  std::chrono::milliseconds PanicStop();
  std::chrono::milliseconds EndGame();
  void CollectPlayedGame(const Hold& hold);
  void KeepOrLeaveDebugFile(const Tourney& tourney);

  /// The record of the game that was started; null when the tourney no longer holds it.
  const Game* FindPlayedGame(const Tourney& tourney) const;

  SharedTourney& shared_;
  HeldWithTourney<TourneyFile>& file_;
  HeldWithTourney<BracketList>& brackets_;
  Host& host_;
  Phase phase_ = Phase::kIdle;
  DebugWatch watch_;
  PlayedGame played_;
  int busy_counter_ = 0;  ///< tries until the message about a held debug file comes again
  bool has_waited_for_pgn_ = false;
  int silent_passes_ = 0;  ///< passes since WinBoard has ended without telling of the game's end
  bool is_idle_ = false;
};

}  // namespace tarvendo
