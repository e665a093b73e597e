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

std::string CopyOfBatch(const std::string& directory, const GameOrder& order) {
  return directory + "\\g" + std::to_string(order.number) + ".BAT";
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

std::string SubmissionFile(const GameOrder& order) {
  return OwnDirectory(order) + "\\sbatch.txt";
}

std::string PreparePlace(FileSystem& files, const GameOrder& order) {
  const std::string directory = OwnDirectory(order);
  if (directory.empty()) return order.batch_file;
  const auto text = ReadFile(files, order.batch_file, kGameFileLimit);
  if (!text || !files.MakeDirectory(directory)) return "";
  RemoveIfThere(files, order.debug_file);
  const std::string copy = CopyOfBatch(directory, order);
  const auto file = files.Create(copy);
  // It stands behind a /debugfile= of the user's own, and the last one counts.
  const std::string option = "/debugfile=" + QuotedWhenBlank(order.debug_file) + " ";
  const bool written = file && file->Write(*text + option);
  return written && file->Close() ? copy : "";
}

bool RemovePlace(FileSystem& files, const GameOrder& order) {
  const std::string directory = OwnDirectory(order);
  if (directory.empty()) return true;
  if (!order.job.empty()) {
    RemoveTries(files, order);
    RemoveIfThere(files, SubmissionFile(order));
  }
  RemoveIfThere(files, order.debug_file);
  RemoveIfThere(files, CopyOfBatch(directory, order));
  return files.RemoveDirectory(directory) || !files.Exists(directory);
}

}  // namespace tarvendo
