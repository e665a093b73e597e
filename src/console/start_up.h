#pragma once

#include <string>

namespace tarvendo {

/// What the command line asks for. `console/long_options` tells what each long option is for.
struct StartUp {
  std::string script;      ///< empty: the keyboard
  bool continues = false;  ///< the keyboard follows the script
  bool waits = false;      ///< the end waits until the runner has nothing left to do
  std::string resume;      ///< the tourney file to go on with, in place of commands
  bool shows_progress = false;
  std::string log;          ///< the file that gets what the console gets
  bool gives_code = false;  ///< the exit code tells how the run has ended
  int games = 0;     ///< so many at a time, without waits between them; 0: one at a time, unhurried
  int patience = 0;  ///< minutes with a silent debug file; 0 is for ever
  std::string report;           ///< the directory that the report goes to; empty: none is written
  std::string openings;         ///< the file from whose lines the games start; empty for none
  std::string cluster;          ///< the scheduler that gets the games; empty: none
  std::string cluster_options;  ///< further words for it
  std::string play;             ///< a claim: as a scheduler's job, play its game and nothing else
  bool wants_help = false;
  bool wants_version = false;
  std::string error;  ///< why the words make no sense, a line; empty when they do

  /// Whether the program goes on until the runner has nothing left to do.
  bool AwaitsEnd() const { return waits || !resume.empty(); }

  /// Whether the exit code says how that was.
  bool TellsEnd() const { return gives_code || !resume.empty(); }
};

}  // namespace tarvendo
