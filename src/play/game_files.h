#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

#include "platform/paths.h"

namespace tarvendo {

// The files beside a game's PGN file that tell why it has no result: "/t/g7.err" is written by the
// script that stands where WinBoard stands, "/t/g7.out" by a scheduler's job. The program itself
// reads neither.

/// Another file of the same game, beside its PGN file: "/t/g7.debug" for "/t/g7.PGN".
inline std::string GameFileBeside(const std::string& pgn_file, const std::string& extension) {
  return pgn_file.substr(0, pgn_file.rfind('.')) + extension;
}

/// The directory of a file without the separator at its end: "." for a bare name.
inline std::string DirectoryOf(const std::string& path) {
  const std::size_t separator = LastSeparator(path);
  return separator == std::string::npos ? "." : path.substr(0, std::max<std::size_t>(separator, 1));
}

/// The two files that tell why the game has no result.
inline std::array<std::string, 2> ReasonFiles(const std::string& pgn_file) {
  return {GameFileBeside(pgn_file, ".err"), GameFileBeside(pgn_file, ".out")};
}

}  // namespace tarvendo
