#pragma once

#include <memory>
#include <vector>

#include "platform/clock.h"
#include "platform/host.h"
#include "play/game_outcome.h"
#include "runner/pgn_journal.h"

namespace tarvendo {

class Game;
class RunningGames;
class Tourney;
class TourneyFile;

/// When a referee saves, and writes the page.
enum class RefereePace {
  kAtOnce,    ///< behind each result
  kInGroups,  ///< when it is told to: one save and one page for all results since the last one
};

/// Judges what has become of the games: announces, adds the record to the tourney's PGN file, sets
/// the result, moves the round on. The games' own files and claims go only behind the save that
/// holds their results. Used by the runner's thread, each call with the tourney held.
class Referee {
 public:
  Referee(const Host& host, RefereePace pace)
      : host_(host),
        pace_(pace),
        pgn_(std::make_shared<PgnGroup>(
            host.files, pace == RefereePace::kAtOnce ? PgnPace::kAtOnce : PgnPace::kTogether)) {}

  /// Sees to it that every save of the file, whoever asks for it, finds the games whose results it
  /// holds in the tourney's PGN file.
  void GoBeforeSavesOf(TourneyFile& file);

  /// Judges one outcome and takes the game out of `running`. A game that the tourney does not have
  /// any more as SPOOLED, under that number and with these players, is left alone: its record is
  /// kept as gN.left.PGN, and the console names it. A game that nobody has begun is still to be
  /// played; when it was refused, the runner stops. Behind a finished game the log is cut down, and
  /// in a Swiss tourney whose round is complete Rounds and the current round are brought up to
  /// date. Then either the tourney is finished ("Tourney finished.\n", AutoRun goes off), or with
  /// AutoRun on the next round is to be paired: true.
  bool Judge(Tourney& tourney, TourneyFile& file, RunningGames& running,
             const GameOutcome& outcome);

  /// Gives a game with a bye, whose turn has come, its result (tourney/bye.h): nothing is played
  /// and nothing goes into the tourney's PGN file, but it is announced, and the round moved on, as
  /// above.
  bool JudgeBye(Tourney& tourney, TourneyFile& file, const RunningGames& running, const Game& game);

  /// Saves (AutoSave) what has been judged since the last call, deletes the files of those games
  /// and writes the page. When the save fails, the files stay, and the next call tries again. The
  /// next call also tries again to delete a file that could not be deleted, which is said once:
  /// "Error deleting file: %s\n". The files of a game that was begun anew meanwhile are left alone.
  void Settle(Tourney& tourney, TourneyFile& file, const RunningGames& running);

  /// Whether something waits for Settle.
  bool HasUnsettled() const { return is_table_due_ || !settled_.empty(); }

 private:
  /// A game that has been judged, its files still there.
  struct Settled {
    GameOrder order;
    bool drops_files;      ///< nobody needs its batch file and its record any more
    bool may_hang;         ///< its processes may be there for ever, and its claim with them
    bool is_told = false;  ///< that something of it cannot be deleted
  };

  /// Deletes the files that nobody needs any more of a game whose result is saved, the claim last.
  /// False when some of them cannot be deleted; then the claim stays too, for it tells whose they
  /// are.
  bool ClearUp(const Tourney& tourney, Settled& settled);
  bool DropFiles(const Tourney& tourney, const Settled& settled);
  void DropHeldClaims(const RunningGames& running);
  void TakeOver(Tourney& tourney, const GameOutcome& outcome);
  void FollowResult(Tourney& tourney);
  void KeepOrLeaveDebugFile(const Tourney& tourney, const GameOutcome& outcome, bool lacks_result);
  void SaveAndClear(Tourney& tourney, TourneyFile& file, const RunningGames& running);
  void WritePage(Tourney& tourney);

  Host host_;
  RefereePace pace_;
  std::shared_ptr<PgnGroup> pgn_;
  std::vector<Settled> settled_;
  std::vector<GameOrder> held_claims_;  ///< of judged games whose processes hang
  bool is_table_due_ = false;
};

}  // namespace tarvendo
