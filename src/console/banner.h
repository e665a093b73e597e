#pragma once

#include <string>

namespace tarvendo {

/// The box with the program's name, version and origin.
std::string Banner();

/// What --version prints: the name and the version, a line.
std::string VersionLine();

}  // namespace tarvendo
