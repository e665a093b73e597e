#pragma once

#include <string>
#include <utility>
#include <vector>

namespace tarvendo {

/// The lines that a user has typed, kept from one start to the next: a text, one a line, the latest
/// last. Only its owner can read it. Several programs may add to one.
class HistoryFile {
 public:
  /// An empty name is no file: nothing is kept.
  explicit HistoryFile(std::string host_path) : path_(std::move(host_path)) {}

  /// The latest lines, at most 1000. None when the file is missing or cannot be read. Lines of more
  /// than 4095 bytes are left out. A file of more than 2000 lines is cut to what is given back.
  std::vector<std::string> Load();

  /// Adds a line, which has no line feed, unless it is the one that was added or loaded last. Makes
  /// the file, and its directory, when they are missing. A line that cannot be written is lost.
  void Add(const std::string& line);

 private:
  std::string path_;
  std::string last_;
};

}  // namespace tarvendo
