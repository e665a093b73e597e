#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>

#include "platform/files.h"
#include "publish/pgn_facts.h"

namespace tarvendo {

/// Which game of a tourney is meant: names as they stand in the record, bytes as they are.
struct PgnKey {
  int number = 0;
  std::string white;
  std::string black;

  std::string Text() const { return std::to_string(number) + "\n" + white + "\n" + black; }
};

/// What the records of a tourney's PGN file tell, kept from one look to the next: a look reads what
/// has been added since the last one. A file that is shorter now, another one, or holds something
/// else where the last look ended, is read anew. Used by one thread at a time.
class PgnRecords {
 public:
  /// Of one record: what it tells, and where it lies.
  struct Record {
    PgnFacts facts;
    std::uint64_t offset = 0;  ///< bytes
    std::uint64_t size = 0;
  };

  explicit PgnRecords(FileSystem& files) : files_(files) {}

  /// Looks at the file with that full path. One that is not there has no records.
  void Look(const std::string& path);

  /// The record of that game, the last one of several; null when there is none.
  const Record* Find(const PgnKey& key) const;

  /// The file that was looked at.
  const std::string& Path() const { return path_; }

 private:
  void Forget();
  bool IsAsItWas(const FileStamp& stamp);
  void ReadOn();
  void Note(std::string_view game, std::uint64_t offset);

  FileSystem& files_;
  std::string path_;
  std::optional<FileStamp> stamp_;  ///< of the file when it was read
  std::uint64_t next_ = 0;          ///< where the last game begins, which is read again
  std::string before_next_;         ///< the bytes before that
  std::unordered_map<std::string, Record> records_;
};

}  // namespace tarvendo
