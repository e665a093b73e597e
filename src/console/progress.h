#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include "platform/clock.h"

namespace tarvendo {

class Tourney;

/// How far a tourney is, at one moment.
struct RunCounts {
  std::size_t played = 0;   ///< games that are READY
  std::size_t all = 0;      ///< with those of the rounds that a Swiss tourney still has to pair
  std::size_t playing = 0;  ///< games under way
  std::size_t without_result = 0;  ///< of the played ones
  int round = 0;  ///< the first one with a game that is not played, or the last one
  int rounds = 0;
  std::size_t ended_here = 0;  ///< games that this program has played to their end
};

/// The counts but `playing` and `ended_here`, which the tourney does not know. A Swiss tourney
/// counts the games of rounds without games when AutoRun is on, which pairs them.
RunCounts CountRun(const Tourney& tourney);

/// What --progress tells of a run, from its beginning to its end. The rate is that of the games
/// that have ended since the beginning, and the time left is what the games that are left take at
/// that rate; both are told from the first such game on.
class Progress {
 public:
  /// The run begins at `begin`, when the program has already played `ended_here` games.
  Progress(TimePoint begin, std::size_t ended_here) : begin_(begin), ended_here_(ended_here) {}

  /// "12/66 played, 4 playing, 1 without result, round 3/11, 41.2/h, 1 h 18 min left": one line,
  /// without a line feed.
  std::string Line(const RunCounts& counts, TimePoint now) const;

  /// The same for the run that has ended: "66/66 played, 1 without result, in 1 h 36 min, 41.2/h".
  std::string LastLine(const RunCounts& counts, TimePoint now) const;

 private:
  /// Games an hour; 0 when none has ended yet.
  double Rate(const RunCounts& counts, TimePoint now) const;

  TimePoint begin_;
  std::size_t ended_here_;
};

/// "2 d 4 h", "1 h 18 min", "25 min", "5 min 3 s", "45 s": rounded to what is told last.
std::string SpanText(std::chrono::milliseconds span);

}  // namespace tarvendo
