#pragma once

#include <string>

namespace tarvendo {

/// A message between two lines of stars, with a new prompt behind it: for what the runner tells a
/// user who is typing. `message` ends with a line feed.
std::string Framed(const std::string& message);

/// That somebody holds the file, and no game is started before it is free.
std::string TextOfHeldFile(const std::string& file);

}  // namespace tarvendo
