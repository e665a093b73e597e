#include "play/debug_watch.h"

#include "base/line_reader.h"
#include "base/text.h"
#include "platform/files.h"

namespace tarvendo {
namespace {

constexpr int kHeaderLines = 5;
constexpr const char* kBoardSetUp = "gameends(0,";

bool EndsGame(const std::string& line) {
  return BeginsWithNoCase(line, "gameends") && !BeginsWithNoCase(line, kBoardSetUp);
}

/// Whether more bytes could still turn the line, which is being written at this moment, into one
/// that ends no game.
bool CouldSetUpBoard(const std::string& line) {
  return BeginsWithNoCase(kBoardSetUp, line);
}

}  // namespace

void DebugWatch::Begin(std::string path) {
  path_ = std::move(path);
  position_ = 0;
  seen_ = 0;
  unfinished_.clear();
}

DebugNews DebugWatch::Look(FileSystem& files) {
  const auto added = files.ReadFrom(path_, position_);
  if (!added) return DebugNews::kNoFile;
  seen_ = position_ + added->size();
  return Examine(*added);
}

DebugNews DebugWatch::Examine(const std::string& added) {
  LineReader lines(added);
  for (int i = 0; position_ == 0 && i < kHeaderLines; ++i)
    lines.Read(kRecordLine);
  std::size_t start = lines.Position();
  while (const auto line = lines.Read(kRecordLine)) {
    // A line that is not whole yet is looked at again, unless it has stopped growing.
    const bool is_growing = lines.AtEnd() && *line != unfinished_;
    if (EndsGame(*line) && !(is_growing && CouldSetUpBoard(*line))) {
      position_ += start;
      return DebugNews::kGameOver;
    }
    if (lines.AtEnd()) {
      unfinished_ = *line;
      break;
    }
    start = lines.Position();
  }
  position_ += start;
  return DebugNews::kStillOpen;
}

}  // namespace tarvendo
