#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tarvendo {

/// The most characters, the line feed included, that one read takes from each kind of text.
inline constexpr std::size_t kConsoleLine = 254;  ///< the console and the help file
inline constexpr std::size_t kRecordLine = 255;   ///< tourney, player and PGN files, winboard.debug
inline constexpr std::size_t kLongLine = 510;  ///< WinBoard's configuration, captured shell output

/// Reads a text piece by piece as the C library's fgets does with a buffer of a fixed size: a piece
/// ends behind a line feed, at the size or at the end of the text; a longer line comes in several
/// pieces; what stands behind a NUL byte in a piece is not seen.
class LineReader {
 public:
  /// Keeps a copy of nothing: `text` must outlive the reader.
  explicit LineReader(std::string_view text) : text_(text) {}

  /// The next piece of at most `size` characters, with its line feed; nothing when the text is used
  /// up.
  std::optional<std::string> Read(std::size_t size);

  /// Whether a read has met the end of the text: it found nothing, or a last line without line
  /// feed.
  bool AtEnd() const { return at_end_; }

  /// Whether what the last read gave is the first piece of its line.
  bool IsFirstPiece() const { return is_first_piece_; }

  /// How many bytes have been read.
  std::size_t Position() const { return position_; }

  /// Takes one byte, as the help pager does; -1 at the end.
  int ReadByte();

 private:
  std::string_view text_;
  std::size_t position_ = 0;
  bool at_end_ = false;
  bool is_first_piece_ = true;
};

/// `line` without its line feed, when it ends in one.
std::string WithoutLineFeed(std::string line);

}  // namespace tarvendo
