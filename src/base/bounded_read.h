#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace tarvendo {

class FileSystem;

/// The most bytes that are read of each kind of file: more than any honest file has, and fewer than
/// would fill the memory. docs/files.md names them.
inline constexpr std::size_t kTourneyFileLimit = std::size_t{1} << 30U;
inline constexpr std::size_t kPlayerFileLimit = std::size_t{1} << 28U;  ///< WinBoard's own ones too
inline constexpr std::size_t kGameFileLimit = std::size_t{1} << 24U;  ///< record, batch file, claim
inline constexpr std::size_t kHelpFileLimit = std::size_t{1} << 24U;
inline constexpr std::size_t kShellOutputLimit = std::size_t{1} << 28U;
inline constexpr std::size_t kMostLogKept = std::size_t{1} << 28U;  ///< what is kept of the log

/// What was read of a file.
struct BoundedText {
  std::optional<std::string> text;  ///< CR LF folded to LF; nothing when it could not be read
  bool is_too_long = false;         ///< it has more bytes than were asked for: nothing is read
};

/// Reads a whole file of at most `limit` bytes. Prints nothing, so that the log itself can use it;
/// ReadFile (base/read_file.h) tells of a file that is too long.
BoundedText ReadUpTo(FileSystem& files, const std::string& path, std::size_t limit);

/// "The file '%s' has more than %d megabytes, so it is not read.\n"
std::string TooLongMessage(const std::string& path, std::size_t limit);

}  // namespace tarvendo
