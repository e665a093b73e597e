#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "fakes/captured_log.h"
#include "play/local_host.h"
#include "runner/play_loop.h"
#include "runner/runner.h"
#include "runner/tourney_room.h"

namespace tarvendo {

/// The tourney of these tests: a round robin of four players, in the directory "/t".
inline constexpr int kStubGames = 6;
inline constexpr const char* kStubTourney = "/t/tourney.ini";
inline constexpr const char* kStubPgn = "/t/all.pgn";

/// The result that the stand-in gives a game.
std::string StubResultText(int number);
int StubResult(int number);

/// Plays as WinBoard does for the batch files of a machine made of memory: the debug file appears
/// at the start; later the record is written, the debug file tells the end, and the process is
/// gone. As a batch file does, it plays no game that has a record already.
class StubWinboard {
 public:
  explicit StubWinboard(CapturedLog& machine);

  /// The `n`-th start of a process from now on fails, or every one from then on; 0 is none.
  void FailStart(int n, bool is_for_good);

  /// When the next game ends; nothing when none is played.
  std::optional<TimePoint> NextEnd() const;
  void EndGamesDue();

  /// All games come to their end now.
  void EndAllGames();

  /// How many processes were to be started.
  int Starts() const { return starts_; }

  /// How often that game was begun.
  int PlaysOf(int number) const;

 private:
  struct Played {
    TimePoint ends;
    int number;
    std::string debug_file;
    std::string pgn_file;
  };

  bool Start(const std::string& batch_file);
  void End(BatchId batch, const Played& game);

  CapturedLog& machine_;
  std::map<BatchId, Played> games_;
  std::map<int, int> plays_;  ///< of each game
  int starts_ = 0;
  int fails_at_ = 0;
  bool fails_for_good_ = false;
};

/// One process of the program, on a machine made of memory: it has loaded the tourney, or made it,
/// and its runner is on.
class StubProgram {
 public:
  StubProgram(CapturedLog& machine, StubWinboard& winboard, int places);
  ~StubProgram();

  /// Makes the tourney and saves it. The games are still to be spooled, which AutoRun does.
  void MakeTourney();

  /// Loads it. False when there is none or it is not whole.
  bool LoadTourney();

  /// Lets the runner work until all is played, or for so long. `on_pass` is called behind each of
  /// its passes.
  void Play(std::chrono::milliseconds longest, const std::function<void()>& on_pass);

  /// The program ends as with `quit`: what waits for its save is saved. Otherwise it just ends.
  void Quit();

  bool IsOver();
  bool IsSaved() { return !file.HasChanged(tourney); }
  std::map<int, std::string> MergedGames();

 private:
  CapturedLog& machine_;
  StubWinboard& winboard_;

 public:
  TourneyRoom room;
  Tourney& tourney;  ///< for the test's own thread, which needs no hold as long as it is alone
  TourneyFile& file;

 private:
  std::unique_ptr<LocalHost> host_;
  std::unique_ptr<PlayLoop> loop_;
};

/// A game's own record, as the stand-in writes it.
std::string StubRecord(int number);

}  // namespace tarvendo
