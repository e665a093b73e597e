#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "publish/pgn_records.h"

namespace tarvendo {

class FileSystem;
class Tourney;
struct Report;

/// How a tourney stood at a moment, for its report.
struct ReportMoment {
  std::vector<int> playing;     ///< the numbers of the games under way
  std::int64_t changed_at = 0;  ///< seconds since 1970
  std::string pgn_path;         ///< the tourney's PGN file, its full path
  bool is_last = false;         ///< nothing more is expected to come soon
};

/// Makes a directory with those above it. False when that is not possible, or when something else
/// has that name.
bool MakeReportDirectory(FileSystem& files, const std::string& path);

/// The files of the report in one directory: index.html, standings.csv, games.csv, tourney.json and
/// games.pgn. Remembers what it has read of the tourney's PGN file. Used by one thread at a time.
class ReportFiles {
 public:
  /// `directory` is a full path without a separator at its end.
  ReportFiles(FileSystem& files, std::string directory);

  /// Writes each file, whole or not at all. games.pgn comes with the last moment; before that it is
  /// written as long as that is quickly done, and then whenever there is a quarter more of it. A
  /// file that cannot be written is told on standard error, once until one could be. Does not need
  /// the tourney itself: give it a copy. False when a file could not be written.
  bool Write(const Tourney& tourney, const ReportMoment& moment);

 private:
  bool Save(const char* name, const std::string& text);
  void WriteGames(const Report& report, bool is_last);

  FileSystem& files_;
  std::string directory_;
  PgnRecords records_;
  std::uint64_t pgn_until_ = 0;  ///< how far games.pgn goes in the tourney's PGN file
  std::string failed_;           ///< the file that could not be written, in this writing
  bool has_told_ = false;        ///< of a failure, and none was written since
};

}  // namespace tarvendo
