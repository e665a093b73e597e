#pragma once

#include <string>

namespace tarvendo {

class FileSystem;
struct StartUp;

/// The program's own log.
inline constexpr const char* kLogFile = "Tarvendo.log";

/// Why nothing is done with this command line and the files that it names, in lines without a line
/// feed at the end; empty when something is. Touches nothing.
std::string WhyRefused(const StartUp& start, FileSystem& files);

}  // namespace tarvendo
