#include "runner/openings.h"

#include <algorithm>
#include <cstdint>

#include "base/bounded_read.h"
#include "base/line_reader.h"
#include "base/text.h"
#include "runner/pgn_count.h"

namespace tarvendo {
namespace {

constexpr std::size_t kLimit = kPlayerFileLimit;

/// WinBoard reads lines of an EPD file with room for 511 bytes, and counts the rest as another one.
constexpr std::size_t kLongestPosition = 500;

/// FNV-1a (G. Fowler, L. C. Noll, K.-P. Vo): it has to tell files apart, not to withstand anybody.
std::string ChecksumOf(const std::string& text) {
  std::uint64_t sum = 14695981039346656037U;
  for (const char c : text) {
    sum ^= static_cast<unsigned char>(c);
    sum *= 1099511628211U;
  }
  return Format("%016llx", static_cast<unsigned long long>(sum));
}

/// Whether a line of an EPD file, or of a file of FEN, holds a position: the board, the side to
/// move and more. What stands behind is left to WinBoard.
bool IsPosition(const std::string& line) {
  constexpr std::string_view kBoard =
      "/+~*0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  const std::vector<std::string> words = SplitAtWhiteSpace(line);
  return words.size() >= 2 && line.starts_with(words[0]) &&
         words[0].find('/') != std::string::npos &&
         words[0].find_first_not_of(kBoard) == std::string::npos &&
         (words[1] == "w" || words[1] == "b");
}

std::string FirstLineOf(const std::string& text) {
  return text.substr(0, text.find('\n'));
}

bool IsBlank(const std::string& text) {
  return text.find_first_not_of(" \t\r\n") == std::string::npos;
}

}  // namespace

std::optional<Openings> Openings::Read(FileSystem& files, const std::string& path,
                                       std::string& error) {
  const std::string name = "The openings file '" + path + "' ";
  if (path.find_first_of("\"\n") != std::string::npos) {
    error = name + "has a name that WinBoard cannot be told.";
    return std::nullopt;
  }
  Openings openings;
  openings.path_ = path;
  openings.stamp_ = files.Stamp(path);
  const BoundedText read = ReadUpTo(files, path, kLimit);
  if (read.is_too_long) {
    error = WithoutLineFeed(TooLongMessage(path, kLimit));
  } else if (!read.text) {
    error = name + "cannot be read.";
  } else if (IsBlank(*read.text)) {
    error = name + "is empty.";
  } else {
    const std::string why = openings.FindLines(*read.text);
    if (!why.empty()) error = name + why;
  }
  if (!error.empty()) return std::nullopt;
  openings.checksum_ = ChecksumOf(*read.text);
  return openings;
}

std::string Openings::FindLines(const std::string& text) {
  if (IsPosition(FirstLineOf(text))) return FindPositions(text);
  const PgnCount count = CountPgnGames(text);
  if (count.bad_line != 0) {
    return Format("is neither PGN nor EPD: line %d has %s.", count.bad_line, count.why.c_str());
  }
  lines_ = count.games;
  return lines_ == 0 ? "has no game." : "";
}

std::string Openings::FindPositions(const std::string& text) {
  std::size_t begin = 0;
  for (std::size_t number = 1; begin < text.size(); ++number) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    const std::string line = text.substr(begin, end - begin);
    begin = end + 1;
    if (IsBlank(line)) continue;
    const std::string place = "is no EPD: line " + std::to_string(number) + " has ";
    if (line.size() > kLongestPosition) return place + "more than 500 bytes.";
    if (!IsPosition(line)) return place + "no position.";
    positions_.push_back(number);
  }
  lines_ = positions_.size();
  return "";
}

std::string Openings::WordsFor(std::size_t place) const {
  const std::size_t line = place % lines_;
  const bool has_positions = !positions_.empty();
  const std::size_t index = has_positions ? positions_[line] : line + 1;
  const char* format = has_positions ? "/lpf=\"%s\" /lpi=%zu " : "/lgf=\"%s\" /lgi=%zu ";
  return Format(format, path_.c_str(), index);
}

bool Openings::IsAsItWas(FileSystem& files) {
  const std::optional<FileStamp> stamp = files.Stamp(path_);
  if (stamp && stamp == stamp_) return true;
  const BoundedText read = ReadUpTo(files, path_, kLimit);
  if (!read.text || ChecksumOf(*read.text) != checksum_) return false;
  stamp_ = stamp;
  return true;
}

}  // namespace tarvendo
