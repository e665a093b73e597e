#pragma once

#include <string>
#include <vector>

namespace stub {

/// What WinBoard says before it gives up, when it does not understand its words: "Unrecognized
/// argument /debugFile". Empty when it understands them all. An option is known only as it stands
/// in the list of known_options.cpp, each letter in its case. Behind /ncp the last word may be the
/// file to be shown.
std::string Refusal(const std::vector<std::string>& words);

}  // namespace stub
