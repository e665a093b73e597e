#pragma once

#include <string>

#include "platform/clock.h"
#include "platform/file_watch.h"
#include "platform/files.h"
#include "platform/host.h"
#include "platform/processes.h"
#include "tourney/shared_tourney.h"
#include "tourney/tourney_file.h"

namespace tarvendo {

/// A tourney of a given size for the benchmarks, and the real machine.
class ReportTourney {
 public:
  /// Every participant is called "Engine N".
  ReportTourney(int participants, int type) {
    tourney.ChangeSettings()->type = type;
    for (int number = 1; number <= participants; ++number) {
      Player player;
      player.texts.name = "Engine " + std::to_string(number);
      player.number = number;
      tourney.ChangeParticipants().push_back(player);
    }
  }

  /// Adds a played game; the results take turns.
  void Play(int white, int black, int round) {
    static constexpr int kResults[] = {kWhiteWins, kDraw, kBlackWins, kWhiteWins, kDraw};
    Game game;
    game.white = white;
    game.black = black;
    game.round = round;
    game.sub_round = 1;
    game.status = kReady;
    const std::size_t index = tourney.Games().size();
    game.result = kResults[(static_cast<std::size_t>(white) + index) % 5];
    game.number = static_cast<int>(index) + 1;
    tourney.ChangeGames().push_back(game);
    for (const int number : {white, black}) {
      tourney.Change(*tourney.FindParticipant(number))->games.push_back(static_cast<int>(index));
    }
  }

  /// Plays `rounds` rounds in which everybody has a game, against an ever farther neighbour.
  void PlayRounds(int rounds) {
    const int participants = static_cast<int>(tourney.Participants().size());
    for (int round = 1; round <= rounds; ++round) {
      for (int white = 1; white + 1 <= participants; white += 2) {
        const int black = (white + 2 * round - 1) % participants;
        Play(white, black == 0 ? participants : black, round);
      }
    }
  }

  /// Plays a game of every pair.
  void PlayEveryPair() {
    const int participants = static_cast<int>(tourney.Participants().size());
    for (int white = 1; white <= participants; ++white) {
      for (int black = white + 1; black <= participants; ++black)
        Play(white, black, 1);
    }
  }

 private:
  std::unique_ptr<FileSystem> files_ = MakeFileSystem();
  std::unique_ptr<Processes> processes_ = MakeProcesses();
  std::unique_ptr<Clock> clock_ = MakeClock();
  std::unique_ptr<FileWatches> watches_ = MakeFileWatches();

 public:
  Host host{*files_, *processes_, *clock_, *watches_};
  SharedTourney shared;
  Tourney& tourney = *shared.Take();  ///< for the benchmark's own thread, the only one
  HeldWithTourney<TourneyFile> held_file{*files_};
  TourneyFile& file = held_file.With(shared.Take());
};

}  // namespace tarvendo
