#include "runner/record_aside.h"

#include "platform/files.h"

namespace tarvendo {
namespace {

constexpr int kMostNames = 1000;

}  // namespace

std::string SetRecordAside(FileSystem& files, const std::string& pgn_file,
                           const std::string& kind) {
  const std::string stem = pgn_file.substr(0, pgn_file.rfind('.'));
  for (int n = 1; n <= kMostNames; ++n) {
    std::string name = stem;
    name.append(".").append(kind).append(n == 1 ? "" : std::to_string(n)).append(".PGN");
    if (files.Exists(name)) continue;
    return files.Rename(pgn_file, name) ? name : "";
  }
  return "";
}

}  // namespace tarvendo
