#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/files.h"

namespace tarvendo {

/// A file of openings, PGN or EPD, from whose lines the games of a tourney start: a line is a game
/// of a PGN file or a position of an EPD file. WinBoard itself reads the file and plays the moves;
/// this knows how many lines there are and where.
class Openings {
 public:
  /// Reads the file with that full path. Nothing, and why in `error` (a line without its line
  /// feed), when it cannot be read, is neither PGN nor EPD, or has no line.
  static std::optional<Openings> Read(FileSystem& files, const std::string& path,
                                      std::string& error);

  const std::string& Path() const { return path_; }

  /// What tells its content from that of another file: 16 hexadecimal digits.
  const std::string& Checksum() const { return checksum_; }

  std::size_t Lines() const { return lines_; }

  /// The words for WinBoard with which a game starts from the line `place` (counted from 0, and
  /// begun anew behind the last one), a blank behind them: `/lgf="/home/me/book.pgn" /lgi=3 `.
  std::string WordsFor(std::size_t place) const;

  /// Whether the file still holds what was read. One that looks from outside as it did is not read
  /// again.
  bool IsAsItWas(FileSystem& files);

 private:
  /// Finds the lines; why there are none, or empty.
  std::string FindLines(const std::string& text);
  std::string FindPositions(const std::string& text);

  std::string path_;
  std::string checksum_;
  std::size_t lines_ = 0;
  std::vector<std::size_t> positions_;  ///< of an EPD file: the lines (1-based) of its positions
  std::optional<FileStamp> stamp_;
};

}  // namespace tarvendo
