#include "runner/half_saved.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "base/whole_file.h"
#include "platform/files.h"
#include "reports/table_driver.h"
#include "tourney/tourney.h"
#include "tourney/tourney_file.h"

namespace tarvendo {
namespace {

/// Whether what stands behind "g" in a path is "7.BAT.tarvendo.new" or "7.BAT.tarvendo.new2".
bool IsHalfSavedBatch(std::string_view rest) {
  constexpr std::string_view kDigits = "0123456789";
  constexpr std::string_view kExtension = ".BAT.tarvendo.new";
  const std::size_t dot = std::min(rest.find_first_not_of(kDigits), rest.size());
  rest.remove_prefix(dot);
  if (dot == 0 || !rest.starts_with(kExtension)) return false;
  rest.remove_prefix(kExtension.size());
  return rest.find_first_not_of(kDigits) == std::string_view::npos;
}

}  // namespace

void RemoveHalfSaved(const Tourney& tourney, FileSystem& files, TourneyFile& file) {
  file.RemoveHalfSaved();
  for (const std::string& path : HalfSavedFiles(files, DefaultTableFile(tourney)))
    files.Remove(path);
  const std::string first = tourney.Settings().files_path + "g";
  for (const std::string& path : files.PathsWithPrefix(first)) {
    if (IsHalfSavedBatch(std::string_view(path).substr(first.size()))) files.Remove(path);
  }
}

}  // namespace tarvendo
