#include "play/place.h"

#include "base/read_file.h"
#include "base/whole_file.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "play/job_tries.h"

namespace tarvendo {
namespace {

constexpr const char* kDebugFile = "winboard.debug";
constexpr std::string_view kPlace = ".place";

std::string PlaceOf(const std::string& files_path, int number) {
  return files_path + "g" + std::to_string(number) + std::string(kPlace);
}

std::string QuotedWhenBlank(const std::string& path) {
  return path.find(' ') == std::string::npos ? path : "\"" + path + "\"";
}

}  // namespace

std::string OwnDirectory(const GameOrder& order) {
  const std::size_t separator = LastSeparator(order.debug_file);
  if (separator == std::string::npos) return "";
  const std::string directory = order.debug_file.substr(0, separator);
  return directory.ends_with(kPlace) ? directory : "";
}

std::string FirstDebugFile(const std::string& files_path) {
  return files_path + kDebugFile;
}

std::string OwnDebugFile(const std::string& files_path, int number) {
  return PlaceOf(files_path, number) + "\\" + kDebugFile;
}

std::string DebugFileOfBegun(FileSystem& files, const std::string& files_path, int number) {
  const bool has_place = files.Exists(PlaceOf(files_path, number));
  return has_place ? OwnDebugFile(files_path, number) : FirstDebugFile(files_path);
}

std::string CopyOfBatch(const GameOrder& order) {
  const std::string directory = OwnDirectory(order);
  if (!directory.empty()) return directory + "\\g" + std::to_string(order.number) + ".BAT";
  return order.pgn_file.substr(0, order.pgn_file.rfind('.')) + ".opening.BAT";
}

std::string SubmissionFile(const GameOrder& order) {
  return OwnDirectory(order) + "\\sbatch.txt";
}

std::string PreparePlace(FileSystem& files, const GameOrder& order) {
  const std::string directory = OwnDirectory(order);
  if (directory.empty() && order.more_words.empty()) return order.batch_file;
  const auto text = ReadFile(files, order.batch_file, kGameFileLimit);
  if (!text || (!directory.empty() && !files.MakeDirectory(directory))) return "";
  std::string words = order.more_words;
  if (!directory.empty()) {
    RemoveIfThere(files, order.debug_file);
    // It stands behind a /debugfile= of the user's own, and the last one counts.
    words += "/debugfile=" + QuotedWhenBlank(order.debug_file) + " ";
  }
  const std::string copy = CopyOfBatch(order);
  const auto file = files.Create(copy);
  const bool written = file && file->Write(*text + words);
  return written && file->Close() ? copy : "";
}

bool RemovePlace(FileSystem& files, const GameOrder& order) {
  const std::string directory = OwnDirectory(order);
  RemoveIfThere(files, CopyOfBatch(order));
  if (directory.empty()) return true;
  if (!order.job.empty()) {
    RemoveTries(files, order);
    RemoveIfThere(files, SubmissionFile(order));
  }
  RemoveIfThere(files, order.debug_file);
  return files.RemoveDirectory(directory) || !files.Exists(directory);
}

}  // namespace tarvendo
