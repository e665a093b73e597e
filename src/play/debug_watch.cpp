#include "play/debug_watch.h"

#include <utility>

#include "base/line_reader.h"
#include "base/text.h"
#include "platform/files.h"

namespace tarvendo {
namespace {

constexpr int kHeaderLines = 5;
constexpr const char* kBoardSetUp = "gameends(0,";

constexpr std::size_t kPart = std::size_t{1} << 20U;  ///< bytes read at a time
constexpr int kMostParts = 256;                       ///< in one look

/// What a piece shows: nothing behind a NUL byte.
std::string_view Visible(const std::string& piece) {
  return std::string_view(piece).substr(0, piece.find('\0'));
}

bool EndsGame(std::string_view line) {
  return BeginsWithNoCase(line, "gameends") && !BeginsWithNoCase(line, kBoardSetUp);
}

/// Whether more bytes could still turn the line, which is being written at this moment, into one
/// that ends no game.
bool CouldSetUpBoard(std::string_view line) {
  return BeginsWithNoCase(kBoardSetUp, line);
}

}  // namespace

void DebugWatch::Begin(std::string path) {
  *this = DebugWatch();
  path_ = std::move(path);
  header_left_ = kHeaderLines;
}

DebugNews DebugWatch::Look(FileSystem& files) {
  for (int i = 0; i < kMostParts; ++i) {
    const auto added = files.ReadPart(path_, position_, kPart);
    if (!added) return DebugNews::kNoFile;
    position_ += added->size();
    Take(*added);
    if (is_over_ || added->size() < kPart) break;
  }
  if (!is_over_) JudgeUnfinishedLine();
  // Only what was there at the first look can be a header.
  if (position_ > 0) header_left_ = 0;
  return is_over_ ? DebugNews::kGameOver : DebugNews::kStillOpen;
}

void DebugWatch::Take(std::string_view bytes) {
  while (!bytes.empty() && !is_over_) {
    const std::string_view room = bytes.substr(0, kRecordLine - piece_.size());
    const std::size_t feed = room.find('\n');
    const bool ends_line = feed != std::string_view::npos;
    const std::size_t length = ends_line ? feed + 1 : room.size();
    piece_ += room.substr(0, length);
    bytes.remove_prefix(length);
    if (ends_line || piece_.size() == kRecordLine) EndPiece(ends_line);
  }
}

void DebugWatch::EndPiece(bool ends_line) {
  if (header_left_ > 0) {
    --header_left_;
  } else if (is_first_piece_ && EndsGame(Visible(piece_))) {
    is_over_ = true;
  }
  is_first_piece_ = ends_line;
  piece_.clear();
}

/// A line that is not whole yet is looked at again, unless it has stopped growing.
void DebugWatch::JudgeUnfinishedLine() {
  const std::string_view line = Visible(piece_);
  const bool is_growing = line != unfinished_;
  if (header_left_ == 0 && is_first_piece_ && EndsGame(line)) {
    is_over_ = !(is_growing && CouldSetUpBoard(line));
  }
  unfinished_ = line;
}

}  // namespace tarvendo
