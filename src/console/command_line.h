#pragma once

#include <string>
#include <vector>

#include "console/start_up.h"
#include "platform/files.h"

namespace tarvendo {

/// Reads the words of the command line behind the program's name. Long options and their values (a
/// value stands behind the option or behind a "=") are read first. A word of two dashes that is no
/// such option is an error that names the nearest one; so are options that have no meaning
/// together. Of the other words, options count only when there is more than one word, and the first
/// word that is no option is the script. Of several errors the first is told.
StartUp ReadCommandLine(const std::vector<std::string>& words);

/// Makes the paths that stand behind long options full, while the current directory is still the
/// one in which they were typed.
void MakePathsFull(StartUp& start, FileSystem& files);

}  // namespace tarvendo
