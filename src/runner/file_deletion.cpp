#include "runner/file_deletion.h"

#include "base/log.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "tourney/tourney.h"

namespace tarvendo {

std::string AsTyped(const Tourney& tourney, FileSystem& files, const std::string& path) {
  const std::size_t separator = LastSeparator(path);
  const std::size_t name_at = separator == std::string::npos ? 0 : separator + 1;
  std::string typed = tourney.Settings().files_path + path.substr(name_at);
  return files.FullPath(typed) == path ? typed : path;
}

bool DeleteOrTell(const Tourney& tourney, FileSystem& files, const std::string& path,
                  bool is_told) {
  if (path.empty() || !files.Exists(path) || files.Remove(path)) return true;
  if (!is_told) TellUndeleted(tourney, files, path);
  return false;
}

void TellUndeleted(const Tourney& tourney, FileSystem& files, const std::string& path) {
  PrintText("Error deleting file:  " + AsTyped(tourney, files, path) + "\n");
}

}  // namespace tarvendo
