#pragma once

#include <string>
#include <vector>

#include "platform/terminal.h"

namespace tarvendo {

/// What all the candidates begin with, in any case of the letters A to Z, as the first has it; a
/// single one that is whole has its blank behind it. There is at least one.
std::string Extended(const std::vector<Candidate>& candidates);

/// The candidates' texts below each other in as many columns as fit, each row with a line feed.
/// Of very many only the first are shown, and how many there are more.
std::string InColumns(const std::vector<Candidate>& candidates, int columns);

}  // namespace tarvendo
