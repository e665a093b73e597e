#include "play/debug_watch.h"

#include <algorithm>
#include <utility>

#include "base/line_reader.h"
#include "base/text.h"
#include "platform/files.h"

namespace tarvendo {
namespace {

constexpr int kHeaderLines = 5;
constexpr const char* kBoardSetUp = "gameends(0,";

/// How a line ends that tells the end of a game read from a file. The 3 stands for the file; other
/// lines have 2 for the user, 5 and 6 for the engines, and so on.
constexpr std::string_view kFromFile = ", 3)";

constexpr std::size_t kPart = std::size_t{1} << 20U;  ///< bytes read at a time
constexpr int kMostParts = 256;                       ///< in one look

/// What a piece shows: nothing behind a NUL byte.
std::string_view Visible(const std::string& piece) {
  return std::string_view(piece).substr(0, piece.find('\0'));
}

bool MayEndGame(std::string_view line) {
  return BeginsWithNoCase(line, "gameends") && !BeginsWithNoCase(line, kBoardSetUp);
}

/// The last bytes of a text that may have a line end behind it, as many as are needed to know
/// whether the line comes from a file.
std::string LastBytes(std::string text) {
  while (text.ends_with('\n') || text.ends_with('\r'))
    text.pop_back();
  return text.substr(text.size() - std::min(text.size(), kFromFile.size()));
}

}  // namespace

void DebugWatch::Begin(std::string path) {
  *this = DebugWatch();
  path_ = std::move(path);
  header_left_ = kHeaderLines;
}

DebugNews DebugWatch::Look(FileSystem& files) {
  const std::uint64_t seen_before = position_;
  for (int i = 0; i < kMostParts; ++i) {
    const auto added = files.ReadPart(path_, position_, kPart);
    if (!added) return DebugNews::kNoFile;
    position_ += added->size();
    Take(*added);
    if (is_over_ || added->size() < kPart) break;
  }
  if (!is_over_) JudgeUnfinishedLine(position_ != seen_before);
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
  } else {
    if (is_first_piece_) BeginLine();
    line_end_ = LastBytes(line_end_ + piece_);
    if (ends_line && may_end_game_ && line_end_ != kFromFile) is_over_ = true;
  }
  is_first_piece_ = ends_line;
  if (ends_line) may_end_game_ = false;
  piece_.clear();
}

void DebugWatch::BeginLine() {
  may_end_game_ = MayEndGame(Visible(piece_));
  line_end_.clear();
}

/// A line that is not whole yet is looked at again, unless it has stopped growing.
void DebugWatch::JudgeUnfinishedLine(bool has_grown) {
  if (has_grown || header_left_ > 0) return;
  if (is_first_piece_) BeginLine();
  is_over_ = may_end_game_ && LastBytes(line_end_ + piece_) != kFromFile;
}

}  // namespace tarvendo
