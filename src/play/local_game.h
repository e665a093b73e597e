#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>

#include "platform/clock.h"
#include "platform/file_watch.h"
#include "platform/files.h"
#include "platform/host.h"
#include "platform/processes.h"
#include "play/debug_watch.h"
#include "play/game_outcome.h"
#include "play/pace.h"

namespace tarvendo {

/// One game on this machine: it is started (or was, by an earlier process of the program), its
/// debug file tells the end, its record is awaited, and it is over. Never sleeps and prints
/// nothing. Owned by LocalHost and used by its thread.
class LocalGame {
 public:
  /// A game that is about to be started. `on_news` is called when its files change, on any thread.
  LocalGame(const Host& host, const Pace& pace, GameOrder order, std::function<void()> on_news);

  /// Starts the order's batch file, whose processes get the lock of the claim.
  void Start(TimePoint now, std::unique_ptr<LockedFile> claim);

  /// Takes the game over from an earlier process: it is being played, and its claim is held.
  void Adopt(TimePoint now);

  /// Does what is to be done now, and says whether the game is over.
  bool Step(TimePoint now);

  /// When Step has something to do at the latest, unless WinBoard's process ends before.
  TimePoint NextStep() const;

  /// What has become of it; only when it is over.
  GameOutcome TakeOutcome();

  /// Whether its debug file has been silent for so long that somebody should know; true once for
  /// each silence.
  bool TakeSilence(TimePoint now);

  /// Whether an earlier process of the program has begun it.
  bool IsAdopted() const { return is_adopted_; }

  /// The batch file that was started for it, while its process runs.
  std::optional<BatchId> RunningBatch() const;

  const GameOrder& Order() const { return order_; }

 private:
  enum class Phase { kNoSignYet, kWatched, kRecordAwaited, kBeingEnded, kOver };

  void Begin(TimePoint now);
  /// Whether WinBoard's own process has ended (of an adopted game: all of them), and no step has
  /// seen it yet.
  bool HasJustEnded() const { return !ended_at_ && !IsProcessRunning(); }
  bool IsProcessRunning() const;
  void KeepClaim();
  void StepWatching(TimePoint now);
  bool HasSaidItsLastWord(TimePoint now) const;
  void EndProcesses(TimePoint now);
  void BeginToAwaitRecord(TimePoint now);
  void StepAtEnd(TimePoint now);
  void GiveUp();
  void Finish(GameEnd end);
  void PlanNextStep(TimePoint now);
  std::optional<std::string> Record() const;

  Host host_;
  Pace pace_;
  GameOrder order_;
  std::function<void()> on_news_;
  Phase phase_ = Phase::kNoSignYet;
  DebugWatch watch_;
  std::unique_ptr<FileWatch> notices_;
  std::optional<BatchId> batch_;             ///< nothing for an adopted game
  std::unique_ptr<LockedFile> spare_claim_;  ///< made anew for a claim that somebody has deleted
  std::atomic<bool> has_news_ = false;
  TimePoint started_;
  TimePoint grown_;  ///< when the debug file was last seen to have grown
  TimePoint looked_;
  std::optional<TimePoint> ended_at_;  ///< when the end of WinBoard's process was seen
  TimePoint deadline_;                 ///< of the record that is awaited, or of the killing
  TimePoint next_step_;
  std::string record_;  ///< as it was at the last step
  bool was_started_ = true;
  bool is_adopted_ = false;
  bool is_silence_told_ = false;
  GameEnd end_ = GameEnd::kEnded;
};

}  // namespace tarvendo
