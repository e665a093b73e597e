#include "runner/reporter.h"

#include <algorithm>

#include "platform/files.h"
#include "runner/tourney_room.h"

namespace tarvendo {
namespace {

constexpr std::chrono::milliseconds kBetweenReports{10000};

/// A report that takes long is written so rarely that it takes one part of so many of the time.
constexpr int kShareOfTime = 20;

}  // namespace

Reporter::Reporter(TourneyRoom& room, const std::string& directory)
    : room_(room),
      files_(room.host.files, directory),
      version_at_start_(room.shared.Take()->Version()) {}

Reporter::State Reporter::Look(bool& is_playing) {
  const Hold hold = room_.shared.Take();
  State state;
  state.version = hold->Version();
  for (const GameOrder& order : room_.running.With(hold).Orders())
    state.playing.push_back(order.number);
  is_playing = hold->Switch().IsRunning() || !state.playing.empty();
  return state;
}

std::optional<TimePoint> Reporter::Pass() {
  const std::lock_guard guard(mutex_);
  bool is_playing = false;
  const State state = Look(is_playing);
  was_playing_ = was_playing_ || is_playing;
  if (!was_playing_ || state == written_) return std::nullopt;
  if (room_.host.clock.Steady() < next_) return next_;
  Write(false);
  was_playing_ = is_playing;
  return std::nullopt;
}

void Reporter::WriteAtEnd() {
  const std::lock_guard guard(mutex_);
  bool is_playing = false;
  const State state = Look(is_playing);
  if (state.version == version_at_start_ || (was_last_ && state == written_)) return;
  Write(true);
}

void Reporter::Write(bool is_last) {
  const TimePoint begin = room_.host.clock.Steady();
  Tourney tourney;
  State state;
  ReportMoment moment;
  moment.is_last = is_last;
  moment.changed_at = room_.host.clock.Now();
  {
    const Hold hold = room_.shared.Take();
    tourney = *hold;
    moment.pgn_path = room_.host.files.FullPath(hold->Settings().pgn_file);
    for (const GameOrder& order : room_.running.With(hold).Orders())
      moment.playing.push_back(order.number);
    state = {hold->Version(), moment.playing};
  }
  files_.Write(tourney, moment);
  written_ = std::move(state);
  was_last_ = is_last;
  const TimePoint end = room_.host.clock.Steady();
  next_ = end + std::max<std::chrono::milliseconds>(kBetweenReports, (end - begin) * kShareOfTime);
}

}  // namespace tarvendo
