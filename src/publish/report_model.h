#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/scores.h"
#include "publish/elo.h"
#include "tourney/time_control.h"

namespace tarvendo {

class PgnRecords;
class Tourney;

enum class ReportGameState { kToBePlayed, kPlaying, kPlayed };

/// A game as the report shows it.
struct ReportGame {
  int number = 0;
  int round = 0;
  int sub_round = 0;
  int white = -1;  ///< 0-based index in the list of participants; -1: none of them
  int black = -1;
  std::string white_name;  ///< UTF-8, as all texts of the report
  std::string black_name;
  ReportGameState state = ReportGameState::kToBePlayed;
  int result = 0;       ///< GameResult
  bool is_bye = false;  ///< one of the two is a bye: nothing was played
  std::string ending;   ///< "White mates"; empty when nothing tells it
  std::optional<int> plies;
  std::optional<int> seconds;
  std::string termination;                  ///< the PGN tag; empty when it is not known
  std::optional<std::uint64_t> pgn_offset;  ///< where its record lies in the tourney's PGN file
  std::uint64_t pgn_size = 0;

  bool HasResult() const;
};

/// A participant as the report shows it.
struct ReportParticipant {
  int number = 0;
  std::string name;
  bool is_bye = false;
  int rank = 0;  ///< among those who are no bye, 1 is best; 0 for a bye
  // Games that were really played and have a result:
  int games = 0;
  int wins = 0;
  int draws = 0;
  int losses = 0;
  // As in the program's own tables, what a bye gives included:
  QuarterPoints points = 0;
  QuarterPoints buchholz = 0;
  QuarterPoints sonneborn_berger = 0;

  /// The share of the points in the games played, 0 to 100; nothing before the first game.
  std::optional<double> Percent() const;
};

/// How many games there are. Those of byes are none.
struct ReportCounts {
  int all = 0;  ///< those that exist, and in a Swiss tourney those of the rounds to come
  int played = 0;
  int playing = 0;
  int without_result = 0;  ///< played, but nobody knows how they ended
  int participants = 0;

  int Left() const { return all > played ? all - played : 0; }
};

/// Everything that a report shows, made once; what is written from it (page.h, csv_files.h,
/// json_file.h) only puts it down.
struct Report {
  std::string name;
  bool is_swiss = false;
  int round = 0;  ///< that is being played; in a round robin the first with games left, or the last
  int rounds = 0;
  int sub_rounds = 1;
  TimeControl time_control;
  std::string time_control_text;  ///< "40 moves in 2:30, 5 s a move"
  std::string computer;
  std::string hash_tables;
  std::string tablebases;
  bool ponder = false;
  std::int64_t changed_at = 0;  ///< seconds since 1970
  std::string changed_at_text;  ///< "2026-11-22 03:57", local time
  ReportCounts counts;
  std::vector<ReportParticipant> participants;  ///< in list order
  std::vector<std::size_t> order;               ///< indices of all, in the order of rank, byes last
  std::vector<ReportGame> games;                ///< in list order
  EloTable elo{0, {}};                          ///< by index
};

/// Makes the report. Changes nothing; takes time with the games, and with the cube of the
/// participants for the ratings' intervals. `playing` are the numbers of the games that are under
/// way, in any order; `changed_at` is when the tourney last changed, in seconds since 1970.
Report MakeReport(const Tourney& tourney, const PgnRecords& records,
                  const std::vector<int>& playing, std::int64_t changed_at);

/// "bye", "to be played", "being played" or "played".
const char* StateOfGame(const ReportGame& game);

/// "1-0", "0-1", "1/2-1/2", "0-0" and "*".
const char* PgnResult(const ReportGame& game);

}  // namespace tarvendo
