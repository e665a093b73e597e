#pragma once

#include <string>

namespace tarvendo {

class RecordReader;
class RecordWriter;

/// Where a game stands on its way. The numbers are those of the tourney file.
enum GameStatus : int {
  kNothingDone = 1,  ///< created, no batch file
  kSpooled = 2,      ///< batch file written, waiting to be run or running
  kReady = 4,        ///< played or adjudicated
};

/// The outcome of a game. The numbers are those of the tourney file.
enum GameResult : int {
  kUnknown = 1,
  kWhiteWins = 2,
  kBlackWins = 4,
  kDraw = 8,
  kUnfinished = 17,
  kBothLose = 32,
};

/// One scheduled game between two participants. The tourney owns it. Its number is unique in the
/// tourney and never used again. Used by the tourney's holder.
class Game {
 public:
  /// Writes the record as a block of the tourney file.
  void WriteRecord(RecordWriter& writer) const;

  /// Reads such a block; fields that the file no longer holds stay as they are.
  void ReadRecord(RecordReader& reader);

  bool operator==(const Game&) const = default;

  bool IsReady() const { return status == kReady; }

  /// READY with a result that counts: neither UNKNOWN nor UNFINISHED.
  bool IsFinished() const { return IsReady() && !LacksResult(); }

  /// Whether the result is UNKNOWN or UNFINISHED.
  bool LacksResult() const { return result == kUnknown || result == kUnfinished; }

  /// Whether the participant with that number (1-based) plays in it.
  bool IsPlayedBy(int player_number) const {
    return white == player_number || black == player_number;
  }

  int spool_index = 0;  ///< place in the running order, given when it was spooled
  std::string pgn_file;
  std::string bat_file;
  int status = kNothingDone;
  int black = 0;  ///< participant number, 0 = none
  int white = 0;
  std::string black_player = "BlackPlayer";
  std::string white_player = "WhitePlayer";
  int result = kUnknown;
  int sub_round = 0;  ///< 1-based repetition of the pairing, 0 = none
  int round = 0;      ///< 1-based
  int number = 0;     ///< 1-based
};

/// "1 - 0", "0 - 1", "1/2 - 1/2", "0 - 0", and "*" for every other result.
const char* ResultText(int result);

}  // namespace tarvendo
