#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/clock.h"
#include "play/game_host.h"
#include "runner/hindrances.h"
#include "runner/plan.h"
#include "runner/preparation.h"
#include "runner/referee.h"
#include "runner/tourney_room.h"
#include "runner/workplace.h"

namespace tarvendo {

/// How the games follow each other.
struct PlayPace {
  std::chrono::milliseconds between_games{5000};
  std::chrono::milliseconds retry{3000};     ///< between two attempts while something is in the way
  std::chrono::milliseconds grouping{1000};  ///< from a result to its save, at the latest
  int grouping_share = 10;  ///< but so many times as long as the last save and page took
  std::chrono::milliseconds next_save{30000};  ///< from a save that failed to the next attempt
  RefereePace referee = RefereePace::kAtOnce;
  int failures_allowed = 0;  ///< so many in a row stop the runner; 0 is any number
  bool replays = true;       ///< AutoRun may play games again that have no result
};

/// Plays the tourney's games with a game host, a pass at a time: judges what has ended, then starts
/// what the plan says. Never sleeps: a pass tells when the next one is due. Used by one thread, the
/// runner's; a pass holds the tourney for its steps, but never while it calls the game host or
/// searches for a pairing.
class PlayLoop {
 public:
  PlayLoop(TourneyRoom& room, GameHost& host, const PlayPace& pace,
           std::optional<Openings> openings = std::nullopt);

  /// Does what is to be done now. Returns when the next pass is due at the latest; nothing: not
  /// before something happens.
  std::optional<TimePoint> Pass();

  /// Whether the last pass found nothing to do and no game is under way: the switch is off, or on
  /// without a game to play.
  bool IsIdle() const { return is_idle_; }

  /// Why no game is started any more, whatever the switch says: those in FilesPath were begun with
  /// other openings (runner/openings_in_use.h). A line without its line feed; empty when there is
  /// no such reason.
  const std::string& Refusal() const { return workplace_.OpeningsHere().Refusal(); }

  /// At the end of the program: saves the results that still wait for it, deletes the files of
  /// those games and writes the page.
  void SettleAtEnd();

  /// How many games are started or adopted and not yet judged.
  std::size_t GamesUnderWay() const { return games_under_way_; }

  /// How many games have been judged so far.
  std::size_t GamesJudged() const { return games_judged_; }

  /// How often the switch had been moved when the last pass looked at it.
  std::uint64_t SwitchChangesSeen() const { return switch_changes_; }

 private:
  /// How an attempt to start a game has ended. A game that a bye decides counts as started.
  enum class Attempt { kStarted, kNothingToDo, kHindered, kAgain };

  void SwitchAtSetTimes();
  void NoteSetTime(long long seconds);
  void JudgeEnded(TimePoint now);
  /// Counts games that gave no sign of life or no record; too many in a row stop the runner.
  void CountFailure(Tourney& tourney, const GameOutcome& outcome);
  void TellOfSilence(TimePoint now);
  void StartGames(TimePoint now);
  bool IsSwitchedOn(TimePoint now);
  PlanAttempt NewAttempt() const;
  Attempt StartOne(TimePoint now);
  bool IsPlaceFree(const std::string& files_path, TimePoint now);
  Plan PlanStepNow(PlanAttempt& attempt);
  Attempt TakeStep(PlanAttempt& attempt, TimePoint now);
  Attempt StartGame(int number, TimePoint now);
  /// Fills `prepared` when it returns kStarted: then only the game host is still to be told.
  Attempt MakeReady(int number, const std::string& debug_file, PreparedGame& prepared,
                    TimePoint now);
  /// The file cannot be written.
  Attempt HinderedByFile(const std::string& file, TimePoint now);
  Attempt TakeBye(int number, TimePoint now);
  Attempt SpoolOne(PlanAttempt& attempt, TimePoint now);
  void PairRound(PlanAttempt& attempt);
  void SettleWhenDue(TimePoint now);
  TimePoint NextSettle(TimePoint now) const;
  void Settle();
  std::optional<TimePoint> NextPass() const;

  TourneyRoom& room_;
  GameHost& host_;
  PlayPace pace_;
  Referee referee_;
  Workplace workplace_;
  Hindrances hindrances_;
  bool is_on_ = false;  ///< the switch, as the last pass saw it
  bool is_idle_ = false;
  int failures_ = 0;  ///< games in a row without a sign of life or a record
  std::uint64_t switch_changes_ = 0;
  std::size_t games_under_way_ = 0;
  std::size_t games_judged_ = 0;
  std::optional<TimePoint> look_at_;  ///< when to see again what is in the way
  std::optional<TimePoint> settle_at_;
  std::chrono::milliseconds settled_in_{0};  ///< so long the last save and page took
  std::optional<TimePoint> switch_at_;       ///< when to look at the set times again
};

}  // namespace tarvendo
