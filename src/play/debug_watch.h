#pragma once

#include <cstdint>
#include <string>

namespace tarvendo {

class FileSystem;

/// What a look into WinBoard's debug file has shown.
enum class DebugNews {
  kNoFile,     ///< it cannot be opened
  kStillOpen,  ///< no line in it ends the game yet
  kGameOver,   ///< a line that begins with "gameends" ends the game
};

/// Watches the debug file of one game. WinBoard writes a line such as "GameEnds(27, Black mates,
/// 6)" when the game is over, and "GameEnds(0, (null), 2)" when it sets up the board, which ends no
/// game. Only what has been added since the last look is read. The first five lines are WinBoard's
/// header. Used by one thread.
class DebugWatch {
 public:
  /// Watches `path` from its start.
  void Begin(std::string path);

  /// Reads what is new. After kGameOver the next look finds the same line again.
  DebugNews Look(FileSystem& files);

  const std::string& Path() const { return path_; }

  /// How many bytes of the file the last look that could read it has seen.
  std::uint64_t Seen() const { return seen_; }

 private:
  DebugNews Examine(const std::string& added);

  std::string path_;
  std::uint64_t position_ = 0;  ///< bytes read so far
  std::uint64_t seen_ = 0;      ///< bytes that were there at the last look
  std::string unfinished_;      ///< the line without line feed that the last look left at the end
};

}  // namespace tarvendo
