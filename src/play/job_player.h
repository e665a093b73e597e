#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "platform/host.h"

namespace tarvendo {

/// What a scheduler tells a job about itself.
struct JobSurroundings {
  std::string name;
  long long job = 0;  ///< as the scheduler counts
  int restarts = 0;   ///< how often it was begun before
};

/// How long a job waits for what lies in a directory that is shared between machines.
struct JobPace {
  std::chrono::milliseconds late_files{60000};  ///< for the claim, and for the batch file
  std::chrono::milliseconds look{1000};         ///< between two looks
  std::chrono::milliseconds patience{0};        ///< with a silent debug file; 0 is for ever
  std::chrono::milliseconds killing{10000};     ///< for the processes of a game that was ended
};

/// The exit codes of a job.
enum class JobEnd {
  kRecorded = 0,   ///< the record has its name
  kNotPlayed = 3,  ///< the game was not begun, or is not awaited any more
  kNoRecord = 4,   ///< WinBoard has left none
};

/// What a scheduler's job does: plays the game of a claim, in a directory of its own for this try,
/// by the program's own batch reader with FilesPath as the current directory. The record gets its
/// name (gN.PGN) when WinBoard has ended, if the claim still names this job and no later try of it
/// has begun: so a half-written record, or that of a machine that was lost, never counts. Hands a
/// line to `say` (which goes to gN.out) when it has not come to that.
JobEnd PlayJob(const Host& host, const JobSurroundings& job, const std::string& claim_file,
               const JobPace& pace, const std::function<void(const std::string&)>& say);

/// The job in whose environment this process runs.
JobSurroundings JobOfEnvironment();

}  // namespace tarvendo
