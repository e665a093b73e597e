#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace tarvendo {

class FileSystem;

/// The most bytes that are read of each kind of file: more than any honest one has, and less than
/// what fills the machine. docs/files.md names them.
inline constexpr std::size_t kTourneyFileLimit = std::size_t{1} << 30U;
inline constexpr std::size_t kPlayerFileLimit = std::size_t{1} << 28U;  ///< WinBoard's own ones too
inline constexpr std::size_t kGameFileLimit = std::size_t{1} << 24U;  ///< record, batch file, claim
inline constexpr std::size_t kHelpFileLimit = std::size_t{1} << 24U;
inline constexpr std::size_t kShellOutputLimit = std::size_t{1} << 28U;

/// The whole text of a file, CR LF folded to LF. Nothing when it cannot be opened and read, or when
/// it has more than `limit` bytes: "The file '%s' has more than %d megabytes, so it is not
/// read.\n".
std::optional<std::string> ReadFile(FileSystem& files, const std::string& path, std::size_t limit);

}  // namespace tarvendo
