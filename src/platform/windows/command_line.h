#pragma once

#include <string>

namespace tarvendo {

/// The command line that makes the command processor `processor` (a path) run the line that was
/// typed as it stands, without its line end. cmd.exe takes a first and a last quote off a line,
/// unless it is told with /s that they are ours.
std::string ProcessorCommandLine(const std::string& processor, const std::string& typed);

/// A word so quoted that it passes the command processor and the program's own splitting of its
/// command line as one word, unchanged.
std::string QuotedWord(const std::string& word);

}  // namespace tarvendo
