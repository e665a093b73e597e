#include "play/job_tries.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <tuple>
#include <utility>

#include "base/whole_file.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "play/game_files.h"

namespace tarvendo {
namespace {

constexpr std::string_view kTry = "try-";
constexpr std::string_view kMark = ".on";

std::string PlaceOf(const GameOrder& order) {
  return order.debug_file.substr(0, LastSeparator(order.debug_file));
}

std::string NameOf(const GameOrder& order) {
  const std::size_t separator = LastSeparator(order.pgn_file);
  return order.pgn_file.substr(separator == std::string::npos ? 0 : separator + 1);
}

template <typename Number>
bool TakeNumber(std::string_view& text, Number& number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return error == std::errc();
}

/// The try that "try-1234-0.on" marks.
std::optional<JobTry> ReadMark(const std::string& path, std::size_t name_at) {
  std::string_view name = std::string_view(path).substr(name_at + kTry.size());
  JobTry job_try;
  if (!TakeNumber(name, job_try.job) || !name.starts_with('-')) return std::nullopt;
  name.remove_prefix(1);
  if (!TakeNumber(name, job_try.restarts) || name != kMark) return std::nullopt;
  job_try.directory = path.substr(0, path.size() - kMark.size());
  return job_try;
}

}  // namespace

std::string JobTry::PgnFile(const GameOrder& order) const {
  return directory + "\\" + NameOf(order);
}

std::string JobTry::DebugFile() const {
  return directory + "\\winboard.debug";
}

std::string JobTry::ErrorFile(const GameOrder& order) const {
  return GameFileBeside(PgnFile(order), ".err");
}

JobTry TryOf(const GameOrder& order, long long job, int restarts) {
  const std::string name = std::string(kTry) + std::to_string(job) + "-" + std::to_string(restarts);
  return {PlaceOf(order) + "\\" + name, job, restarts};
}

std::vector<JobTry> FindTries(FileSystem& files, const GameOrder& order) {
  std::vector<JobTry> tries;
  const std::string directory = PlaceOf(order) + "\\";
  for (const std::string& path : files.PathsWithPrefix(directory + std::string(kTry))) {
    if (auto found = ReadMark(path, directory.size())) tries.push_back(std::move(*found));
  }
  std::sort(tries.begin(), tries.end(), [](const JobTry& a, const JobTry& b) {
    return std::tie(a.job, a.restarts) < std::tie(b.job, b.restarts);
  });
  return tries;
}

bool MakeTriesDirectory(FileSystem& files, const GameOrder& order) {
  return files.MakeDirectory(PlaceOf(order));
}

bool MakeTry(FileSystem& files, const JobTry& job_try) {
  const auto mark = files.Create(job_try.Marker());
  return mark && mark->Close() && files.MakeDirectory(job_try.directory);
}

void KeepFilesOfLastTry(FileSystem& files, const GameOrder& order) {
  const std::vector<JobTry> tries = FindTries(files, order);
  if (tries.empty()) return;
  files.Rename(tries.back().DebugFile(), order.debug_file);
  files.Rename(tries.back().ErrorFile(order), GameFileBeside(order.pgn_file, ".err"));
}

void RemoveTries(FileSystem& files, const GameOrder& order) {
  for (const JobTry& job_try : FindTries(files, order)) {
    RemoveIfThere(files, job_try.PgnFile(order));
    RemoveIfThere(files, job_try.DebugFile());
    RemoveIfThere(files, job_try.ErrorFile(order));
    // Of the script for XBoard, where it has shared a display.
    RemoveIfThere(files, job_try.directory + "\\.xvfb");
    files.RemoveDirectory(job_try.directory);
    RemoveIfThere(files, job_try.Marker());
  }
}

}  // namespace tarvendo
