#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "platform/doorbell.h"
#include "platform/events.h"
#include "play/game_host.h"
#include "play/pace.h"
#include "play/slurm.h"
#include "runner/play_loop.h"

namespace tarvendo {

class Reporter;
struct TourneyRoom;

/// How the runner plays.
struct RunnerOptions {
  int places = 1;  ///< games at a time
  Pace game;
  PlayPace play;
  Reporter* reporter = nullptr;       ///< is called behind each pass; null: no report is written
  std::optional<Openings> openings;   ///< from which the games start
  std::optional<SlurmOptions> slurm;  ///< nothing: on this machine
};

/// Many games at a time, without waits between them; `places` is at least 1.
RunnerOptions ManyGames(int places);

/// The thread that works without the user: it plays the games and switches the runner on and off at
/// the set times (PlayLoop). It sleeps until something happens or a deadline comes. Owned by the
/// console's composition, behind the tourney. A fault in it breaks the tourney and asks the console
/// thread to save and end.
class Runner {
 public:
  Runner(TourneyRoom& room, const RunnerOptions& options);

  /// Tells the thread to end, wakes it and waits for it. Games that are being played go on by
  /// themselves.
  ~Runner();
  Runner(const Runner&) = delete;
  Runner& operator=(const Runner&) = delete;

  /// Starts the thread. False when the system gives none.
  bool StartThread();

  /// Waits until a pass that began after this call has found nothing to do and no start time is
  /// set, or the thread has died, or the process is asked to end. Called on the console thread
  /// without the tourney. `look`, when there is one, is called before and whenever the span of real
  /// time has passed that its last call gave.
  void AwaitIdle(const std::function<std::chrono::milliseconds()>& look = {});

  /// The thread's games as they were when its last pass ended.
  struct Counts {
    std::size_t under_way = 0;  ///< started or adopted, and not yet judged
    std::size_t judged = 0;     ///< since the program's start
  };

  /// Any thread; it works with a tourney that is broken, too.
  Counts CountGames();

  /// Why the runner plays no game and the program has to end (PlayLoop::Refusal), a line without
  /// its line feed; empty when there is no such reason. Any thread.
  std::string Refusal();

  /// Whether the thread has ended in a fault, or was never started. Any thread.
  bool HasDied();

 private:
  void RunPasses();
  void NoteWhatIsUnderWay(std::uint64_t pass);
  bool IsDone(std::uint64_t asked);

  TourneyRoom& room_;
  EventQueue events_;
  std::unique_ptr<Doorbell> bell_;
  std::unique_ptr<GameHost> host_;
  PlayLoop loop_;  ///< the thread's own, as the next one
  Reporter* reporter_;
  std::mutex mutex_;       ///< guards what follows
  bool has_died_ = false;  ///< the thread has ended before its time, or could not be started
  std::uint64_t passes_begun_ = 0;
  std::uint64_t idle_pass_ = 0;     ///< the last pass that found nothing to do, by its number
  std::uint64_t idle_changes_ = 0;  ///< how often the switch had been moved when that pass looked
  Counts counts_;
  std::string refusal_;
  std::thread thread_;
};

}  // namespace tarvendo
