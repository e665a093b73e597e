#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace tarvendo {

/// Where the next word of a command line begins, seen from `position` (0-based): behind the next
/// run of blanks. Nothing when there is no blank, or only blanks, from there on. A tab does not
/// separate words here, and the line feed at the end of a raw line counts as a word. At the end of
/// the line the position itself comes back.
std::optional<std::size_t> SkipWord(std::string_view line, std::size_t position = 0);

}  // namespace tarvendo
