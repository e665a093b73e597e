#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "base/scores.h"

namespace tarvendo {

class RecordReader;
class RecordWriter;

/// A participant's wish for a colour. The lowest bit is the colour due: 1 White, 0 Black.
enum ColourState : int {
  kNoColourWish = 2,
  kWeakBlack = 4,
  kWeakWhite = 5,
  kMediumBlack = 8,
  kMediumWhite = 9,
  kMustHaveBlack = 16,
  kMustHaveWhite = 17,
};

/// The texts of a player: what the user, a player file or WinBoard's configuration tells of an
/// engine.
struct PlayerTexts {
  std::string name;           ///< unique; the key of the record
  std::string dir;            ///< the engine's working directory
  std::string init_string;    ///< initialisation string (arguments) sent to the engine
  std::string white_options;  ///< WinBoard options used when the engine has White
  std::string black_options;  ///< WinBoard options used when the engine has Black
  std::string program_exe;    ///< the engine's program
  std::string group;          ///< group words separated by blanks

  bool operator==(const PlayerTexts&) const = default;
};

/// The most games that all histories of a tourney may hold together.
inline constexpr std::size_t kMostInHistories = 16000000;

/// One chess engine. The player database holds them by value; a tourney holds copies of its own,
/// which also carry the standing and the history. Used by the tourney's holder.
class Player {
 public:
  Player() = default;
  /// An empty name becomes "PlayerName".
  explicit Player(PlayerTexts player_texts);

  /// Writes the record as a block of the tourney file.
  void WriteRecord(RecordWriter& writer) const;

  /// Reads such a block. Fields that the file no longer holds stay as they are; a count of
  /// positions that is negative or larger than what follows gives those that are there, one more
  /// than kMostInHistories at most. Throws Terminated when the process is asked to end meanwhile.
  void ReadRecord(RecordReader& reader);

  bool operator==(const Player&) const = default;

  PlayerTexts texts;
  int number = 0;  ///< 1-based; how commands name it

  // Of a participant only:
  int colour_state = kNoColourWish;
  int tourney_flag = 0;  ///< 1 for a participant, 0 for a player of the database
  int games_played = 0;  ///< READY games
  QuarterPoints sonneborn_berger = 0;
  QuarterPoints buchholz = 0;
  QuarterPoints points = 0;
  int rank = 0;  ///< 1 is best
  /// Its history: the indices (0-based) of its games in the tourney's list, as they were added.
  std::vector<int> games;
};

/// Whether it is no engine but an empty place, against which a point is had without a game: its
/// program is exactly "bye".
bool IsBye(const Player& player);

/// "%2d. %-20s" and "  Groups: %s" when the player has a group; ends in a line feed.
std::string PlayerGroupLine(const Player& player);

/// The full display without the games: texts, rank, points, Buchholz and Sonneborn-Berger, a line
/// each.
std::string PlayerData(const Player& player);

}  // namespace tarvendo
