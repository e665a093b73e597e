#pragma once

#include <string>
#include <vector>

#include "platform/host.h"

namespace tarvendo {

/// The whole program: makes what there is in its order (log, tourney, player database, interpreter,
/// runner), runs the loop passes, saves to "emergency.ini" when anything is thrown out of them, and
/// takes everything down again. Returns the process's exit code (exit_code.h): before anything is
/// touched, 2 for a command line that makes no sense or a tourney that cannot be resumed (standard
/// error says why) and 0 when only help or version is wanted; at the end of a run with --resume or
/// --exit-code how it was; otherwise 1, always.
int RunProgram(Host& host, const std::vector<std::string>& words);

}  // namespace tarvendo
