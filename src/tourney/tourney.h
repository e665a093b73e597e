#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "players/player.h"
#include "tourney/edit.h"
#include "tourney/game.h"
#include "tourney/game_index.h"
#include "tourney/runner_switch.h"
#include "tourney/time_control.h"

namespace tarvendo {

class RecordReader;
class RecordWriter;

/// Which debug files of WinBoard are kept. The numbers are those of the tourney file.
enum SaveDebugFiles : int { kSaveAlways = 0, kSaveNever = 1, kSaveAutomatically = 2 };

/// The type of a tourney; every number but 0 is a round robin.
inline constexpr int kSwiss = 0;
inline constexpr int kRoundRobin = 1;

/// What the settings commands show and change. Flags are on for any number but 0.
struct TourneySettings {
  std::string name = "My Own Winboard Tourney";
  int type = kSwiss;
  int rounds = 10;
  int sub_rounds = 1;  ///< how many times every pairing is played
  TimeControl time_control;
  int ponder = 0;
  int auto_run = 0;   ///< the runner spools and pairs by itself
  int auto_save = 0;  ///< the tourney is saved after every change
  int save_debug_files = kSaveNever;
  std::string files_path;   ///< directory of the games' files, with its separator
  std::string report_path;  ///< has no effect; stays in the tourney file as it was found there
  std::string pgn_file = "default.pgn";  ///< where finished games are collected
  std::string pics_dir;                  ///< prefix of the pictures' names in the HTML table
  std::string winboard_path = "winboard.exe";
  std::string white_options;  ///< WinBoard options, added to every game
  std::string black_options;  ///< likewise
  std::string computer;       ///< free text for the reports, like the next two
  std::string hash_tables = "Hashtables, what are those?";
  std::string tablebases = "I don't know. Are they related to Excel sheets?";

  bool operator==(const TourneySettings&) const = default;
};

/// How far the tourney is.
struct TourneyState {
  int round = 1;             ///< the current round, 1-based
  int games_state = 1;       ///< see Tourney::RecomputeGamesState
  int last_game_number = 0;  ///< of the game created last

  bool operator==(const TourneyState&) const = default;
};

/// The one tourney: settings, participants, games, rounds and the runner's switch. It is a record
/// and knows how to change itself, but nothing of files, of time and of who runs it: spooling,
/// collection, pairing, reports and the tourney file are operations on it, which take what else
/// they need. Used by its holder only (shared_tourney.h).
///
/// What can be read is read through functions without "Change"; whoever changes something says so.
class Tourney {
 public:
  bool IsSwiss() const { return settings_.type == kSwiss; }

  /// Whether the current round is the last one of a Swiss tourney, in which colours never block a
  /// pair.
  bool IsLastSwissRound() const { return IsSwiss() && state_.round == settings_.rounds; }

  const TourneySettings& Settings() const { return settings_; }
  Edit<TourneySettings> ChangeSettings() { return {settings_, version_}; }

  const TourneyState& State() const { return state_; }
  Edit<TourneyState> ChangeState() { return {state_, version_}; }

  const RunnerSwitch& Switch() const { return switch_; }
  Edit<RunnerSwitch> ChangeSwitch() { return {switch_, version_}; }

  /// Rises with every change to anything that the tourney file holds (but its own name for saving,
  /// which is no part of the tourney). As long as it stands still, a save would write the same
  /// text.
  std::uint64_t Version() const { return version_; }

  /// Sets everything back to the defaults of a new tourney, which are not always those of a
  /// new program (5 minutes a game, debug files AUTOMATICALLY, a Computer). Keeps WinboardPath,
  /// PicsDir and the runner's switch.
  void Reset();

  // The record as it stands in the tourney file (docs/files.md), behind its header line.
  // `save_file` is the name for saving that stands in it.

  void WriteRecord(RecordWriter& writer, const std::string& save_file) const;

  /// Replaces the participants and games. Other fields that the file no longer holds stay as they
  /// are. False, and nothing is changed, when it holds more than any tourney has: 1,000,000
  /// participants, 4,000,000 games or kMostInHistories. Throws Terminated when the process is asked
  /// to end meanwhile; nothing is changed then either.
  bool ReadRecord(RecordReader& reader, std::string& save_file);

  // Participants, numbered from 1 in list order.

  const std::vector<Player>& Participants() const { return participants_; }

  /// For changes to the list itself or to all of it; counts as a change, whatever is done.
  std::vector<Player>& ChangeParticipants();

  /// For a change to one participant of the list.
  Edit<Player> Change(const Player& participant);

  /// The participant with that number; null when there is none.
  const Player* FindParticipant(int number) const;

  // Games, in the order in which they were created.

  const std::vector<Game>& Games() const { return games_; }

  /// For changes to the list itself or to all of it, at once; counts as a change, whatever is done.
  std::vector<Game>& ChangeGames();

  /// For a change to one game of the list, which is made before any game is asked for.
  Edit<Game> Change(const Game& game);

  /// The first game with that number; null when there is none.
  const Game* FindGame(int number) const { return index_.Find(games_, number); }

  /// The NOTHING DONE game of the lowest round, the first of the list among equals; null when there
  /// is none.
  const Game* FirstGameToSpool() const { return index_.FirstToSpool(games_); }

  /// The first in the running order of the SPOOLED games that pass `passes`, the first of the list
  /// among equals; null when there is none.
  const Game* FirstSpooledGame(const std::function<bool(const Game&)>& passes) const {
    return index_.FirstSpooled(games_, passes);
  }

  /// The game with that index (0-based) in the list, as the histories have it; null when there is
  /// none.
  const Game* GameAt(int index) const;

  /// Creates a game with the next number, adds it to the history of both participants (whose colour
  /// states it changes in a Swiss tourney) and prints "Adding game %2d %-12s - %2d %-12s\n".
  void AddGame(int white, int black, int round, int sub_round);

  /// Takes the games with these indices (0-based, any order, none twice) out of the list and out of
  /// the histories. Numbers do not change. Prints nothing.
  void EraseGames(const std::vector<std::size_t>& indices);

  /// Takes all games out of the list and out of the histories.
  void EraseAllGames();

  /// Sets GamesState from the games: 0 no games, 1 some game is not READY, 2 all are READY but some
  /// lacks a result, 3 all are finished.
  void RecomputeGamesState();

  // What no file holds.
  int spool_counter = 0;  ///< place in the running order that the next spooled game gets
  int name_width = 0;     ///< width of the names in the one-line form of a game

 private:
  void WriteSettings(RecordWriter& writer, const std::string& save_file) const;

  TourneySettings settings_;
  TourneyState state_;
  RunnerSwitch switch_;
  std::vector<Player> participants_;
  std::vector<Game> games_;
  mutable GameIndex index_;  ///< of these
  std::uint64_t version_ = 0;
};

/// SubRounds as the rounds count it: 0 and less stand for 1.
int EffectiveSubRounds(const Tourney& tourney);

}  // namespace tarvendo
