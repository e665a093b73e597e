#pragma once

#include <string>
#include <vector>

namespace tarvendo {

/// What the command line asks for.
struct StartUp {
  std::string script;      ///< empty: the keyboard
  bool continues = false;  ///< the keyboard follows the script
  bool waits = false;      ///< "--wait": the end waits until the runner has nothing left to do
  int games = 0;  ///< "--games N": so many games at a time, without waits between them; 0: one at
                  ///< a time, unhurried
  int patience = 0;   ///< "--patience MINUTES" with a silent debug file; 0 is for ever
  std::string error;  ///< why the words make no sense, a line; empty when they do
};

/// Reads the words of the command line behind the program's name. Long options (those above, a
/// value behind the option or behind a "=") and their values count as no words at all. Of the
/// others: options count only beside a second word; the first word that is no option is the script.
/// Other words of two dashes are passed over, as words of one dash are.
StartUp ReadCommandLine(const std::vector<std::string>& words);

}  // namespace tarvendo
