#pragma once

#include <string>

namespace tarvendo {

/// The user's pager: the command line in PAGER or, when that is not set, less or more, whichever is
/// there. Empty when he wants none (PAGER is empty or `cat`) or there is none.
std::string UsersPager();

/// Whether the text, and a prompt behind it, are more than such a screen holds.
bool IsLongerThanScreen(const std::string& text, int rows, int columns);

/// Runs the command line with the text as its standard input and waits for its end. False when it
/// could not be run. Throws Terminated, and ends the pager, when the process is asked to end.
bool RunPager(const std::string& command, const std::string& text);

}  // namespace tarvendo
