#pragma once

#include <algorithm>
#include <string>

#include "base/record_file.h"
#include "fakes/captured_log.h"
#include "tourney/tourney.h"
#include "tourney/tourney_file.h"

namespace tarvendo {

/// A count in a fuzzed file makes so many records of nothing: the thousands that the program bears
/// show nothing more, and each takes its time.
constexpr int kFuzzedEmptyRecords = 3;

/// What a tourney file would hold of it.
inline std::string ContentOf(const Tourney& tourney) {
  RecordWriter writer;
  tourney.WriteRecord(writer, "");
  return writer.Text();
}

/// Leaves so much of a tourney that whatever is done with it takes no time: more of the same shows
/// nothing more.
inline void MakeSmall(Tourney& tourney) {
  constexpr std::size_t kMostParticipants = 6;
  constexpr std::size_t kMostGames = 8;
  constexpr int kMostSubRounds = 3;
  constexpr int kMostRounds = 20;
  if (tourney.Participants().size() > kMostParticipants) {
    tourney.ChangeParticipants().resize(kMostParticipants);
  }
  if (tourney.Games().size() > kMostGames) tourney.ChangeGames().resize(kMostGames);
  const auto settings = tourney.ChangeSettings();
  settings->sub_rounds = std::min(settings->sub_rounds, kMostSubRounds);
  settings->rounds = std::min(settings->rounds, kMostRounds);
}

/// Two games of three players, one spooled and one that is over, in "/t".
struct TwoGames {
  TwoGames() {
    machine.files.MakeDirectory("/t");
    tourney.ChangeSettings()->files_path = "/t\\";
    tourney.ChangeSettings()->pgn_file = "/t\\all.pgn";
    tourney.ChangeSettings()->type = kRoundRobin;
    for (const char* name : {"Alpha", "Beta", "Gamma"}) {
      Player player;
      player.texts.name = name;
      player.number = static_cast<int>(tourney.Participants().size()) + 1;
      tourney.ChangeParticipants().push_back(player);
    }
    tourney.AddGame(1, 2, 1, 1);
    tourney.AddGame(3, 1, 2, 1);
    tourney.ChangeGames()[0].status = kSpooled;
    tourney.ChangeGames()[1].status = kReady;
    tourney.ChangeGames()[1].result = kWhiteWins;
  }

  CapturedLog machine;
  Tourney tourney;
};

}  // namespace tarvendo
