#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarvendo {

class FileSystem;

/// What a look into WinBoard's debug file has shown.
enum class DebugNews {
  kNoFile,     ///< it cannot be opened
  kStillOpen,  ///< no line in it ends the game yet
  kGameOver,   ///< a line that begins with "gameends" ends the game
};

/// Watches the debug file of one game. WinBoard writes a line such as "GameEnds(27, Black mates,
/// 6)" when the game is over. It also writes "GameEnds(0, (null), 2)" when it sets up the board,
/// and "GameEnds(28, , 3)" when it loads the game that is to be played on from a file: neither ends
/// the game. Only what has been added since the last look is read, in parts, and nothing of it is
/// kept but the first 255 bytes of the line that is not whole yet, however long the file and its
/// lines are. The first five lines (those that are longer count as several) are WinBoard's header.
/// Used by one thread.
class DebugWatch {
 public:
  /// Watches `path` from its start.
  void Begin(std::string path);

  /// Reads what is new, up to a quarter of a gigabyte: the rest comes with the next look.
  DebugNews Look(FileSystem& files);

  const std::string& Path() const { return path_; }

  /// How many bytes of the file the last look that could read it has seen.
  std::uint64_t Seen() const { return position_; }

 private:
  void Take(std::string_view bytes);
  void EndPiece(bool ends_line);
  void BeginLine();
  void JudgeUnfinishedLine(bool has_grown);

  std::string path_;
  std::uint64_t position_ = 0;  ///< bytes read so far
  int header_left_ = 0;         ///< pieces of the header that are still to come
  std::string piece_;           ///< the piece of a line that is being read
  bool is_first_piece_ = true;  ///< it begins its line
  bool may_end_game_ = false;   ///< the line began as one that ends the game
  std::string line_end_;        ///< its last bytes so far, without the piece that is being read
  bool is_over_ = false;
};

}  // namespace tarvendo
