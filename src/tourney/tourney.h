#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/record_file.h"
#include "platform/host.h"
#include "players/player.h"
#include "tourney/game.h"
#include "tourney/runner_switch.h"
#include "tourney/time_control.h"
#include "tourney/tourney_lock.h"

namespace tarvendo {

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
  std::string save_file;  ///< the tourney file of a save without a name
  std::string
      files_path;  ///< directory of the games' files, with its separator; prefix of their names
  std::string report_path;               ///< kept and saved beside files_path
  std::string pgn_file = "default.pgn";  ///< where finished games are collected
  std::string pics_dir;                  ///< prefix of the pictures' names in the HTML table
  std::string winboard_path = "winboard.exe";
  std::string white_options;  ///< WinBoard options, added to every game
  std::string black_options;  ///< likewise
  std::string computer;       ///< free text for the reports, like the next two
  std::string hash_tables = "Hashtables, what are those?";
  std::string tablebases = "I don't know. Are they related to Excel sheets?";
};

/// The one tourney: settings, participants, games, rounds and the runner's switch. It knows how to
/// change and to save itself and nothing of who runs it. Spooling, collection, pairing and reports
/// are operations of their own folders on it. All of it but the switch and the lock is used by the
/// holder of Lock() only.
class Tourney : public RecordFile {
 public:
  /// An empty tourney. `work_dir` is the directory of the program's executable with its separator;
  /// the tourney file "tourney.ini" in it is loaded when it is there.
  Tourney(Host& host, std::string work_dir);

  TourneyLock& Lock() { return lock_; }
  Host& GetHost() { return host_; }
  const std::string& WorkDir() const { return work_dir_; }
  RunnerSwitch& Switch() { return switch_; }

  bool IsSwiss() const { return settings.type == kSwiss; }

  /// Sets everything back to the defaults of a new tourney, which are not in all places those of a
  /// new program (5 minutes a game, debug files AUTOMATICALLY, a Computer). Keeps WinboardPath,
  /// PicsDir and SaveFile. Always true.
  bool Reset();

  // The tourney file (docs/files.md).

  /// Saves to the file `name`, or without a name to SaveFile, or to "tourney.ini" behind FilesPath.
  /// A save without a name never replaces a file that is no tourney file. Prints nothing; false on
  /// failure.
  bool Save(const std::string& name);

  /// Loads the file `name`, chosen as in Save. A file that cannot be opened gives false; one that
  /// is no tourney file prints "Not a tourney file.\n" and gives false; either changes nothing but
  /// SaveFile.
  bool Load(const std::string& name);

  /// The text of the tourney file but for its own name: what AutoSave compares to see a change.
  std::string ContentText();

  // Participants, numbered from 1 in list order.

  std::vector<Player>& Participants() { return participants_; }
  const std::vector<Player>& Participants() const { return participants_; }

  /// The participant with that number; null when there is none.
  Player* FindParticipant(int number);
  const Player* FindParticipant(int number) const;

  // Games, in the order in which they were created.

  std::vector<Game>& Games() { return games_; }
  const std::vector<Game>& Games() const { return games_; }

  /// The first game with that number; null when there is none.
  Game* FindGame(int number);

  /// The game at a 0-based place of a participant's history; null when there is none.
  const Game* GameAt(int index) const;

  /// Creates a game with the next number, adds it to the history of both participants (whose colour
  /// states it changes in a Swiss tourney) and prints "Adding game %2d %-12s - %2d %-12s\n".
  void AddGame(int white, int black, int round, int sub_round);

  /// Takes the games at these places (0-based, any order, no place twice) out of the list and out
  /// of the histories. Numbers do not change. Prints nothing.
  void EraseGames(const std::vector<std::size_t>& places);

  /// Takes all games out of the list and out of the histories.
  void EraseAllGames();

  /// Sets GamesState from the games: 0 no games, 1 some game is not READY, 2 all are READY but some
  /// lacks a result, 3 all are finished.
  void RecomputeGamesState();

  TourneySettings settings;
  int round = 1;             ///< the current round, 1-based
  int games_state = 1;       ///< see RecomputeGamesState
  int last_game_number = 0;  ///< of the game created last
  int spool_counter = 0;     ///< place in the running order that the next spooled game gets
  int current_game = 0;      ///< number of the game that the runner plays, 0 = none
  int name_width = 0;        ///< width of the names in the one-line form of a game

 private:
  void WriteContent();
  void WriteSettings(bool with_save_file);
  void ReadContent();
  void ReadSettings();
  void ReadParticipants();
  void ReadGames();

  /// Whether a save without a name would destroy something that is no tourney file.
  bool WouldReplaceForeignFile(const std::string& path);

  Host& host_;
  std::string work_dir_;
  TourneyLock lock_;
  RunnerSwitch switch_;
  std::vector<Player> participants_;
  std::vector<Game> games_;
};

/// SubRounds as the rounds count it: 0 and less stand for 1.
int EffectiveSubRounds(const Tourney& tourney);

}  // namespace tarvendo
