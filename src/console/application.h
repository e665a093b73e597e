#pragma once

#include <string>
#include <vector>

#include "platform/host.h"

namespace tarvendo {

/// What the command line asks for.
struct StartUp {
  std::string script;      ///< empty: the keyboard
  bool continues = false;  ///< the keyboard follows the script
  bool waits = false;      ///< "--wait": the end waits until the runner has nothing left to do
};

/// Reads the words of the command line behind the program's name. Options count only beside a
/// second word; the first word that is no option is the script. `--wait` counts as no word at all.
StartUp ReadCommandLine(const std::vector<std::string>& words);

/// The whole program: makes what there is in its order (log, tourney, player database, interpreter,
/// runner), runs the loop passes, saves to "emergency.ini" when anything is thrown out of them, and
/// takes everything down again. Returns the process's exit code, which is always 1.
int RunProgram(Host& host, const std::vector<std::string>& words);

}  // namespace tarvendo
