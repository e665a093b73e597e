#pragma once

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <mutex>
#include <vector>

#include "platform/clock.h"
#include "platform/files.h"
#include "play/claim.h"
#include "quick_processes.h"

namespace tarvendo {

/// The clock of a tourney that is over in a second. The time of day stands still unless a test lets
/// it run; a wait ends when no batch file that was started is running any more and no claim in the
/// current directory is held by a game of an earlier start, so that what the
/// program does next never depends on how fast the machine is. May be used from any thread.
class QuickClock : public Clock {
 public:
  QuickClock(QuickProcesses& processes, FileSystem& files) : processes_(processes), files_(files) {}

  /// 2001-09-25 12:00:00 UTC, always; while the file stub_clock_runs lies in the current directory,
  /// 20 seconds later at each look.
  std::int64_t Now() override {
    std::error_code error;
    if (std::filesystem::exists(kRunsFile, error)) now_ += 20;
    return now_;
  }

  /// What a wait spares jumps over, so that a deadline has come when the wait for it has ended. The
  /// time that really passes counts for little: a machine that needs ten seconds to start a program
  /// is slow, and no program has died.
  TimePoint Steady() override {
    const auto passed = std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now() - start_);
    return TimePoint(passed / kSlowness + std::chrono::milliseconds(spared_));
  }

  bool Wait(std::condition_variable& wake, std::unique_lock<std::mutex>& held,
            std::chrono::milliseconds span, const std::function<bool()>& done) override {
    if (span == std::chrono::milliseconds::max()) {
      wake.wait(held, done);
      return true;
    }
    const TimePoint end = Steady() + span;
    do {
      if (wake.wait_for(held, IsForLockedFile(span) ? kLongBeat : kBeat, done)) return true;
    } while (!GameAsksForLook() && IsAnythingPlayed() && Steady() < end);
    SkipTo(end);
    return done();
  }

 private:
  static constexpr std::chrono::milliseconds kBeat{2};
  /// A script must have the time to take a held debug file away before the runner speaks of it
  /// again.
  static constexpr std::chrono::milliseconds kLockedFileWait{3000};
  static constexpr std::chrono::milliseconds kLongBeat{200};
  static constexpr std::chrono::milliseconds kLook{2000};
  static constexpr int kSlowness = 8;  ///< real seconds that count as one
  static constexpr const char* kPauseFile = "stub_pause";
  static constexpr const char* kRunsFile = "stub_clock_runs";

  /// The runner computes its waits from deadlines, so some of the three seconds may be over.
  static bool IsForLockedFile(std::chrono::milliseconds span) {
    return span > kLook && span <= kLockedFileWait;
  }

  void SkipTo(TimePoint end) {
    const TimePoint now = Steady();
    if (now < end) spared_ += (end - now).count();
  }

  bool IsAnythingPlayed() {
    if (processes_.IsAnyRunning()) return true;
    const std::vector<FoundClaim> claims = FindClaims(files_, "");
    return std::any_of(claims.begin(), claims.end(),
                       [](const FoundClaim& claim) { return claim.is_held; });
  }

  /// Whether the stand-in for WinBoard wants the runner to look at its files in the middle of the
  /// game. The first wait that sees this ends; the next one tells the stand-in that the look is
  /// over.
  static bool GameAsksForLook() {
    static thread_local bool has_looked = false;
    std::error_code error;
    if (!std::filesystem::exists(kPauseFile, error)) return false;
    has_looked = !has_looked;
    if (!has_looked) std::filesystem::remove(kPauseFile, error);
    return has_looked;
  }

  const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
  QuickProcesses& processes_;
  FileSystem& files_;
  std::atomic<std::int64_t> now_{1001419200};
  std::atomic<std::int64_t> spared_{0};  ///< milliseconds that waits did not take
};

}  // namespace tarvendo
