#pragma once

#include <chrono>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/clock.h"
#include "publish/report_files.h"

namespace tarvendo {

struct TourneyRoom;

/// Sees to it that the report is written when it should be. Holds the tourney for no longer than a
/// copy of it takes; everything else is done on the copy. Owned by the console's composition; any
/// thread that does not hold the tourney may call it.
class Reporter {
 public:
  /// `directory` is a full path; it is there already.
  Reporter(TourneyRoom& room, const std::string& directory);

  /// Called by the runner's thread behind each pass. While games are played, and once behind the
  /// last of them, writes the report when the tourney or the games under way have changed: every
  /// ten seconds at most, and more rarely when it takes long, so that no more than a twentieth of
  /// the thread's time goes into it. Returns when to call again at the latest; nothing: not before
  /// something happens.
  std::optional<TimePoint> Pass();

  /// Called behind a script and at the end of the program: writes the report when the tourney is
  /// another one than at the start and not all of it was written yet.
  void WriteAtEnd();

 private:
  /// What tells two states of the tourney apart.
  struct State {
    std::uint64_t version = 0;
    std::vector<int> playing;
    bool operator==(const State&) const = default;
  };

  State Look(bool& is_playing);
  void Write(bool is_last);

  TourneyRoom& room_;
  std::mutex mutex_;  ///< guards what follows; taken before the tourney
  ReportFiles files_;
  std::uint64_t version_at_start_;
  std::optional<State> written_;
  bool was_last_ = false;     ///< what was written last, was for the end
  bool was_playing_ = false;  ///< since then games were played
  TimePoint next_;
};

}  // namespace tarvendo
