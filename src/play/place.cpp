#include "play/place.h"

#include "base/read_file.h"
#include "base/whole_file.h"
#include "platform/files.h"
#include "platform/paths.h"

namespace tarvendo {
namespace {

constexpr const char* kDebugFile = "winboard.debug";
constexpr std::string_view kPlace = ".place";

/// The directory of the order's debug file, without its separator; empty when it is that of all
/// games.
std::string OwnDirectory(const GameOrder& order) {
  const std::size_t separator = LastSeparator(order.debug_file);
  if (separator == std::string::npos) return "";
  const std::string directory = order.debug_file.substr(0, separator);
  return directory.ends_with(kPlace) ? directory : "";
}

/// The directory in which a copy of the order's batch file lies, if there is one: that of its debug
/// file, or of the same name. Empty without a PGN file.
std::string DirectoryOfCopy(const GameOrder& order) {
  const std::string own = OwnDirectory(order);
  if (!own.empty() || order.pgn_file.empty()) return own;
  return order.pgn_file.substr(0, order.pgn_file.rfind('.')) + std::string(kPlace);
}

std::string CopyOfBatch(const std::string& directory, const GameOrder& order) {
  return directory + "\\g" + std::to_string(order.number) + ".BAT";
}

std::string QuotedWhenBlank(const std::string& path) {
  return path.find(' ') == std::string::npos ? path : "\"" + path + "\"";
}

}  // namespace

std::string FirstDebugFile(const std::string& files_path) {
  return files_path + kDebugFile;
}

std::string OwnDebugFile(const std::string& files_path, int number) {
  return files_path + "g" + std::to_string(number) + std::string(kPlace) + "\\" + kDebugFile;
}

std::string PreparePlace(FileSystem& files, const GameOrder& order) {
  const std::string own_directory = OwnDirectory(order);
  if (own_directory.empty() && order.more_words.empty()) return order.batch_file;
  const std::string directory = DirectoryOfCopy(order);
  const auto text = ReadFile(files, order.batch_file, kGameFileLimit);
  if (!text || !files.MakeDirectory(directory)) return "";
  std::string words = order.more_words;
  if (!own_directory.empty()) {
    RemoveIfThere(files, order.debug_file);
    // It stands behind a /debugfile= of the user's own, and the last one counts.
    words += "/debugfile=" + QuotedWhenBlank(order.debug_file) + " ";
  }
  const std::string copy = CopyOfBatch(directory, order);
  const auto file = files.Create(copy);
  const bool written = file && file->Write(*text + words);
  return written && file->Close() ? copy : "";
}

void RemovePlace(FileSystem& files, const GameOrder& order) {
  const std::string directory = DirectoryOfCopy(order);
  if (directory.empty()) return;
  if (!OwnDirectory(order).empty()) RemoveIfThere(files, order.debug_file);
  RemoveIfThere(files, CopyOfBatch(directory, order));
  files.RemoveDirectory(directory);
}

}  // namespace tarvendo
