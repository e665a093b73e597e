#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <thread>

#include "runner/game_runner.h"
#include "runner/runner_timer.h"

namespace tarvendo {

class BracketList;
class TourneyFile;

/// The two threads that work without the user: one plays the games (GameRunner), one switches the
/// runner on and off at the set times (RunnerTimer). Owned by the console's composition, behind the
/// tourney. A fault in one of them breaks the tourney (shared_tourney.h) and asks the console
/// thread to save and end.
class Runner {
 public:
  Runner(SharedTourney& shared, HeldWithTourney<TourneyFile>& file,
         HeldWithTourney<BracketList>& brackets, Host& host);

  /// Tells both threads to end, wakes them and waits for them. A game that is being played goes on
  /// by itself.
  ~Runner();
  Runner(const Runner&) = delete;
  Runner& operator=(const Runner&) = delete;

  /// Starts both threads. False when the system gives none.
  bool StartThreads();

  /// Waits until a pass that began after this call has found nothing to do and no start time is
  /// set, or a thread has died. Called on the console thread without a hold of the tourney.
  void AwaitIdle();

 private:
  /// Calls `pass` again and again, each time after the wait that it asks for, until the end.
  void RunPasses(const std::function<std::chrono::milliseconds()>& pass);
  std::chrono::milliseconds PlayPass();

  SharedTourney& shared_;
  Host& host_;
  GameRunner games_;
  RunnerTimer timer_;
  std::mutex mutex_;  ///< guards what follows
  std::condition_variable changed_;
  bool terminate_ = false;
  bool has_died_ = false;  ///< a thread has ended before its time, or could not be started
  std::uint64_t passes_begun_ = 0;
  std::uint64_t idle_pass_ = 0;     ///< the last pass that found nothing to do, by its number
  std::uint64_t idle_changes_ = 0;  ///< how often the switch had been moved when that pass began
  std::thread game_thread_;
  std::thread timer_thread_;
};

}  // namespace tarvendo
