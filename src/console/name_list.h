#pragma once

#include <span>

namespace tarvendo {

/// Prints "What do you want?", "Currently available are:" and the names, two to a line. After an
/// odd number of names the last line is left open, behind a tab.
void PrintNameList(std::span<const char* const> names);

}  // namespace tarvendo
