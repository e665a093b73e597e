#pragma once

#include <optional>
#include <string>
#include <vector>

#include "play/game_order.h"

namespace tarvendo {

class FileSystem;

// A scheduler begins a job anew when its node is lost, and the lost one may go on all the same. So
// each try to play a game has a directory of its own in the directory of the game, named after the
// job and how often that was begun before; a file beside it marks it, for directories are not
// listed:
//
//     g7.place/try-1234-0/g7.PGN, winboard.debug, g7.err
//     g7.place/try-1234-0.on

/// One try of a job.
struct JobTry {
  std::string directory;  ///< without its separator
  long long job = 0;      ///< as the scheduler counts
  int restarts = 0;

  std::string Marker() const { return directory + ".on"; }
  std::string PgnFile(const GameOrder& order) const;
  std::string DebugFile() const;
  std::string ErrorFile(const GameOrder& order) const;
};

/// The try of that job, in the directory of the order's debug file.
JobTry TryOf(const GameOrder& order, long long job, int restarts);

/// The tries whose marks lie there, from the first to the last.
std::vector<JobTry> FindTries(FileSystem& files, const GameOrder& order);

/// Makes the directory of a game's tries, and the one of the try with its mark. False when that is
/// not possible.
bool MakeTriesDirectory(FileSystem& files, const GameOrder& order);
bool MakeTry(FileSystem& files, const JobTry& job_try);

/// Puts the debug file and the error file of the last try where the order says that they lie.
void KeepFilesOfLastTry(FileSystem& files, const GameOrder& order);

/// Removes all tries.
void RemoveTries(FileSystem& files, const GameOrder& order);

}  // namespace tarvendo
