#pragma once

#include <string>

#include "platform/files.h"
#include "tourney/shared_tourney.h"

namespace tarvendo {

class Outputs;
class Terminal;
struct TourneyRoom;

/// What becomes of the tourney when the program has to end before its time: it goes to the file
/// "emergency.ini" in the directory in which the program was started, wherever that is then. Owned
/// by the program's main part, used by the console thread without the tourney.
class Emergency {
 public:
  Emergency(TourneyRoom& room, Terminal& terminal, Outputs& outputs);

  /// The end through an error or because the process was asked to end: says so and saves. Nobody
  /// is waited for for long, neither another thread nor the save.
  void Save();

  /// The end when the runner may not go on with the openings that it was given: tells `refusal` on
  /// standard error. What no file holds is kept, with AutoSave on in the tourney's own file.
  void EndRefused(const std::string& refusal);

 private:
  bool SetEarlierAside() const;
  bool SaveTourney(const Hold& hold);

  TourneyRoom& room_;
  Terminal& terminal_;
  Outputs& outputs_;
  const std::string directory_;
  const std::string file_;
  const std::string old_file_;
};

}  // namespace tarvendo
